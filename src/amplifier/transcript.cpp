#include "amplifier/transcript.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace kolvane::amplifier {
namespace {

using Json = nlohmann::json;

int DigitValue(char c) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const std::size_t at = kDigits.find(c);
  return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

// RFC 4648 with its "=" at the end; nothing for any other text.
std::optional<std::string> FromBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
  text.remove_suffix(padding);
  std::string bytes;
  unsigned bits = 0;
  int count = 0;
  for (const char c : text) {
    const int value = DigitValue(c);
    if (value < 0) return std::nullopt;
    bits = bits << 6 | static_cast<unsigned>(value);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

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
    if (way == "open" || way == "close") {
      Begin(seconds);
      return {};
    }
    if (way != "out" && way != "in") return "\"way\" is none of open, out, in and close";
    const auto text = event.find("bytes");
    auto bytes = text != event.end() && text->is_string() ? FromBase64(text->get_ref<const std::string&>())
                                                          : std::nullopt;
    if (!bytes) return "\"bytes\" is no Base64";
    if (!bytes->empty())
      conversations_.back().utterances.push_back({way == "out", std::move(*bytes), seconds, line});
    return {};
  }

  void Begin(std::optional<double> seconds) {
    if (!conversations_.back().utterances.empty()) conversations_.emplace_back();
    conversations_.back().seconds = seconds;
  }

  std::vector<Conversation> conversations_{1};
};

}  // namespace

std::variant<std::vector<Conversation>, TranscriptProblem> ReadTranscript(std::string_view text) {
  Reader reader;
  for (int line = 1; !text.empty(); ++line) {
    const std::string_view row = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(row.size() + 1, text.size()));
    if (row.find_first_not_of(" \t\r") == std::string_view::npos) continue;
    const Json event = Json::parse(row, nullptr, false);
    const std::string problem = event.is_discarded() ? "no JSON" : reader.Take(event, line);
    if (!problem.empty()) return TranscriptProblem{line, problem};
  }
  return reader.Finish();
}

}  // namespace kolvane::amplifier
