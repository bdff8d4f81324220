#include "headless/records.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "base/csv.h"
#include "base/encoding.h"

namespace kolvane::headless {
namespace {

constexpr char kSeparator = ',';
constexpr std::int32_t kNoStatus = -1;  // a failure that no call reported: an empty answer

// The answer read in this exchange, or an empty one.
const terminal::LastAnswer& AnswerOf(const terminal::ExchangeResult& result,
                                     const terminal::LastAnswer& last) {
  static const terminal::LastAnswer none;
  return result.answer_due ? last : none;
}

nlohmann::ordered_json FieldsOf(const terminal::LastAnswer& answer, bool answered,
                                const std::optional<values::Row>& row) {
  auto fields = nlohmann::ordered_json::array();
  if (row) {
    for (const double field : row->fields) fields.push_back(field);
  } else if (answered && answer.bytes.empty() && !answer.text.empty()) {
    for (std::string& field : answer.Fields()) fields.push_back(std::move(field));
  }
  return fields;
}

std::string JsonRecord(const values::Moment& moment, std::string_view command, std::int32_t status,
                       const terminal::LastAnswer& answer, const std::optional<values::Row>& row) {
  nlohmann::ordered_json record;
  record["time"] = base::UtcTimeText(moment.time_ms);
  record["command"] = command;
  record["status"] = status;
  record["answer"] = answer.text;
  record["fields"] = FieldsOf(answer, status == 0, row);
  if (!answer.bytes.empty()) record["bytes"] = base::Base64(answer.bytes);
  // A command line argument may not be valid UTF-8.
  return record.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

RecordWriter::RecordWriter(const CommandRunOptions& options, const device::DeviceState& device,
                           const terminal::LastAnswer& answer, const base::Clock& clock, LinePane& pane)
    : options_(options),
      device_(device),
      answer_(answer),
      clock_(clock),
      pane_(pane),
      numbers_(values::kCommaForm, static_cast<std::size_t>(options.Fields.value_or(0))) {}

void RecordWriter::Start() {
  if (options_.Format != AnswerFormat::kCsv) return;
  std::string header;
  if (options_.Fields) {
    numbers_.AppendHeader(header);
    header.pop_back();
  } else {
    header = "time,command,status,answer";
  }
  pane_.WriteRecord(header);
}

void RecordWriter::ExchangeEnded(std::string_view command, const terminal::ExchangeResult& result) {
  if (result.Failed() && !options_.ErrorLines) return;
  const terminal::LastAnswer& answer = AnswerOf(result, answer_);
  const std::int32_t status = StatusOf(result);
  const values::Moment moment = values::Now(clock_);
  const auto row = status == 0 ? maker_.Make(moment, command, answer.text) : std::nullopt;
  if (options_.Format == AnswerFormat::kJson) {
    pane_.WriteRecord(JsonRecord(moment, command, status, answer, row));
  } else if (!options_.Fields) {
    pane_.WriteRecord(CsvRecord(moment, command, status, answer.text));
  } else if (row) {
    pane_.WriteRecord(NumbersRecord(*row));
  }
}

std::int32_t RecordWriter::StatusOf(const terminal::ExchangeResult& result) const {
  if (!result.Failed()) return 0;
  if (device_.last_result < 0) return device_.last_result;
  return result.write_status < 0 ? result.write_status : kNoStatus;
}

std::string RecordWriter::NumbersRecord(const values::Row& row) {
  std::string record;
  numbers_.Append(row, record);
  record.pop_back();
  return record;
}

std::string RecordWriter::CsvRecord(const values::Moment& moment, std::string_view command,
                                    std::int32_t status, std::string_view answer) {
  std::string record;
  time_.Append(moment.time_ms, '.', record);
  record += kSeparator;
  base::AppendCsvText(command, kSeparator, record);
  record += kSeparator + std::to_string(status) + kSeparator;
  base::AppendCsvText(answer, kSeparator, record);
  return record;
}

}  // namespace kolvane::headless
