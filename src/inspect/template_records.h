#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "inspect/template_run.h"

namespace kolvane::inspect {

/// A template's fields as the columns of a table. Names are UTF-8; repeated ones are numbered: "a", "a_2".
class RecordTable {
 public:
  explicit RecordTable(const Template& parsed);

  bool empty() const { return fields_.empty(); }
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
