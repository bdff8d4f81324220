#include "window/grid_target.h"

#include "terminal/ui/output_pane_paint.h"
#include "window/caption.h"
#include "window/look.h"
#include "window/print_command.h"
#include "window/print_source.h"
#include "window/text.h"

namespace kolvane::window {
namespace {

// Rows of a command list in the colours of their kinds.
class ListLines final : public PrintSource {
 public:
  ListLines(const script::CommandList& list, int first, int last) : list_(list), first_(first), last_(last) {}

  std::size_t LineCount() const override {
    return last_ < first_ ? 0 : static_cast<std::size_t>(last_ - first_ + 1);
  }

  PrintLine Line(std::size_t line) const override {
    const int row = first_ + static_cast<int>(line);
    const QString text = ToQt(list_.Text(row));
    return {text, {{0, static_cast<int>(text.size()), terminal::ToQColor(list_.TextColor(row))}}};
  }

 private:
  const script::CommandList& list_;
  int first_;
  int last_;
};

}  // namespace

void GridTarget::ShowLook() {
  grid_->ShowLook(FontOf(look_), look_.font_color, terminal::ToQColor(look_.back_color));
}

void GridTarget::Print() {
  const script::CommandList& list = grid_->list();
  const auto [first, last] = grid_->SelectedRows();
  const ListLines all(list, 1, list.LastUsedRow());
  const ListLines selected(list, first, last);
  const PrintStyle style{CaptionWithoutMark(*window_), grid_->font(), terminal::ToQColor(look_.font_color)};
  // One marked row is only where the list stands.
  PrintLines(window_, prompt_, style, all, last > first ? &selected : nullptr);
}

void GridTarget::ChooseFont() {
  if (window::ChooseFont(window_, look_)) ShowLook();
}

void GridTarget::ChooseBackColor() {
  if (window::ChooseBackColor(window_, look_)) ShowLook();
}

}  // namespace kolvane::window
