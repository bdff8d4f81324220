#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <span>
#include <string>
#include <vector>

namespace kolvane::device {

/// Common to all fields of a page: control name, label ("&" marks its mnemonic) and tool tip.
struct FieldRow {
  const char* name;
  const char* label;
  const char* tool_tip;
};

/// A column of labelled fields of equal width.
class FormColumn final : public QFormLayout {
 public:
  FormColumn();

  QLineEdit* AddText(const FieldRow& row);
  QComboBox* AddChoice(const FieldRow& row, std::span<const char* const> choices);
  /// An editable list without completion or automatic insertion.
  QComboBox* AddTypedChoice(const FieldRow& row, std::span<const char* const> choices = {});
  QCheckBox* AddCheck(const FieldRow& row);
  /// Adds an existing field.
  void Add(const FieldRow& row, QWidget* field);
};

/// Shows `text` and makes its entry the current one, so that keys and wheel continue from there. If the text
/// is missing in a list that is not editable, an entry is added.
void ShowText(QComboBox* box, const std::string& text);
void ShowText(QLineEdit* line, const std::string& text);
void ShowHistory(QComboBox* box, const std::vector<std::string>& history);

std::string TextOf(const QComboBox* box);
std::string TextOf(const QLineEdit* line);

}  // namespace kolvane::device
