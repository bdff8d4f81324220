#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/block.h"

namespace kolvane::inspect {

/// The row above the dump: offset to go to, search, pages of a file.
class PositionBar final : public QWidget {
  Q_OBJECT

 public:
  explicit PositionBar(QWidget* parent = nullptr);

  /// Both buttons are shown only if there is more than one page (`any`).
  void ShowPages(bool previous, bool next, bool any);

 Q_SIGNALS:
  void GoTo(const QString& typed);
  void Find(const QString& typed);
  void TurnPage(int by);

 private:
  QLineEdit* AddField(const char* name, std::string_view caption, std::string_view tip);
  QPushButton* AddPageButton(const char* name, std::string_view caption, int by);

  QPushButton* previous_;
  QPushButton* next_;
};

/// The buttons of the commands for block and result.
class BlockButtons final : public QWidget {
  Q_OBJECT

 public:
  explicit BlockButtons(QWidget* parent = nullptr);

  QPushButton* result_list() { return result_list_; }
  QCheckBox* repeat() { return repeat_; }
  /// Adds a button that the dialog owns.
  void Add(QPushButton* button);

 Q_SIGNALS:
  void LoadFile();
  void SaveBlock();
  void CopyAs(CopyForm form);
  void ShowResultList(bool shown);
  void RepeatTemplate();
  void SaveCsv();

 private:
  QPushButton* AddButton(const char* name, std::string_view caption);
  void AddCopyMenu();
  void AddToLayout(QWidget* widget);

  QGridLayout* grid_;
  QPushButton* result_list_;
  QCheckBox* repeat_;
};

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
