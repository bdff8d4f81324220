#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace kolvane::inspect {

/// A line that describes a field, split at ";". Fields beyond the fifth are left out.
struct FieldLine {
  static constexpr std::size_t kMostFields = 5;

  std::array<std::string_view, kMostFields> fields;
  std::size_t count = 0;

  std::string_view name() const { return fields[0]; }
  std::string_view type() const { return fields[1]; }
  /// The field of that index, where the line has it.
  std::optional<std::string_view> Field(std::size_t index) const {
    if (index >= count) return std::nullopt;
    return fields[index];
  }
};

/// Nothing where the line, stripped of blanks at both ends, has fewer than two fields.
std::optional<FieldLine> SplitFieldLine(std::string_view stripped);

/// What the count is read from where a line says how many bytes to take; nothing for any other line. The
/// keyword is found in the stripped line, but its place is applied to the line as it stands: with leading
/// blanks the count is read from too far to the left.
std::optional<std::string_view> ByteCountText(std::string_view line, std::string_view stripped);

/// What the length is read from where a field of that type is a text.
std::optional<std::string_view> StringLengthText(std::string_view type);

}  // namespace kolvane::inspect
