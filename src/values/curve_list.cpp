#include "values/curve_list.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"
#include "values/texts.h"

namespace kolvane::values {

void CurveList::Refresh() {
  if (generation_ != store_.generation()) {
    curves_.clear();
    unasked_.clear();
  }
  generation_ = store_.generation();
  while (curves_.size() < store_.series_count()) {
    const std::size_t number = curves_.size();
    const auto chosen = chosen_.find(FieldOf(number));
    curves_.push_back(chosen != chosen_.end() ? chosen->second : Curve{});
    if (chosen == chosen_.end()) ShowUnasked(number);
  }
}

// At the limit a query replaces the last curve that is not a query's.
void CurveList::ShowUnasked(std::size_t number) {
  if (unasked_.size() == kFirstShown) {
    if (!IsQuery(number)) return;
    const auto other =
        std::find_if(unasked_.rbegin(), unasked_.rend(), [this](auto n) { return !IsQuery(n); });
    if (other == unasked_.rend()) return;
    if (!chosen_.contains(FieldOf(*other))) curves_[*other].shown = false;
    unasked_.erase(std::next(other).base());
  }
  unasked_.push_back(number);
  curves_[number].shown = true;
}

bool CurveList::IsQuery(std::size_t number) const {
  return base::IsQuery(store_.command(store_.series(number).command()));
}

CurveList::Field CurveList::FieldOf(std::size_t number) const {
  const Series& series = store_.series(number);
  return {store_.command(series.command()), series.field()};
}

void CurveList::Show(std::size_t number, bool shown) {
  curves_[number].shown = shown;
  Remember(number);
}

std::string CurveList::Name(std::size_t number) const {
  if (!curves_[number].name.empty()) return curves_[number].name;
  const auto [command, field] = FieldOf(number);
  const std::string name = command.empty() ? std::string(texts::kNoCommand) : command;
  if (store_.FieldsOf(store_.series(number).command()) == 1) return name;
  return name + " [" + std::to_string(field + 1) + ']';
}

void CurveList::SetName(std::size_t number, const std::string& name) {
  curves_[number].name = name;
  Remember(number);
}

void CurveList::SetColor(std::size_t number, std::optional<std::uint32_t> color) {
  curves_[number].color = color;
  Remember(number);
}

}  // namespace kolvane::values
