// Answers that may be numbers become rows, which are kept, written as CSV in both forms and read back.
#include <algorithm>
#include <charconv>
#include <cmath>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "values/csv_reader.h"
#include "values/row.h"
#include "values/store.h"

namespace kolvane::fuzz {
namespace {

using values::CsvForm;

double NumberOf(std::string cell, char decimal_sign) {
  std::replace(cell.begin(), cell.end(), decimal_sign, '.');
  double number = 0;
  const auto result = std::from_chars(cell.data(), cell.data() + cell.size(), number);
  Require(result.ec == std::errc() && result.ptr == cell.data() + cell.size());
  return number;
}

void RequireSame(const values::Row& row, const std::vector<std::string>& cells, const CsvForm& form) {
  Require(cells[1] == row.command);
  for (std::size_t field = 0; field < row.fields.size(); ++field) {
    const double number = NumberOf(cells[field + 2], form.decimal_sign);
    Require(number == row.fields[field] && std::signbit(number) == std::signbit(row.fields[field]));
  }
  for (std::size_t cell = row.fields.size() + 2; cell < cells.size(); ++cell) Require(cells[cell].empty());
}

// A file of the store's rows equals what was written for each row as it arrived.
void CheckFile(const values::Store& store, const std::string& streamed, const CsvForm& form) {
  values::CsvWriter writer(form, store.fields());
  std::string written;
  writer.AppendHeader(written);
  const std::size_t head = written.size();
  values::RowReader reader(store);
  while (reader.row() < store.rows()) writer.Append(reader.Next(), written);
  Require(written.substr(head) == streamed);
  const auto lines = values::ReadCsv(written, form.separator);
  Require(lines && lines->size() == store.rows() + 1 && lines->front().size() == store.fields() + 2);
  values::RowReader again(store);
  for (std::size_t line = 1; line < lines->size(); ++line) RequireSame(again.Next(), (*lines)[line], form);
}

}  // namespace
}  // namespace kolvane::fuzz

/// Exchanges: a command up to a zero, its answer up to the next.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  values::Store store;
  values::RowMaker maker;
  // A second pass knows how many fields there are.
  for (fuzz::Input input(data, size); !input.empty();) {
    const std::string_view command = input.Until('\0');
    if (const auto row = maker.Make({}, command, input.Until('\0'))) store.Add(*row);
  }
  for (const values::CsvForm& form : {values::kCommaForm, values::kSemicolonForm}) {
    values::CsvWriter writer(form, store.fields());
    std::string streamed;
    for (fuzz::Input input(data, size); !input.empty();) {
      const std::string_view command = input.Until('\0');
      if (const auto row = maker.Make({}, command, input.Until('\0'))) writer.Append(*row, streamed);
    }
    fuzz::CheckFile(store, streamed, form);
  }
  return 0;
}
