#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QWidget>
#include <memory>
#include <vector>

#include "pane/ui/find_target.h"

namespace kolvane::window {

/// The bar `FindBar` below pane and list, which searches one of the two. It is hidden until it is opened.
class FindBar final : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(QWidget* parent);

  /// Opens the bar for `target`, named by `caption`, and searches for what is selected there.
  void Open(pane::FindTarget* target, const QString& caption);
  bool IsOpen() const { return target_ != nullptr; }
  pane::FindTarget* target() const { return target_; }
  /// Ends the search; the keyboard focus returns to where it was before.
  void Close();
  void GoToNext();
  void GoToPrevious();

  /// Updates whether the target accepts replacements.
  void ShowReplaceable();

 Q_SIGNALS:
  void OpenedOrClosed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  template <typename Widget>
  Widget* Add(Widget* widget, const char* name, const char* tip);
  void AddFinding();
  void AddReplacing();
  /// The matcher for the typed text; null if there is none, or with `fault` set if the text is no expression.
  std::shared_ptr<const pane::Matcher> MakeMatcher(QString& fault) const;
  void Search();
  void ShowState();
  void ReplaceAll();

  QPointer<pane::FindTarget> target_;
  QPointer<QWidget> focused_before_;
  QLabel* label_;
  QLineEdit* text_;
  QCheckBox* match_case_;
  QCheckBox* regex_;
  QLabel* count_;
  std::vector<QWidget*> replacing_;
  QLineEdit* replacement_ = nullptr;
};

}  // namespace kolvane::window
