#include "values/row.h"

#include <cmath>

#include "base/number.h"
#include "base/text.h"

namespace kolvane::values {

Moment Now(const base::Clock& clock) { return {base::WallClockMs(), clock.Seconds()}; }

std::optional<Row> RowMaker::Make(Moment moment, std::string_view command, std::string_view answer) {
  fields_.clear();
  const bool all = base::ForEachField(answer, [this](std::string_view field) {
    const auto number = base::WholeTextNumber(field);
    if (!number || !std::isfinite(*number)) return false;
    fields_.push_back(*number);
    return true;
  });
  return all ? std::optional(Row{moment, command, fields_}) : std::nullopt;
}

}  // namespace kolvane::values
