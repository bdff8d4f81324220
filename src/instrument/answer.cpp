#include "instrument/answer.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "base/block_head.h"
#include "kolvane/Instrument.h"

namespace kolvane::instrument {
namespace {

using devlnk::Code;
using devlnk::InputQueue;
using devlnk::PortSession;
using devlnk::Status;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::int32_t kGapMs = 50;

// A lone LF is a valid line end, so only LF is awaited.
devlnk::MessageRule RuleFor(std::string_view termination) {
  if (termination.empty()) return {InputQueue::kLimit, {}, true, kGapMs};
  return {InputQueue::kLimit, termination == kLineEnd ? kLineEnd.substr(1) : termination};
}

void Strip(std::string_view termination, std::string& answer) {
  if (termination == kLineEnd && !answer.ends_with(termination)) termination.remove_prefix(1);
  if (answer.ends_with(termination)) answer.resize(answer.size() - termination.size());
}

std::int32_t AwaitHead(PortSession& session, base::BlockHead& head) {
  while (!head.IsWhole()) {
    const Status status = session.AwaitQueued(head.bytes() + 1);
    if (status != Status::kOk) return Code(status);
    if (!head.Take(session.queued_bytes()[head.bytes()])) return InstrumentError::kNoBlock;
  }
  return 0;
}

// Reads pieces as they arrive, so that the time-out applies between them.
std::int32_t ReadPieces(PortSession& session, std::size_t count, std::string& data, bool& ended) {
  data.reserve(count);
  while (data.size() < count) {
    const Status queued = session.AwaitQueued(1);
    if (queued != Status::kOk) return Code(queued);
    devlnk::MessageEnd end{};
    const std::size_t piece = std::min(session.queued(), count - data.size());
    const Status status = session.ReadMessage({piece, {}}, data, end);
    if (status != Status::kOk) return Code(status);
    ended = end == devlnk::MessageEnd::kOwnEnd;
  }
  return 0;
}

// Drops a termination that arrives within the gap.
void DropTermination(PortSession& session, std::string_view termination) {
  session.SetTimeout(kGapMs);
  for (std::size_t count = 1; count <= termination.size(); ++count) {
    if (session.AwaitQueued(count) != Status::kOk) return;
    const std::string_view received = session.queued_bytes().substr(0, count);
    if (termination == kLineEnd && received == "\n") return session.Drop(1);
    if (received != termination.substr(0, count)) return;
  }
  session.Drop(termination.size());
}

constexpr std::string_view kBetweenValues = ",; \t\r\n";

double ValueOf(std::string_view text) {
  const std::string_view digits = text.substr(text.starts_with('+') ? 1 : 0);
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size())
    throw std::invalid_argument("'" + std::string(text) + "' is not a number");
  return value;
}

}  // namespace

std::int32_t ReadAnswer(PortSession& session, std::string_view termination, std::string& answer) {
  const devlnk::MessageRule rule = RuleFor(termination);
  for (auto end = devlnk::MessageEnd::kFull; end == devlnk::MessageEnd::kFull;) {
    const Status status = session.ReadMessage(rule, answer, end);
    if (status != Status::kOk) return Code(status);
    // The termination may be split across two pieces.
    if (end == devlnk::MessageEnd::kFull && !termination.empty() && answer.ends_with(termination)) break;
  }
  Strip(termination, answer);
  return 0;
}

std::int32_t ReadCount(PortSession& session, std::size_t count, std::string& bytes) {
  while (bytes.size() < count) {
    devlnk::MessageEnd end{};
    const std::size_t most = std::min(count - bytes.size(), InputQueue::kLimit);
    const Status status = session.ReadMessage({most, {}, false}, bytes, end);
    if (status != Status::kOk) return Code(status);
  }
  return 0;
}

std::int32_t ReadBlock(PortSession& session, std::string_view termination, std::string& data) {
  base::BlockHead head;
  if (const std::int32_t failed = AwaitHead(session, head); failed < 0) return failed;
  if (head.length() > base::kBlockLimit) return InstrumentError::kBlockTooLong;
  session.Drop(head.bytes());
  if (!head.IsCounted()) return ReadAnswer(session, termination, data);
  bool ended = false;
  const std::int32_t failed = ReadPieces(session, head.length(), data, ended);
  if (failed == 0 && !ended) DropTermination(session, termination);
  return failed;
}

std::vector<double> SplitValues(std::string_view answer) {
  std::vector<double> values;
  for (;;) {
    const std::size_t start = answer.find_first_not_of(kBetweenValues);
    if (start == std::string_view::npos) return values;
    answer.remove_prefix(start);
    const std::size_t size = std::min(answer.find_first_of(kBetweenValues), answer.size());
    values.push_back(ValueOf(answer.substr(0, size)));
    answer.remove_prefix(size);
  }
}

}  // namespace kolvane::instrument
