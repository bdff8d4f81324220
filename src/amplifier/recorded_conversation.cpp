#include "amplifier/recorded_conversation.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "base/encoding.h"
#include "base/text.h"

namespace kolvane::amplifier {
namespace {

using Json = nlohmann::json;

/// Puts the lines together, each of which is one event.
class Reader {
 public:
  /// Returns what is wrong with the line, empty where nothing is.
  std::string Take(const Json& event, int line) {
    if (!event.is_object()) return "no JSON object";
    const auto way = event.find("way");
    if (way == event.end() || !way->is_string()) return "no \"way\"";
    std::optional<double> seconds;
    if (const auto t = event.find("t"); t != event.end()) {
      if (!t->is_number() || !std::isfinite(t->get<double>())) return "\"t\" is no number of seconds";
      seconds = t->get<double>();
    }
    return Take(way->get_ref<const std::string&>(), seconds, event, line);
  }

  std::vector<Conversation> Finish() {
    Begin({});
    conversations_.pop_back();
    return std::move(conversations_);
  }

 private:
  std::string Take(const std::string& way, std::optional<double> seconds, const Json& event, int line) {
    if (way == "close") return Close(seconds, event);
    if (way == "open") {
      Begin(seconds);
      return {};
    }
    if (way != "out" && way != "in") return "\"way\" is none of open, out, in and close";
    const auto text = event.find("bytes");
    auto bytes = text != event.end() && text->is_string()
                     ? base::FromBase64(text->get_ref<const std::string&>())
                     : std::nullopt;
    if (!bytes) return "\"bytes\" is no Base64";
    if (!bytes->empty())
      conversations_.back().utterances.push_back({way == "out", std::move(*bytes), seconds, line});
    return {};
  }

  // Where the terminal has closed, the replay waits for it to do so again.
  std::string Close(std::optional<double> seconds, const Json& event) {
    if (const auto status = event.find("status"); status != event.end()) {
      if (!status->is_number_integer()) return "\"status\" is no whole number";
      if (*status != 0) conversations_.back().hang_up = HangUp{seconds};
    }
    Begin(seconds);
    return {};
  }

  void Begin(std::optional<double> seconds) {
    const Conversation& last = conversations_.back();
    if (!last.utterances.empty() || last.hang_up) conversations_.emplace_back();
    conversations_.back().seconds = seconds;
  }

  std::vector<Conversation> conversations_{1};
};

}  // namespace

std::variant<std::vector<Conversation>, TranscriptProblem> ReadTranscript(std::string_view text) {
  Reader reader;
  for (int line = 1; !text.empty(); ++line) {
    const std::string_view row = base::TakeLine(text);
    if (row.find_first_not_of(" \t") == std::string_view::npos) continue;
    const Json event = Json::parse(row, nullptr, false);
    const std::string problem = event.is_discarded() ? "no JSON" : reader.Take(event, line);
    if (!problem.empty()) return TranscriptProblem{line, problem};
  }
  return reader.Finish();
}

}  // namespace kolvane::amplifier
