#include "amplifier/connection.h"

#include <poll.h>

#include <algorithm>
#include <utility>

namespace kolvane::amplifier {
namespace {

// Answers to lines received together are sent together, up to this size.
constexpr std::size_t kMaxBatch = 64 * 1024;

std::chrono::milliseconds Milliseconds(std::uint32_t count) { return std::chrono::milliseconds(count); }

}  // namespace

Connection::Connection(std::unique_ptr<Stream> stream, LineHandler& handler, const Behaviour& behaviour)
    : stream_(std::move(stream)), handler_(handler), behaviour_(behaviour) {}

short Connection::Events() const {
  if (sent_ < released_) return POLLOUT;
  return TakesLines() && !peer_done_ ? POLLIN : 0;
}

bool Connection::TakesLines() const {
  return !ended_ && !due_ && ending_ == Ending::kNone && out_.size() < kMaxBatch;
}

void Connection::OnEvents(short events) {
  if ((events & POLLOUT) != 0) {
    Flush();
    AnswerLines();
  } else if ((events & POLLIN) != 0) {
    Take(stream_->Receive(splitter_.Space()));
  } else if ((events & (POLLERR | POLLHUP | POLLNVAL)) != 0) {
    ended_ = true;
  }
}

bool Connection::Exchange() {
  if (Events() != POLLIN) return false;
  const Transfer received = stream_->ReceiveWithTimeout(splitter_.Space());
  if (received.kind == Transfer::Kind::kLater) return false;
  Take(received);
  return true;
}

void Connection::Take(const Transfer& received) {
  if (received.kind == Transfer::Kind::kLater) return;
  if (received.kind == Transfer::Kind::kEnded) peer_done_ = true;
  splitter_.Commit(received.count);
  AnswerLines();
}

void Connection::AnswerLines() {
  do {
    while (TakesLines()) {
      const std::optional<Line> line = splitter_.Next();
      if (!line) {
        Flush();
        if (peer_done_ && out_.empty()) ended_ = true;
        return;
      }
      handler_.Handle(*line, reply_);
      Queue();
    }
    Flush();
  } while (TakesLines());
}

void Connection::Queue() {
  if (reply_.kind == Reply::Kind::kNone || answers_ >= behaviour_.silent_after) return;
  if (answers_ < std::min(behaviour_.close_after, behaviour_.reset_after)) Append();
  if (ending_ != Ending::kNone) return;
  if (answers_ >= behaviour_.reset_after) {
    ending_ = Ending::kReset;
  } else if (answers_ >= behaviour_.close_after) {
    ending_ = Ending::kOrderly;
  }
}

void Connection::Append() {
  const Transmission& transmission = handler_.transmission();
  if (reply_.kind == Reply::Kind::kLine) reply_.bytes += transmission.terminator;
  if (++answers_ == behaviour_.close_mid_answer) {
    reply_.bytes.resize(reply_.bytes.size() / 2);
    ending_ = Ending::kOrderly;
  }
  out_ += reply_.bytes;
  const std::uint32_t pause = transmission.delay_ms + reply_.wait_ms;
  if (pause > 0 || transmission.drip_ms > 0) {
    due_ = Clock::now() + Milliseconds(pause);
  } else {
    released_ = out_.size();
  }
}

void Connection::OnTime(Clock::time_point now) {
  if (!due_ || now < *due_) return;
  Release(now);
  Flush();
  AnswerLines();
}

void Connection::Release(Clock::time_point now) {
  const std::uint32_t drip_ms = handler_.transmission().drip_ms;
  released_ = drip_ms > 0 ? std::min(released_ + 1, out_.size()) : out_.size();
  due_.reset();
  if (released_ < out_.size()) due_ = now + Milliseconds(drip_ms);
}

void Connection::Flush() {
  while (sent_ < released_ && !ended_) {
    const Transfer sent = stream_->Send(std::string_view(out_).substr(sent_, released_ - sent_));
    if (sent.kind == Transfer::Kind::kLater) return;
    if (sent.kind == Transfer::Kind::kEnded) ended_ = true;
    sent_ += sent.count;
  }
  if (sent_ < out_.size() || due_) return;
  out_.clear();
  sent_ = released_ = 0;
  EndWhenSent();
}

void Connection::EndWhenSent() {
  if (ending_ == Ending::kNone || ended_) return;
  if (ending_ == Ending::kReset) {
    stream_->EndByReset();
  } else if (!stream_->EndOrderly()) {
    due_ = Clock::now() + kEndRetry;
    return;
  }
  ended_ = true;
}

}  // namespace kolvane::amplifier
