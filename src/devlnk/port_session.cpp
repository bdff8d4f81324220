#include "devlnk/port_session.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "devlnk/gpib_channel.h"
#include "devlnk/gpib_library.h"
#include "devlnk/parallel_port.h"
#include "devlnk/serial_channel.h"
#include "devlnk/tcp_channel.h"
#include "devlnk/usb_channel.h"

namespace kolvane::devlnk {
namespace {

Status Always() { return Status::kOk; }

constexpr PortKind kPortKinds[] = {
    {1, "COM1", OpenSerial, Always},           {2, "COM2", OpenSerial, Always},
    {10, "COM1", OpenRs485, Always},           {20, "COM2", OpenRs485, Always},
    {90, "LPT1", OpenParallel, Always},        {91, "LPT2", OpenParallel, Always},
    {100, "TCP/IP", OpenTcp, Always},          {200, "USB", OpenUsb, Always},
    {488, "GPIB", OpenGpib, GpibAvailability},
};

// Whatever failed after a give-up, the status is kGivenUp.
Status Outcome(Status status, const Deadline& deadline) {
  return status != Status::kOk && deadline.given_up() ? Status::kGivenUp : status;
}

}  // namespace

const PortKind* FindPortKind(std::int16_t code) {
  for (const PortKind& kind : kPortKinds) {
    if (kind.code == code) return &kind;
  }
  return nullptr;
}

Status PortSession::Open(const PortKind& kind, PortRequest request) {
  Close();
  const auto chosen = nodes_.extract(kind.code);
  const Status available = kind.availability();
  if (available != Status::kOk) return available;
  request.name = kind.name;
  request.gpib = gpib_;
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  if (!chosen.empty()) request.node = chosen.mapped();
  Opened opened = kind.open(request, deadline);
  channel_ = std::move(opened.channel);
  process_ = getpid();
  return Outcome(opened.status, deadline);
}

PortSession::~PortSession() { DropChannel(); }

// Shutting down the socket, restoring the line or waiting for a thread that a forked process does not have
// would disturb the original, or never end.
void PortSession::DropChannel() {
  const bool forked = channel_ != nullptr && process_ != getpid();
  if (forked && !channel_->Abandon()) static_cast<void>(channel_.release());
  channel_.reset();
}

Status PortSession::OpenPort(std::int16_t code, PortRequest request) {
  const PortKind* kind = FindPortKind(code);
  if (kind != nullptr) return Open(*kind, std::move(request));
  Close();
  return Status::kInvalidArgument;
}

void PortSession::Close() {
  DropChannel();
  queue_.Clear();
  loss_ = Status::kOk;
  input_ended_ = false;
}

[[gnu::hot]] Status PortSession::SetTimeout(std::int32_t milliseconds) {
  if (milliseconds < 0) return Status::kInvalidArgument;
  timeout_ms_ = milliseconds;
  return Status::kOk;
}

void PortSession::SetGpib(const GpibOptions& options, std::int32_t milliseconds) {
  gpib_ = options;
  timeout_ms_ = milliseconds > 0 ? milliseconds : kFirstTimeoutMs;
}

void PortSession::SetNode(const PortKind& kind, std::string node) {
  nodes_.insert_or_assign(kind.code, std::move(node));
}

Status PortSession::Select(std::int16_t address) {
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  return Outcome(channel_->Select(address, deadline), deadline);
}

Status PortSession::ReadStatusByte(std::uint8_t& status_byte) {
  if (loss_ != Status::kOk) return loss_;
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  const Status status = channel_->ReadStatusByte(status_byte, deadline);
  NoteLoss(status);
  return Outcome(status, deadline);
}

[[gnu::hot]] void PortSession::NoteLoss(Status status) {
  if (loss_ == Status::kOk && EndsConnection(status)) loss_ = status;
}

[[gnu::hot]] Status PortSession::Write(std::string_view bytes) {
  if (loss_ != Status::kOk) return loss_;
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  const Status status = channel_->Write(bytes, deadline);
  NoteLoss(status);
  return status == Status::kWriteTimeout ? Outcome(status, deadline) : status;
}

[[gnu::hot]] Status PortSession::Read(std::span<char> buffer, unsigned char terminator,
                                      std::size_t& delivered) {
  Answer answer;
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  const Status status = Await(deadline, [&] {
    const auto found = queue_.FindAnswer(buffer.size(), terminator);
    if (found) answer = *found;
    return found.has_value();
  });
  if (status != Status::kOk) return status;
  if (answer.delivered > 0) std::memcpy(buffer.data(), queue_.data(), answer.delivered);
  queue_.Consume(answer.consumed);
  delivered = answer.delivered;
  return Status::kOk;
}

// Receives until `find` returns true.
template <typename Find>
Status PortSession::Await(Deadline& deadline, Find find) {
  for (bool more = true;;) {
    if (find()) return Status::kOk;
    if (input_ended_) return loss_;
    // With dripped bytes no single wait is long enough to call the handler.
    if (deadline.started()) deadline.Attend();
    if (deadline.given_up()) return Status::kGivenUp;
    if (!more) return Status::kReadTimeout;
    const auto room = queue_.Room();
    const bool expired = deadline.HasExpired();
    const Received received = channel_->Read(room, deadline);
    queue_.Commit(received.bytes);
    if (received.ends_message) queue_.MarkEnd();
    NoteLoss(received.status);
    input_ended_ = EndsConnection(received.status);
    if (received.status != Status::kOk && !input_ended_) return received.status;
    // Once the time is over only bytes already there count; a read that did not fill the room took them all.
    more = received.bytes == room.size() || (received.bytes > 0 && !expired);
  }
}

Status PortSession::ReadMessage(const MessageRule& rule, std::string& message, MessageEnd& end) {
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  Message found;
  const Status status = AwaitMessage(deadline, rule, found);
  if (status != Status::kOk) return status;
  message.append(queue_.data(), found.bytes);
  queue_.Consume(found.bytes);
  end = found.end;
  return Status::kOk;
}

Status PortSession::AwaitQueued(std::size_t count) {
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  return Await(deadline, [&] { return queue_.size() >= count; });
}

Status PortSession::AwaitMessage(Deadline& deadline, const MessageRule& rule, Message& message) {
  const auto complete = [&] {
    const auto found = queue_.FindMessage(rule);
    if (found) message = *found;
    return found.has_value();
  };
  if (rule.gap_ms < 0) return Await(deadline, complete);
  std::size_t before = 0;
  const auto moved = [&] { return complete() || queue_.size() > before; };
  Status status = Await(deadline, moved);
  while (status == Status::kOk && !complete() && !deadline.HasExpired()) {
    before = queue_.size();
    Deadline gap = deadline.Part(std::min(rule.gap_ms, deadline.RemainingMs()));
    status = Await(gap, moved);
  }
  const bool silent = status == Status::kOk || status == Status::kReadTimeout || EndsConnection(status);
  if (!silent || queue_.size() == 0 || complete()) return status;
  message = {queue_.size(), MessageEnd::kGap};
  return Status::kOk;
}

std::size_t PortSession::Flush() {
  std::size_t count = queue_.size();
  queue_.Clear();
  Deadline at_once(0);
  for (std::size_t taken = 0; taken < InputQueue::kLimit && !input_ended_;) {
    const Received received = channel_->Read(queue_.Room(), at_once);
    NoteLoss(received.status);
    input_ended_ = EndsConnection(received.status);
    if (received.bytes == 0) break;
    taken += received.bytes;
    count += received.bytes;
  }
  Waiting waiting(handler_);
  Deadline deadline(timeout_ms_, &waiting);
  channel_->DiscardInput(deadline);
  return count;
}

}  // namespace kolvane::devlnk
