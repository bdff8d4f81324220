#include "inspect/ui/format_frame.h"

#include <QFile>
#include <QGridLayout>
#include <QSignalBlocker>

namespace kolvane::inspect {
namespace {

constexpr const char* kCaptions[] = {"Byte",
                                     "Short integer (2-Byte)",
                                     "Long integer (4-Byte)",
                                     "Single precision float (4-Byte)",
                                     "Double precision float (8-Byte)",
                                     "Formatvorlage aus Datei"};

constexpr int kRows = 3;
constexpr int kTemplateWidth = 18;  // characters

}  // namespace

FormatFrame::FormatFrame(QWidget* parent)
    : QGroupBox(QStringLiteral("Anzeigeformat"), parent), templates_(new QComboBox) {
  setObjectName(QStringLiteral("Frame1"));
  auto* grid = new QGridLayout(this);
  for (int option = 0; option < kOptions; ++option) {
    auto* button = new QRadioButton(QLatin1String(kCaptions[option]));
    button->setObjectName(QStringLiteral("optFormat_%1").arg(option));
    connect(button, &QRadioButton::clicked, this, [this, option] { Q_EMIT FormatClick(option); });
    connect(button, &QRadioButton::toggled, this, [this, option](bool on) {
      if (on) Q_EMIT FormatClick(option);
    });
    options_[static_cast<std::size_t>(option)] = button;
    grid->addWidget(button, option % kRows, option / kRows);
  }
  templates_->setObjectName(QStringLiteral("cmbSpecialFormat"));
  templates_->setAccessibleName(QStringLiteral("Formatvorlage"));
  templates_->setFont(QFont(QStringLiteral("Tahoma"), font().pointSize()));
  templates_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  templates_->setMinimumContentsLength(kTemplateWidth);
  grid->addWidget(templates_, kRows, 1);
  connect(templates_, &QComboBox::activated, this, &FormatFrame::TemplateClick);
  connect(templates_, &QComboBox::currentIndexChanged, this, &FormatFrame::TemplateClick);
}

void FormatFrame::SetTemplates(const std::vector<std::string>& names) {
  const QSignalBlocker quiet(templates_);
  for (const std::string& name : names)
    templates_->addItem(QFile::decodeName(QByteArray::fromStdString(name)));
  templates_->setCurrentIndex(names.empty() ? -1 : 0);
}

void FormatFrame::FollowInTabOrder(QWidget* widget) {
  for (QWidget* option : options_) {
    setTabOrder(widget, option);
    widget = option;
  }
  setTabOrder(widget, templates_);
}

void FormatFrame::Check(int option) {
  QRadioButton* button = options_.at(static_cast<std::size_t>(option));
  const QSignalBlocker quiet(button);
  button->setChecked(true);
}

}  // namespace kolvane::inspect
