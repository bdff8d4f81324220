#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QString>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::device {

inline QString Utf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// What every field of a page has: control name, label (its "&" marks the key that leads to the field) and
/// tool tip.
struct FieldRow {
  const char* name;
  const char* label;
  const char* tool_tip;
};

/// A column of labelled fields, each as wide as the others.
class FormColumn final : public QFormLayout {
 public:
  FormColumn();

  QLineEdit* AddText(const FieldRow& row);
  QComboBox* AddChoice(const FieldRow& row, std::span<const char* const> choices);
  /// A list that can be typed into as well; nothing is completed or entered by itself.
  QComboBox* AddTypedChoice(const FieldRow& row, std::span<const char* const> choices = {});
  QCheckBox* AddCheck(const FieldRow& row);
  /// For a field made elsewhere.
  void Add(const FieldRow& row, QWidget* field);
};

/// Shows `text` and makes its entry the current one, so that keys and wheel go on from there. A list that
/// cannot be typed into gets an entry for a text that it lacks.
void ShowText(QComboBox* box, const std::string& text);
void ShowText(QLineEdit* line, const std::string& text);
void ShowHistory(QComboBox* box, const std::vector<std::string>& history);

std::string TextOf(const QComboBox* box);
std::string TextOf(const QLineEdit* line);

}  // namespace kolvane::device
