#pragma once

#include "terminal/pane_moves.h"
#include "terminal/pane_store.h"
#include "window/print_source.h"

namespace kolvane::window {

/// A stretch of the pane's text as lines to print. Control characters come out as the pane shows them.
class PaneLines final : public PrintSource {
 public:
  PaneLines(const terminal::PaneStore& store, terminal::PaneRange range);

  std::size_t LineCount() const override;
  PrintLine Line(std::size_t line) const override;

 private:
  const terminal::PaneStore& store_;
  terminal::PaneRange range_;
  std::size_t first_;
  std::size_t count_;
};

}  // namespace kolvane::window
