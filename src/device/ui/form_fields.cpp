#include "device/ui/form_fields.h"

#include "base/ui/fields.h"

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
  field->setToolTip(Utf8(row.tool_tip));
  field->setAccessibleName(Utf8(row.label).remove(QLatin1Char('&')).trimmed());
  addRow(Utf8(row.label), field);
}

QLineEdit* FormColumn::AddText(const FieldRow& row) {
  auto* line = new QLineEdit;
  line->setFixedWidth(kFieldWidth);
  Add(row, line);
  return line;
}

QComboBox* FormColumn::AddChoice(const FieldRow& row, std::span<const char* const> choices) {
  auto* box = new QComboBox;
  for (const char* choice : choices) box->addItem(Utf8(choice));
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
  auto* check = new QCheckBox(Utf8(row.label));
  check->setObjectName(QLatin1String(row.name));
  check->setToolTip(Utf8(row.tool_tip));
  addRow(check);
  return check;
}

void ShowText(QComboBox* box, const std::string& text) {
  const QString shown = Utf8(text);
  const auto find = [&] { return box->findText(shown, Qt::MatchExactly | Qt::MatchCaseSensitive); };
  if (!box->isEditable() && find() < 0) box->addItem(shown);
  box->setCurrentIndex(find());
  if (box->currentText() != shown) box->setEditText(shown);
}

void ShowText(QLineEdit* line, const std::string& text) { line->setText(Utf8(text)); }

void ShowHistory(QComboBox* box, const std::vector<std::string>& history) {
  for (const std::string& entry : history) box->addItem(Utf8(entry));
}

std::string TextOf(const QComboBox* box) { return box->currentText().toStdString(); }

std::string TextOf(const QLineEdit* line) { return line->text().toStdString(); }

}  // namespace kolvane::device
