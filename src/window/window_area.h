#pragma once

#include <QSplitter>
#include <QWidget>

#include "window/find_bar.h"
#include "window/status_bars.h"
#include "window/terminal_bar.h"
#include "window/toolbars.h"

namespace kolvane::window {

/// Fixed measures are in units of 1/15 device-independent pixel.
inline constexpr double kUnitsPerPixel = 15;

/// What the layout of the window's inner area depends on, in device-independent pixels.
struct LayoutInput {
  int inner_width = 0;
  int inner_height = 0;
  int split_left = 0;
  int split_top = 0;
  int toolbar2_height = 0;
  int toolbar3_width = 0;
  int status1_height = 0;
  int status2_height = 0;
  int command_left = 0;
  int send_width = 0;
};

/// The sizes and edges that result.
struct WindowLayout {
  bool applies = false;  ///< false below 2000 by 4000 units: nothing is moved
  int split_width = 0;
  int split_height = 0;
  int command_width = 0;
  int send_left = 0;
  int toolbar3_left = 0;
};

WindowLayout LayOut(const LayoutInput& input);

/// The window's inner area: `SplitContainer` with pane and command list, `Toolbar3` to its right, below them
/// the find bar while it is open, the terminal bar and the two status bars. Their positions follow the
/// window's resize rules, not a Qt layout.
class WindowArea final : public QWidget {
  Q_OBJECT

 public:
  explicit WindowArea(QWidget* parent = nullptr);

  ScriptToolbar* script_bar() const { return script_bar_; }
  QSplitter* splitter() const { return splitter_; }
  TerminalBar* terminal_bar() const { return terminal_bar_; }
  FindBar* find_bar() const { return find_bar_; }
  StatusBars& status_bars() { return status_bars_; }

  QSize minimumSizeHint() const override;

 public Q_SLOTS:
  /// To be called when a part of the area may need a different size.
  void LayOutParts();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QSplitter* splitter_;
  ScriptToolbar* script_bar_;
  TerminalBar* terminal_bar_;
  FindBar* find_bar_;
  StatusBars status_bars_;
};

}  // namespace kolvane::window
