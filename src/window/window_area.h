#pragma once

#include <QSplitter>
#include <QWidget>

#include "window/script_toolbar.h"
#include "window/status_bars.h"
#include "window/terminal_bar.h"

namespace kolvane::window {

/// The window's inner area: `SplitContainer` with pane and command list, `Toolbar3` to its right, below them
/// the terminal bar and the two status bars. Their places follow the window's resize rules, not a Qt layout.
class WindowArea final : public QWidget {
  Q_OBJECT

 public:
  explicit WindowArea(QWidget* parent = nullptr);

  ScriptToolbar* script_bar() const { return script_bar_; }
  QSplitter* splitter() const { return splitter_; }
  TerminalBar* terminal_bar() const { return terminal_bar_; }
  StatusBars& status_bars() { return status_bars_; }

  QSize minimumSizeHint() const override;

 public Q_SLOTS:
  /// To be called when a part of the area may need another size.
  void LayOutParts();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QSplitter* splitter_;
  ScriptToolbar* script_bar_;
  TerminalBar* terminal_bar_;
  StatusBars status_bars_;
};

}  // namespace kolvane::window
