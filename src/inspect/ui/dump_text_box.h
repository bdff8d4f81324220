#pragma once

#include <QPlainTextEdit>
#include <string>

#include "inspect/caret.h"
#include "inspect/hex_dump.h"

namespace kolvane::inspect {

/// The text box `txtBinData`: shows a dump, reports each click and each key that is let go, and obeys no
/// keys but Right and Left; those that leave the box or the dialog go on to them.
class DumpTextBox final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit DumpTextBox(QWidget* parent = nullptr);

  void SetDump(std::string dump);
  /// The dump with caret and selection as they stand; valid until the next SetDump.
  DumpView View() const;
  /// Puts caret and selection there and shows the caret's place.
  void Show(const DumpView& view);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void Click();
  void KeyUp();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  std::string dump_;
  BoxPositions positions_;
  Position caret_ = 0;      // of the last Show,
  Position box_caret_ = 0;  // and the box's place that it became: two of the dump's may share one
};

}  // namespace kolvane::inspect
