#include "device/ui/form_fields.h"

#include "base/ui/fields.h"
#include "base/ui/qt_text.h"

namespace kolvane::device {
namespace {

constexpr int kFieldWidth = 130;
constexpr int kRowGap = 8;

}  // namespace

FormColumn::FormColumn() {
  setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
  setVerticalSpacing(kRowGap);
  setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void FormColumn::Add(const FieldRow& row, QWidget* field) {
  field->setObjectName(QLatin1String(row.name));
  field->setToolTip(base::ToQt(row.tool_tip));
  field->setAccessibleName(base::ToQt(row.label).remove(QLatin1Char('&')).trimmed());
  addRow(base::ToQt(row.label), field);
}

QLineEdit* FormColumn::AddText(const FieldRow& row) {
  auto* line = new QLineEdit;
  line->setFixedWidth(kFieldWidth);
  Add(row, line);
  return line;
}

QComboBox* FormColumn::AddChoice(const FieldRow& row, std::span<const char* const> choices) {
  auto* box = new QComboBox;
  for (const char* choice : choices) box->addItem(base::ToQt(choice));
  box->setMinimumWidth(kFieldWidth);
  base::GuardWheel(box);
  Add(row, box);
  return box;
}

QComboBox* FormColumn::AddTypedChoice(const FieldRow& row, std::span<const char* const> choices) {
  QComboBox* box = AddChoice(row, choices);
  box->setEditable(true);
  box->setInsertPolicy(QComboBox::NoInsert);
  box->setCompleter(nullptr);
  return box;
}

QCheckBox* FormColumn::AddCheck(const FieldRow& row) {
  auto* check = new QCheckBox(base::ToQt(row.label));
  check->setObjectName(QLatin1String(row.name));
  check->setToolTip(base::ToQt(row.tool_tip));
  addRow(check);
  return check;
}

void ShowText(QComboBox* box, const std::string& text) {
  const QString shown = base::ToQt(text);
  const auto find = [&] { return box->findText(shown, Qt::MatchExactly | Qt::MatchCaseSensitive); };
  if (!box->isEditable() && find() < 0) box->addItem(shown);
  box->setCurrentIndex(find());
  if (box->currentText() != shown) box->setEditText(shown);
}

void ShowText(QLineEdit* line, const std::string& text) { line->setText(base::ToQt(text)); }

void ShowHistory(QComboBox* box, const std::vector<std::string>& history) {
  for (const std::string& entry : history) box->addItem(base::ToQt(entry));
}

std::string TextOf(const QComboBox* box) { return base::FromQt(box->currentText()); }

std::string TextOf(const QLineEdit* line) { return base::FromQt(line->text()); }

}  // namespace kolvane::device
