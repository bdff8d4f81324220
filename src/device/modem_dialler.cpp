#include "device/modem_dialler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "base/encoding.h"
#include "base/text.h"

namespace kolvane::device {
namespace {

constexpr std::int32_t kConnected = 0;
constexpr std::int32_t kFailed = -1;
constexpr std::int32_t kReplySize = 255;
constexpr std::int16_t kReplyTerminator = 10;
constexpr double kShortestWait = 0.010;
constexpr std::int32_t kPauseMs = 50;

// Replies are enclosed in line ends, in a buffer padded with spaces. A single CR may occur within one, as
// between an echo and the reply to it.
std::string WithoutLineEnds(std::string reply) {
  std::ranges::replace_if(
      reply, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return base::FromWindows1252(base::TrimSpaces(reply));
}

bool SaysConnect(std::string_view reply) { return base::ContainsNoCase(reply, "CONNECT"); }

}  // namespace

std::vector<std::string> ModemCommands(const std::string& script) {
  std::vector<std::string> commands;
  for (std::size_t at = 0; at < script.size();) {
    const std::size_t end = std::min(script.find("\r\n", at), script.size());
    if (end > at) commands.push_back(script.substr(at, end - at));
    at = end + 2;
  }
  return commands;
}

bool IsRefusal(std::string_view word) {
  return std::ranges::any_of(std::array{"NO CARRIER", "BUSY", "NO ANSWER", "NO DIALTONE", "ERROR"},
                             [word](const char* refusal) { return base::ContainsNoCase(word, refusal); });
}

void ModemDialler::Tell(const std::string& command, double seconds_left) {
  waits_.TellDialling({command, last_word_, static_cast<std::int32_t>(std::lround(seconds_left))});
}

// A read without a reply keeps the last word.
std::int32_t ModemDialler::ReadReply() {
  reply_.assign(kReplySize, ' ');
  const std::int32_t status = library_.ReadPort(reply_.data(), kReplySize, kReplyTerminator);
  if (std::string word = WithoutLineEnds(reply_); !word.empty()) last_word_ = std::move(word);
  return status;
}

// A read normally blocks until the time-out. If it returns empty at once (the port has gone), a pause keeps
// the loop from spinning. Negative if the pause fails too.
std::int32_t ModemDialler::ReadReplyPaced() {
  const double begin = clock_.Seconds();
  const std::int32_t status = ReadReply();
  const bool empty = status < 0 || base::TrimSpacesRight(reply_).empty();
  if (!empty || clock_.Seconds() - begin >= kShortestWait) return 0;
  return library_.Delay(kPauseMs);
}

std::int32_t ModemDialler::Dial(const std::vector<std::string>& commands, std::int32_t timeout_s) {
  library_.FlushInQueue();
  for (const std::string& command : commands) {
    library_.WritePort(base::ToWindows1252(command) + '\r');
    Tell(command, 0);
    last_word_.clear();
    ReadReply();
    if (!waits_.AttendNow()) return kFailed;
  }
  for (const double begin = clock_.Seconds(); !SaysConnect(reply_);) {
    const double left = timeout_s - (clock_.Seconds() - begin);
    if (left < 0) return kFailed;
    Tell({}, left);
    if (ReadReplyPaced() < 0 || !waits_.AttendNow()) return kFailed;
  }
  return kConnected;
}

}  // namespace kolvane::device
