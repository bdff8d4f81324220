#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "inspect/byte_values.h"
#include "inspect/template_file.h"

namespace kolvane::inspect {

/// How numbers are read and shown.
struct NumberForm {
  bool network_order = false;
  std::string_view decimal_sign = ".";
};

/// A line of a template's result, and the bytes it shows: `offset` counts from the caret.
struct ResultLine {
  std::string text;
  std::int32_t offset = 0;
  std::int32_t length = 0;
};

/// Runs a template at the caret and returns a line for each field. Never fails, like ParseTemplate.
std::vector<ResultLine> RunTemplate(const Template& parsed, const NumberForm& form, DumpView& view,
                                    ByteBuffer& buffer);

/// Whether all its bytes are within the first `size`.
bool IsWithin(const TemplateField& field, std::size_t size);

/// The value of a field; none if it is not entirely within the bytes or has no bits. Texts are Windows-1252;
/// a single becomes the double with the same shortest decimal form.
using FieldValue = std::variant<std::monostate, std::int64_t, double, std::string>;
FieldValue ValueOf(const TemplateField& field, ByteSpan bytes, bool network_order);

/// A template's fields as the columns of a table. Names are UTF-8; repeated ones are numbered: "a", "a_2".
class RecordTable {
 public:
  explicit RecordTable(const Template& parsed);

  const std::vector<std::string>& names() const { return names_; }
  /// The values of a record, one per field; texts are UTF-8. A field that is not entirely within `bytes` has
  /// no value.
  std::vector<FieldValue> Values(std::string_view bytes, bool network_order) const;

  /// Both append a line of CSV with its LF, with comma and decimal point.
  void AppendCsvHeader(std::string& out) const;
  void AppendCsvRecord(std::string_view bytes, bool network_order, std::string& out) const;

 private:
  std::vector<TemplateField> fields_;
  std::vector<std::string> names_;
};

/// The lines of a record as RunTemplate shows them, for the fields entirely within `bytes`.
std::vector<ResultLine> RecordLines(const Template& parsed, const NumberForm& form, std::string_view bytes);

}  // namespace kolvane::inspect
