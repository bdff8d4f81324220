#include "window/status_bars.h"

#include "window/status_panel.h"
#include "window/text.h"

namespace kolvane::window {
namespace {

QStatusBar* MakeBar(QWidget* parent, const char* name) {
  auto* bar = new QStatusBar(parent);
  bar->setObjectName(QLatin1String(name));
  bar->setSizeGripEnabled(false);
  return bar;
}

QLabel* AddPanel(QStatusBar* bar, const char* name, const char* accessible_name) {
  auto* panel = new StatusPanel(bar);
  panel->setObjectName(QLatin1String(name));
  panel->setAccessibleName(ToQt(accessible_name));
  panel->setTextFormat(Qt::PlainText);
  panel->setTextInteractionFlags(Qt::TextSelectableByMouse);
  // A long path must not keep the window from being made narrow.
  panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  panel->setIndent(4);
  bar->addWidget(panel, 1);
  return panel;
}

void ShowIn(QLabel* panel, std::string_view text) {
  panel->setText(ToQt(text));
  panel->setToolTip(panel->text());
}

}  // namespace

StatusBars::StatusBars(QWidget* parent)
    : first_(MakeBar(parent, "StatusBar1")),
      second_(MakeBar(parent, "StatusBar2")),
      connection_(AddPanel(first_, "StatusBar1_1", "Verbindung")),
      log_file_(AddPanel(second_, "StatusBar2_1", "Logdatei")),
      command_list_(AddPanel(second_, "StatusBar2_2", "Befehlsliste")) {}

void StatusBars::ShowConnection(std::string_view text) { ShowIn(connection_, text); }

void StatusBars::ShowLogFile(std::string_view text) { ShowIn(log_file_, text); }

void StatusBars::ShowCommandList(std::string_view text) { ShowIn(command_list_, text); }

}  // namespace kolvane::window
