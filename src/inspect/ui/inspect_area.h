#pragma once

#include <QAction>
#include <QLabel>
#include <QListWidget>

#include "inspect/ui/dump_text_box.h"

namespace kolvane::inspect {

/// Dump, template lines and value, one above the other. While shown, the lines take the dump's lower part;
/// otherwise the dump extends down to the value.
class InspectArea final : public QWidget {
  Q_OBJECT

 public:
  explicit InspectArea(QWidget* parent = nullptr);

  DumpTextBox* dump() { return dump_; }

  void ShowLines(bool shown);
  void SetLines(const std::vector<std::string>& lines);
  void SetLineColor(int row, const QColor& color);
  void SetValue(const std::string& text);
  /// Adds the command to the context menus.
  void AddToMenus(QAction* copy);
  /// The selected lines, or all if none is selected; without lines the value.
  QString TextToCopy() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void LinesShown(bool shown);
  void LineClicked(int row);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildLines();
  void BuildValue();
  void LayOut();

  DumpTextBox* dump_;
  QListWidget* lines_;
  QLabel* value_;
};

}  // namespace kolvane::inspect
