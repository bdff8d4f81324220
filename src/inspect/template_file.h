#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kolvane::inspect {

/// The bits of a value that a field line names. If last <= first, the divisor is the mask, which moves a
/// single bit down to 0 or 1 (no bits: 0), otherwise 1. Bits above 14 and below 0 never enter the mask.
struct BitRange {
  std::int16_t mask = 0;
  std::int16_t divisor = 0;
};

BitRange BitsFromTo(std::int16_t first, std::int16_t last);

/// A line that describes a field, split at ";". Fields beyond the fifth are left out.
struct FieldLine {
  static constexpr std::size_t kMaxFields = 5;

  std::array<std::string_view, kMaxFields> fields;
  std::size_t count = 0;

  std::string_view name() const { return fields[0]; }
  std::string_view type() const { return fields[1]; }
  /// The field with that index, if the line has it.
  std::optional<std::string_view> Field(std::size_t index) const {
    if (index >= count) return std::nullopt;
    return fields[index];
  }
};

/// No value if the line, stripped of spaces at both ends, has fewer than two fields.
std::optional<FieldLine> SplitFieldLine(std::string_view stripped);

/// The text of the count if a line says how many bytes to read; no value for any other line. The keyword is
/// found in the stripped line, but its position is applied to the line as it is: with leading spaces the
/// count is read from too far to the left.
std::optional<std::string_view> ByteCountText(std::string_view line, std::string_view stripped);

/// The text of the length if a field of that type is a text.
std::optional<std::string_view> StringLengthText(std::string_view type);

enum class FieldType { kByte, kShort, kLong, kFloat, kDouble, kString };

/// A field as described by its line and the lines before it.
struct TemplateField {
  std::string name;
  FieldType type = FieldType::kByte;
  std::int32_t offset = 0;
  std::int32_t length = 0;       ///< bytes; of a text as it was written, even below 0
  std::optional<BitRange> bits;  ///< only for whole numbers
};

/// A step that reads this many bytes.
struct ByteCount {
  std::int32_t bytes = 0;
};

/// A part of a template's line that does not do what was intended.
struct TemplateProblem {
  enum class Kind { kType, kByteCount, kOffset, kOutside, kBits, kHighBits, kLength };

  int line = 0;  ///< from 1
  Kind kind = Kind::kType;
  std::string text;  ///< the part, Windows-1252
};

/// A format template, ready to be run any number of times. Texts are Windows-1252.
struct Template {
  std::vector<std::variant<ByteCount, TemplateField>> steps;
  std::vector<TemplateProblem> problems;

  /// The most bytes that it reads; no value if no line asks for more than 0.
  std::optional<std::size_t> RecordLength() const;
  std::vector<TemplateField> Fields() const;
};

/// Parses a template's file; one in UTF-8 begins with a byte order mark. Never fails: a step that cannot be
/// done is left out, and what it would have set keeps its previous value (docs/formats/template.md).
Template ParseTemplate(std::string_view file);

/// A format template that can be chosen.
struct TemplateFile {
  std::string name;  ///< of the file
  std::string path;

  bool operator==(const TemplateFile&) const = default;
};

/// The files that match `*.BNS*` in any case: those of the user's folder, then those of the component's
/// folder whose names the user's does not have, of these the supplied ones last. Each group is in
/// alphabetical order. A folder that cannot be read, or an empty name, gives none.
std::vector<TemplateFile> ListTemplates(const std::string& user_folder, const std::string& component_folder);

/// Whether a template of that name is supplied with the program.
bool IsSupplied(std::string_view name);

}  // namespace kolvane::inspect
