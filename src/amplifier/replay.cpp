#include "amplifier/replay.h"

#include <algorithm>

namespace kolvane::amplifier {
namespace {

constexpr std::string_view kNothing = "nothing";

// Longer commands are cut where they are shown.
constexpr std::size_t kShown = 200;

}  // namespace

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
  begun_ = true;
  received_ += bytes;
  Compare(now);
}

void Replay::Compare(Clock::time_point now) {
  while (IsTerminalsTurn() && !received_.empty()) {
    const std::string_view expected = next().bytes;
    const std::size_t size = std::min(expected.size(), received_.size());
    if (expected.substr(0, size) != std::string_view(received_).substr(0, size)) {
      // What came with the command may belong to the next one.
      const std::size_t end = received_.find('\n');
      return Differ(Quoted(expected),
                    Quoted(std::string_view(received_).substr(0, end == std::string::npos ? end : end + 1)));
    }
    if (size < expected.size()) return;
    received_.erase(0, size);
    Pass(next(), now);
  }
  if (over() && !received_.empty() && !HangsUp()) Differ(kNothing, Quoted(received_));
}

std::optional<Replay::Clock::time_point> Replay::Due() const {
  if (!difference_.empty()) return std::nullopt;
  if (!over()) return next().from_terminal ? std::nullopt : After(next().seconds);
  return HangsUp() && !hung_up_ ? After(conversation_.hang_up->seconds) : std::nullopt;
}

std::optional<Replay::Clock::time_point> Replay::After(std::optional<double> seconds) const {
  if (!recorded_times_ || !seconds || !last_seconds_) return last_;
  const std::chrono::duration<double> pause(std::max(*seconds - *last_seconds_, 0.0));
  constexpr std::chrono::duration<double> kLongest = std::chrono::hours(24);
  return last_ + std::chrono::duration_cast<Clock::duration>(std::min(pause, kLongest));
}

std::string Replay::Say(Clock::time_point now) {
  std::string said;
  for (auto due = Due(); due && *due <= now; due = Due()) {
    if (over()) {
      hung_up_ = true;
      break;
    }
    said += next().bytes;
    Pass(next(), *due);
  }
  Compare(now);
  return said;
}

void Replay::Pass(const Utterance& utterance, Clock::time_point moment) {
  last_ = moment;
  last_seconds_ = utterance.seconds;
  ++at_;
}

void Replay::End() {
  if (!difference_.empty()) return;
  const auto rest =
      std::find_if(conversation_.utterances.begin() + static_cast<std::ptrdiff_t>(at_),
                   conversation_.utterances.end(), [](const Utterance& each) { return each.from_terminal; });
  if (rest == conversation_.utterances.end()) return;
  at_ = static_cast<std::size_t>(rest - conversation_.utterances.begin());
  Differ(Quoted(next().bytes), received_.empty() ? std::string(kNothing) : Quoted(received_));
}

void Replay::Differ(std::string_view expected, std::string_view got) {
  const int line = over() ? conversation_.utterances.back().line : next().line;
  difference_ = std::to_string(line) + ": expected " + std::string(expected) + ", got " + std::string(got);
}

}  // namespace kolvane::amplifier
