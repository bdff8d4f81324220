#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>
#include <array>
#include <string>
#include <vector>

namespace kolvane::inspect {

/// The frame `Frame1`: the option buttons of the formats and the list of templates.
class FormatFrame final : public QGroupBox {
  Q_OBJECT

 public:
  explicit FormatFrame(QWidget* parent = nullptr);

  /// Fills the list and selects its first entry, without emitting a signal.
  void SetTemplates(const std::vector<std::string>& names);
  int TemplateIndex() const { return templates_->currentIndex(); }

  /// Checks the option of a format, without emitting a signal.
  void Check(int option);

  /// Puts the options and the list directly after `widget` in the tab order.
  void FollowInTabOrder(QWidget* widget);

  void EnableTemplates(bool enabled) { templates_->setEnabled(enabled); }

 Q_SIGNALS:
  void FormatClick(int option);
  void TemplateClick(int index);

 private:
  static constexpr int kOptions = 6;

  std::array<QRadioButton*, kOptions> options_{};
  QComboBox* templates_;
};

}  // namespace kolvane::inspect
