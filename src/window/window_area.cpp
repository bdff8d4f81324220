#include "window/window_area.h"

#include <QLayout>
#include <cmath>

namespace kolvane::window {
namespace {

constexpr double kSmallestWidth = 2000 / kUnitsPerPixel;
constexpr double kSmallestHeight = 4000 / kUnitsPerPixel;
constexpr double kSplitGap = 50 / kUnitsPerPixel;
constexpr double kBottomGap = 25 / kUnitsPerPixel;
constexpr double kCommandGap = 100 / kUnitsPerPixel;
constexpr double kSendGap = 50 / kUnitsPerPixel;

int Pixels(double value) { return static_cast<int>(std::lround(value)); }

}  // namespace

WindowLayout LayOut(const LayoutInput& in) {
  WindowLayout out;
  out.applies = in.inner_width >= kSmallestWidth && in.inner_height >= kSmallestHeight;
  if (!out.applies) return out;
  out.split_width = Pixels(in.inner_width - in.split_left - kSplitGap - in.toolbar3_width);
  out.split_height = Pixels(in.inner_height - in.split_top - in.toolbar2_height - in.status1_height -
                            in.status2_height - kBottomGap);
  out.command_width = Pixels(out.split_width - in.send_width - kCommandGap);
  out.send_left = Pixels(in.command_left + out.command_width + kSendGap);
  out.toolbar3_left = Pixels(in.split_left + out.split_width + kSplitGap);
  return out;
}

namespace {

constexpr int kLeft = 6;
constexpr int kTop = 6;
constexpr QSize kSmallest(300, 320);
}  // namespace

WindowArea::WindowArea(QWidget* parent)
    : QWidget(parent),
      splitter_(new QSplitter(Qt::Horizontal, this)),
      script_bar_(new ScriptToolbar(this)),
      terminal_bar_(new TerminalBar(this)),
      find_bar_(new FindBar(this)),
      status_bars_(this) {
  splitter_->setObjectName(QStringLiteral("SplitContainer"));
  splitter_->setChildrenCollapsible(false);
  splitter_->move(kLeft, kTop);
  connect(find_bar_, &FindBar::OpenedOrClosed, this, &WindowArea::LayOutParts);
}

QSize WindowArea::minimumSizeHint() const { return kSmallest; }

void WindowArea::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayOutParts();
}

void WindowArea::LayOutParts() {
  QStatusBar* first = status_bars_.first();
  QStatusBar* second = status_bars_.second();
  const int bar_height = terminal_bar_->HeightAt(width());
  const int find_height =
      find_bar_->isVisibleTo(this) ? find_bar_->layout()->heightForWidth(width() - 2 * kLeft) : 0;
  LayoutInput input{.inner_width = width(),
                    .inner_height = height() - find_height,
                    .split_left = kLeft,
                    .split_top = kTop,
                    .toolbar2_height = bar_height,
                    .status1_height = first->sizeHint().height(),
                    .status2_height = second->sizeHint().height(),
                    .command_left = kLeft,
                    .send_width = terminal_bar_->send()->sizeHint().width()};
  // The find bar leaves the run controls their height, or covers what is below pane and list.
  const WindowLayout above = LayOut(input);
  const bool leaves_room = above.applies && above.split_height >= script_bar_->SmallestHeight();
  const bool covers = find_height > 0 && !leaves_room;
  if (covers) input.inner_height = height();
  if (!LayOut(input).applies) return;
  // Its width depends on the height that it gets.
  script_bar_->FitInto(LayOut(input).split_height);
  const int script_width = input.toolbar3_width = script_bar_->sizeHint().width();
  const WindowLayout layout = LayOut(input);
  splitter_->resize(layout.split_width, layout.split_height);
  script_bar_->setGeometry(layout.toolbar3_left, kTop, script_width, layout.split_height);
  // Below the splitter everything is aligned to the window's lower edge.
  int top = height() - second->sizeHint().height();
  second->setGeometry(0, top, width(), second->sizeHint().height());
  top -= first->sizeHint().height();
  first->setGeometry(0, top, width(), first->sizeHint().height());
  terminal_bar_->setGeometry(0, top - bar_height, width(), bar_height);
  const int find_bottom = covers ? height() : top - bar_height;
  find_bar_->setAutoFillBackground(covers);
  find_bar_->raise();
  find_bar_->setGeometry(kLeft, find_bottom - find_height, width() - 2 * kLeft, find_height);
  terminal_bar_->PlaceCommandLine(kLeft, layout.command_width, layout.send_left);
}

}  // namespace kolvane::window
