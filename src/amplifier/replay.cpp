#include "amplifier/replay.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "base/encoding.h"
#include "base/text.h"

namespace kolvane::amplifier {
namespace {

using Json = nlohmann::json;

/// Builds the conversations from the lines, each of which is one event.
class Reader {
 public:
  /// Returns what is wrong with the line, empty if nothing.
  std::string Take(const Json& event, int line) {
    if (!event.is_object()) return "not a JSON object";
    const auto way = event.find("way");
    if (way == event.end() || !way->is_string()) return "no \"way\"";
    std::optional<double> seconds;
    if (const auto t = event.find("t"); t != event.end()) {
      if (!t->is_number() || !std::isfinite(t->get<double>())) return "\"t\" is not a number of seconds";
      seconds = t->get<double>();
    }
    return Take(way->get_ref<const std::string&>(), seconds, event, line);
  }

  std::vector<Conversation> Finish() {
    StartConversation({});
    conversations_.pop_back();
    return std::move(conversations_);
  }

 private:
  std::string Take(const std::string& way, std::optional<double> seconds, const Json& event, int line) {
    if (way == "close") return Close(seconds, event);
    if (way == "open") {
      StartConversation(seconds);
      return {};
    }
    if (way != "out" && way != "in") return "\"way\" is not open, out, in or close";
    const auto text = event.find("bytes");
    auto bytes = text != event.end() && text->is_string()
                     ? base::FromBase64(text->get_ref<const std::string&>())
                     : std::nullopt;
    if (!bytes) return "\"bytes\" is not Base64";
    if (!bytes->empty())
      conversations_.back().messages.push_back({way == "out", std::move(*bytes), seconds, line});
    return {};
  }

  // If the terminal closed the connection, the replay waits for it to do so again.
  std::string Close(std::optional<double> seconds, const Json& event) {
    if (const auto status = event.find("status"); status != event.end()) {
      if (!status->is_number_integer()) return "\"status\" is not a whole number";
      if (*status != 0) conversations_.back().hang_up = HangUp{seconds};
    }
    StartConversation(seconds);
    return {};
  }

  void StartConversation(std::optional<double> seconds) {
    const Conversation& last = conversations_.back();
    if (!last.messages.empty() || last.hang_up) conversations_.emplace_back();
    conversations_.back().seconds = seconds;
  }

  std::vector<Conversation> conversations_{1};
};

constexpr std::string_view kNothing = "nothing";

// Longer commands are truncated in messages.
constexpr std::size_t kShown = 200;

}  // namespace

std::variant<std::vector<Conversation>, TranscriptProblem> ReadTranscript(std::string_view text) {
  Reader reader;
  for (int line = 1; !text.empty(); ++line) {
    const std::string_view row = base::TakeLine(text);
    if (row.find_first_not_of(" \t") == std::string_view::npos) continue;
    const Json event = Json::parse(row, nullptr, false);
    const std::string problem = event.is_discarded() ? "not JSON" : reader.Take(event, line);
    if (!problem.empty()) return TranscriptProblem{line, problem};
  }
  return reader.Finish();
}

std::string Quoted(std::string_view bytes) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  constexpr std::string_view kNamed = "\n\r\t\"\\";
  constexpr std::string_view kLetters = "nrt\"\\";
  std::string text = "\"";
  for (const char c : bytes.substr(0, kShown)) {
    const auto byte = static_cast<unsigned char>(c);
    if (const std::size_t named = kNamed.find(c); named != std::string_view::npos) {
      text.append(1, '\\').append(1, kLetters[named]);
    } else if (byte < ' ' || byte > '~') {
      text.append("\\x").append(1, kHex[byte >> 4]).append(1, kHex[byte & 15]);
    } else {
      text += c;
    }
  }
  return text + (bytes.size() > kShown ? "\"..." : "\"");
}

Replay::Replay(const Conversation& conversation, bool recorded_times, Clock::time_point now)
    : conversation_(conversation),
      recorded_times_(recorded_times),
      last_(now),
      last_seconds_(conversation.seconds) {}

void Replay::Take(std::string_view bytes, Clock::time_point now) {
  if (bytes.empty() || !difference_.empty()) return;
  started_ = true;
  received_ += bytes;
  Compare(now);
}

void Replay::Compare(Clock::time_point now) {
  while (IsTerminalNext() && !received_.empty()) {
    const std::string_view expected = next().bytes;
    const std::size_t size = std::min(expected.size(), received_.size());
    if (expected.substr(0, size) != std::string_view(received_).substr(0, size)) {
      // Bytes after the command may belong to the next one.
      const std::size_t end = received_.find('\n');
      return Differ(Quoted(expected),
                    Quoted(std::string_view(received_).substr(0, end == std::string::npos ? end : end + 1)));
    }
    if (size < expected.size()) return;
    received_.erase(0, size);
    Pass(next(), now);
  }
  if (finished() && !received_.empty() && !HangsUp()) Differ(kNothing, Quoted(received_));
}

std::optional<Replay::Clock::time_point> Replay::Due() const {
  if (!difference_.empty()) return std::nullopt;
  if (!finished()) return next().from_terminal ? std::nullopt : After(next().seconds);
  return HangsUp() && !hung_up_ ? After(conversation_.hang_up->seconds) : std::nullopt;
}

std::optional<Replay::Clock::time_point> Replay::After(std::optional<double> seconds) const {
  if (!recorded_times_ || !seconds || !last_seconds_) return last_;
  const std::chrono::duration<double> pause(std::max(*seconds - *last_seconds_, 0.0));
  constexpr std::chrono::duration<double> kLongest = std::chrono::hours(24);
  return last_ + std::chrono::duration_cast<Clock::duration>(std::min(pause, kLongest));
}

std::string Replay::TakeDue(Clock::time_point now) {
  std::string due_bytes;
  for (auto due = Due(); due && *due <= now; due = Due()) {
    if (finished()) {
      hung_up_ = true;
      break;
    }
    due_bytes += next().bytes;
    Pass(next(), *due);
  }
  Compare(now);
  return due_bytes;
}

void Replay::Pass(const Message& message, Clock::time_point moment) {
  last_ = moment;
  last_seconds_ = message.seconds;
  ++at_;
}

void Replay::End() {
  if (!difference_.empty()) return;
  const auto rest =
      std::find_if(conversation_.messages.begin() + static_cast<std::ptrdiff_t>(at_),
                   conversation_.messages.end(), [](const Message& each) { return each.from_terminal; });
  if (rest == conversation_.messages.end()) return;
  at_ = static_cast<std::size_t>(rest - conversation_.messages.begin());
  Differ(Quoted(next().bytes), received_.empty() ? std::string(kNothing) : Quoted(received_));
}

void Replay::Differ(std::string_view expected, std::string_view got) {
  const int line = finished() ? conversation_.messages.back().line : next().line;
  difference_ = std::to_string(line) + ": expected " + std::string(expected) + ", got " + std::string(got);
}

}  // namespace kolvane::amplifier
