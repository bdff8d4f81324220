#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kolvane::inspect {

/// The bits of a value that a field line names. A single bit is moved down to 0 or 1, several stay where they
/// are; bits from 15 on and below 0 never enter the mask. A range without bits has divisor 0.
struct BitRange {
  std::int16_t mask = 0;
  std::int16_t divisor = 0;
};

BitRange BitsFromTo(std::int16_t first, std::int16_t last);

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

enum class FieldType { kByte, kShort, kLong, kFloat, kDouble, kString };

/// A field as its line, and the lines before it, describe it.
struct TemplateField {
  std::string name;
  FieldType type = FieldType::kByte;
  std::int32_t offset = 0;
  std::int32_t length = 0;       ///< bytes; of a text as it was written, below 0 too
  std::optional<BitRange> bits;  ///< only of whole numbers
};

/// So many bytes are to be read.
struct ByteCount {
  std::int32_t bytes = 0;
};

/// What a line of a template cannot do as it was meant.
struct TemplateProblem {
  enum class Kind { kType, kByteCount, kOffset, kOutside, kBits, kHighBits, kLength };

  int line = 0;  ///< from 1
  Kind kind = Kind::kType;
  std::string text;  ///< what stands there, Windows-1252
};

/// A format template, ready to be run any number of times. Texts are Windows-1252.
struct Template {
  std::vector<std::variant<ByteCount, TemplateField>> steps;
  std::vector<TemplateProblem> problems;

  /// The bytes that it reads; nothing where no line says how many, or 0 and less is said.
  std::optional<std::size_t> RecordLength() const;
  std::vector<TemplateField> Fields() const;
};

/// Reads the bytes of a template's file; one in UTF-8 begins with its mark. Nothing fails: a step that cannot
/// be done is left out, and what it would have set stays as the lines before left it
/// (docs/formats/template.md).
Template ParseTemplate(std::string_view file);

/// A format template that can be chosen.
struct TemplateFile {
  std::string name;  ///< of the file
  std::string path;

  bool operator==(const TemplateFile&) const = default;
};

/// The files that match `*.BNS*`, case ignored: those of the user's own folder, then those of the
/// component's whose names the user's own has not, and of these the ones that come with the program last.
/// Each group is in alphabetical order. A folder that cannot be read, or is empty, has none.
std::vector<TemplateFile> ListTemplates(const std::string& user_folder, const std::string& component_folder);

/// Whether a template of that name comes with the program.
bool IsSupplied(std::string_view name);

}  // namespace kolvane::inspect
