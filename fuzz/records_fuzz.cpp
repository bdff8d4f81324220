// Commands and answers become records of both formats, which are read back by other readers.
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "base/encoding.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "headless/records.h"
#include "values/csv_reader.h"

namespace kolvane::fuzz {
namespace {

class StoppedClock final : public base::Clock {
 public:
  double Seconds() const override { return 1; }
};

/// An exchange with its answer as kept by the session.
struct RecordedExchange {
  std::string command;
  terminal::LastAnswer answer;
  std::int32_t status = 0;
};

RecordedExchange Next(Input& input) {
  const std::uint8_t kind = input.Byte();
  RecordedExchange exchange{std::string(input.Until('\0')), {}, (kind & 1) != 0 ? -30 : 0};
  const std::string_view bytes = input.Until('\0');
  exchange.answer.text = base::FromDevice(bytes, (kind & 2) != 0);
  if ((kind & 4) != 0) exchange.answer.bytes = bytes;
  return exchange;
}

/// The lines written for all exchanges.
std::vector<std::string> Records(const CommandRunOptions& options,
                                 const std::vector<RecordedExchange>& exchanges) {
  std::vector<std::string> lines;
  const std::function<void(LineKind, const std::string&)> add_line = [&](LineKind, const std::string& line) {
    lines.push_back(line);
  };
  headless::HostLines host(add_line);
  headless::Messages messages(-1, false, &host);
  headless::LinePane pane(-1, messages, {.shown = false});
  device::DeviceState device;
  terminal::LastAnswer answer;
  const StoppedClock clock;
  headless::RecordWriter writer(options, device, answer, clock, pane);
  writer.Start();
  for (const RecordedExchange& each : exchanges) {
    answer = each.answer;
    device.last_result = each.status;
    writer.ExchangeEnded(each.command, {.answered = each.status == 0});
  }
  return lines;
}

void CheckJson(const std::vector<RecordedExchange>& exchanges) {
  CommandRunOptions options;
  options.Format = AnswerFormat::kJson;
  const std::vector<std::string> lines = Records(options, exchanges);
  Require(lines.size() == exchanges.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const RecordedExchange& exchange = exchanges[i];
    // For readers that read line by line.
    Require(lines[i].find('\n') == std::string::npos);
    const auto record = nlohmann::json::parse(lines[i]);
    Require(record.size() == (exchange.answer.bytes.empty() ? 5u : 6u));
    Require(record["status"] == exchange.status && record["answer"] == exchange.answer.text);
    Require(record["command"].is_string() && record["time"].is_string() && record["fields"].is_array());
    if (!exchange.answer.bytes.empty())
      Require(base::FromBase64(record["bytes"].get<std::string>()) == exchange.answer.bytes);
    Require(exchange.status == 0 || record["fields"].empty());
    const bool split = !record["fields"].empty() && record["fields"].front().is_string();
    if (split) Require(record["fields"] == nlohmann::json(exchange.answer.Fields()));
  }
}

void CheckCsv(const std::vector<RecordedExchange>& exchanges) {
  CommandRunOptions options;
  options.Format = AnswerFormat::kCsv;
  std::string file;
  for (const std::string& line : Records(options, exchanges)) file += line + '\n';
  const auto rows = values::ReadCsv(file, ',');
  Require(rows && rows->size() == exchanges.size() + 1);
  for (std::size_t i = 0; i < exchanges.size(); ++i) {
    const std::vector<std::string>& cells = (*rows)[i + 1];
    Require(cells.size() == 4 && cells[1] == exchanges[i].command);
    Require(cells[2] == std::to_string(exchanges[i].status) && cells[3] == exchanges[i].answer.text);
  }
}

// The same answers give numbers in both formats.
void CheckNumbers(const std::vector<RecordedExchange>& exchanges, std::int32_t fields) {
  CommandRunOptions options;
  options.Format = AnswerFormat::kCsv;
  options.Fields = fields;
  std::string file;
  for (const std::string& line : Records(options, exchanges)) file += line + '\n';
  const auto rows = values::ReadCsv(file, ',');
  Require(rows.has_value() && !rows->empty());
  std::size_t next = 1;
  options.Format = AnswerFormat::kJson;
  options.Fields.reset();
  for (const std::string& line : Records(options, exchanges)) {
    const auto record = nlohmann::json::parse(line);
    if (record["fields"].empty() || !record["fields"].front().is_number()) continue;
    const std::vector<std::string>& cells = rows->at(next++);
    Require(cells.size() == static_cast<std::size_t>(fields) + 2);
    for (std::size_t field = 0; field < static_cast<std::size_t>(fields); ++field)
      Require(cells[field + 2].empty() == (field >= record["fields"].size()));
  }
  Require(next == rows->size());
}

}  // namespace
}  // namespace kolvane::fuzz

/// A byte for the outcome, a command up to a zero, its answer up to the next zero, and so on.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  fuzz::Input input(data, size);
  const std::int32_t fields = 1 + input.Byte() % 16;
  std::vector<fuzz::RecordedExchange> exchanges;
  while (!input.empty()) exchanges.push_back(fuzz::Next(input));
  fuzz::CheckJson(exchanges);
  fuzz::CheckCsv(exchanges);
  fuzz::CheckNumbers(exchanges, fields);
  return 0;
}
