#include "window/status_bars.h"

#include <QPainter>

#include "base/ui/qt_text.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr QLatin1String kMark("[*]");
constexpr QLatin1String kNoMark("[*][*]");  // stands for these characters in a caption that contains them

void Append(QString& caption, std::string_view part) {
  if (!part.empty()) caption += QStringLiteral(" - ") + base::ToQt(part).replace(kMark, kNoMark);
}

}  // namespace

QString Caption(std::string_view command_file, std::string_view connection, bool modified) {
  command_file.remove_prefix(command_file.rfind('/') + 1);
  QString caption = base::ToQt(texts::kProgram);
  Append(caption, command_file);
  if (modified) caption += kMark;
  Append(caption, connection);
  return caption;
}

QString CaptionWithoutPlaceholder(const QWidget& window) {
  QStringList parts = window.windowTitle().split(kNoMark);
  for (QString& part : parts) part.remove(kMark);
  return parts.join(kMark);
}

void StatusPanel::paintEvent(QPaintEvent* event) {
  const QRect area = contentsRect().adjusted(indent(), 0, -indent(), 0);
  const QString shown = fontMetrics().elidedText(text(), elide_, area.width());
  // A selection refers to the whole text.
  if (shown == text() || hasSelectedText()) return QLabel::paintEvent(event);
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(area, static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

namespace {

constexpr int kIndent = 4;

QStatusBar* MakeBar(QWidget* parent, const char* name) {
  auto* bar = new QStatusBar(parent);
  bar->setObjectName(QLatin1String(name));
  bar->setSizeGripEnabled(false);
  return bar;
}

StatusPanel* AddPanel(QStatusBar* bar, const char* name, const char* accessible_name) {
  auto* panel = new StatusPanel(bar);
  panel->setObjectName(QLatin1String(name));
  panel->setAccessibleName(base::ToQt(accessible_name));
  panel->setTextFormat(Qt::PlainText);
  panel->setTextInteractionFlags(Qt::TextSelectableByMouse);
  // A long path must not keep the window from being made narrow.
  panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  panel->setIndent(kIndent);
  bar->addWidget(panel, 1);
  return panel;
}

void ShowIn(QLabel* panel, std::string_view text) {
  panel->setText(base::ToQt(text));
  panel->setToolTip(panel->text());
}

}  // namespace

StatusBars::StatusBars(QWidget* parent)
    : first_(MakeBar(parent, "StatusBar1")),
      second_(MakeBar(parent, "StatusBar2")),
      connection_(AddPanel(first_, "StatusBar1_1", "Verbindung")),
      state_(AddPanel(first_, "StatusBar1_2", "Zustand")),
      log_file_(AddPanel(second_, "StatusBar2_1", "Logdatei")),
      command_list_(AddPanel(second_, "StatusBar2_2", "Befehlsliste")),
      left_out_(AddPanel(second_, "StatusBar2_3", "Nicht geladen")) {
  // What is waited for comes first.
  state_->ElideEnd();
  // It is short, and never cut: unlike an indent, margins at both ends are part of its size hint.
  left_out_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  left_out_->setIndent(0);
  left_out_->setContentsMargins(kIndent, 0, kIndent, 0);
  left_out_->hide();
}

void StatusBars::ShowConnection(std::string_view text) { ShowIn(connection_, text); }

void StatusBars::ShowState(terminal::StateKind kind, std::string_view text) {
  if (state_line_.Set(kind, text)) ShowIn(state_, state_line_.Text());
}

void StatusBars::ShowLogFile(std::string_view text) { ShowIn(log_file_, text); }

void StatusBars::ShowCommandList(std::string_view text, std::string_view left_out) {
  ShowIn(command_list_, text);
  ShowIn(left_out_, left_out);
  left_out_->setVisible(!left_out.empty());
}

}  // namespace kolvane::window
