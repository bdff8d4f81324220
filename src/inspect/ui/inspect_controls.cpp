#include "inspect/ui/inspect_controls.h"

#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenu>
#include <QSignalBlocker>

#include "base/ui/buttons.h"
#include "base/ui/fields.h"
#include "base/ui/qt_text.h"
#include "inspect/texts.h"

namespace kolvane::inspect {
namespace {

constexpr int kColumns = 2;
constexpr int kFieldWidth = 12;     // characters
constexpr int kTemplateWidth = 18;  // characters
constexpr int kFormatRows = 3;

constexpr const char* kCaptions[] = {"Byte",
                                     "Short integer (2-Byte)",
                                     "Long integer (4-Byte)",
                                     "Single precision float (4-Byte)",
                                     "Double precision float (8-Byte)",
                                     "Formatvorlage aus Datei"};

QPushButton* MakeButton(const char* name, std::string_view caption) {
  auto* button = new QPushButton(base::ToQt(caption));
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

PositionBar::PositionBar(QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  const auto* go_to = AddField("GoToEdit", texts::kGoTo, texts::kGoToTip);
  const auto* find = AddField("InspectFind", texts::kFind, texts::kFindTip);
  row->addStretch();
  previous_ = AddPageButton("cmdPreviousPage", texts::kPreviousPage, -1);
  next_ = AddPageButton("cmdNextPage", texts::kNextPage, 1);
  connect(go_to, &QLineEdit::returnPressed, this, [this, go_to] { Q_EMIT GoTo(go_to->text()); });
  connect(find, &QLineEdit::returnPressed, this, [this, find] { Q_EMIT Find(find->text()); });
  ShowPages(false, false, false);
}

QLineEdit* PositionBar::AddField(const char* name, std::string_view caption, std::string_view tip) {
  auto* field = new QLineEdit;
  field->setObjectName(QLatin1String(name));
  base::TakeAnyLength(field);
  field->setToolTip(base::ToQt(tip));
  field->setMinimumWidth(fontMetrics().averageCharWidth() * kFieldWidth);
  auto* label = new QLabel(base::ToQt(caption));
  label->setBuddy(field);
  layout()->addWidget(label);
  layout()->addWidget(field);
  return field;
}

QPushButton* PositionBar::AddPageButton(const char* name, std::string_view caption, int by) {
  QPushButton* button = MakeButton(name, caption);
  layout()->addWidget(button);
  base::OnClick(button, [this, by] { Q_EMIT TurnPage(by); });
  return button;
}

void PositionBar::ShowPages(bool previous, bool next, bool any) {
  previous_->setVisible(any);
  next_->setVisible(any);
  previous_->setEnabled(previous);
  next_->setEnabled(next);
}

BlockButtons::BlockButtons(QWidget* parent) : QWidget(parent), grid_(new QGridLayout(this)) {
  grid_->setContentsMargins(0, 0, 0, 0);
  base::OnClick(AddButton("cmdLoadFile", texts::kLoadFile), [this] { Q_EMIT LoadFile(); });
  base::OnClick(AddButton("cmdSaveBlock", texts::kSaveBlock), [this] { Q_EMIT SaveBlock(); });
  result_list_ = AddButton("cmdResultList", texts::kResultList);
  result_list_->setCheckable(true);
  connect(result_list_, &QPushButton::clicked, this, &BlockButtons::ShowResultList);
  repeat_ = new QCheckBox(base::ToQt(texts::kRepeat));
  repeat_->setObjectName(QStringLiteral("chkRepeat"));
  connect(repeat_, &QCheckBox::toggled, this, &BlockButtons::RepeatTemplate);
  AddToLayout(repeat_);
  base::OnClick(AddButton("cmdSaveCsv", texts::kSaveCsv), [this] { Q_EMIT SaveCsv(); });
  AddCopyMenu();
}

QPushButton* BlockButtons::AddButton(const char* name, std::string_view caption) {
  QPushButton* button = MakeButton(name, caption);
  AddToLayout(button);
  return button;
}

void BlockButtons::Add(QPushButton* button) { AddToLayout(button); }

void BlockButtons::AddToLayout(QWidget* widget) {
  const int count = grid_->count();
  grid_->addWidget(widget, count / kColumns, count % kColumns);
}

void BlockButtons::AddCopyMenu() {
  struct Row {
    const char* name;
    const char* caption;
    CopyForm form;
  };
  constexpr Row kRows[] = {
      {"CopyAsHex", "&Hexadezimal", CopyForm::kHex},        {"CopyAsC", "&C-Array", CopyForm::kC},
      {"CopyAsPython", "&Python-Bytes", CopyForm::kPython}, {"CopyAsBase64", "&Base64", CopyForm::kBase64},
      {"CopyAsDump", "Hex&dump", CopyForm::kDump},          {"CopyAsText", "&Text", CopyForm::kText}};
  QPushButton* button = AddButton("cmdCopyAs", texts::kCopyAs);
  auto* menu = new QMenu(button);
  for (const Row& row : kRows) {
    QAction* item = menu->addAction(QLatin1String(row.caption));
    item->setObjectName(QLatin1String(row.name));
    connect(item, &QAction::triggered, this, [this, form = row.form] { Q_EMIT CopyAs(form); });
  }
  button->setMenu(menu);
}

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
    grid->addWidget(button, option % kFormatRows, option / kFormatRows);
  }
  templates_->setObjectName(QStringLiteral("cmbSpecialFormat"));
  templates_->setAccessibleName(QStringLiteral("Formatvorlage"));
  templates_->setFont(QFont(QStringLiteral("Tahoma"), font().pointSize()));
  templates_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  templates_->setMinimumContentsLength(kTemplateWidth);
  grid->addWidget(templates_, kFormatRows, 1);
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
