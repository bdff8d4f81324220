#include "amplifier/replay_server.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "amplifier/pty.h"
#include "amplifier/whole_file.h"
#include "base/clock.h"

namespace kolvane::amplifier {
namespace {

std::vector<Conversation> ReadConversations(const std::string& file, int stop) {
  auto read = ReadTranscript(ReadWholeFile(file, stop));
  if (const auto* problem = std::get_if<TranscriptProblem>(&read))
    throw std::runtime_error(file + ":" + std::to_string(problem->line) +
                             ": not a line of a transcript: " + problem->text);
  auto& conversations = std::get<std::vector<Conversation>>(read);
  if (conversations.empty()) throw std::runtime_error(file + ": the transcript has no transfers");
  return std::move(conversations);
}

// A pty shows no start or end of a connection, only a hang-up, so conversations are joined up to one.
std::vector<Conversation> JoinUpToHangUps(std::vector<Conversation> conversations) {
  std::vector<Conversation> joined;
  for (Conversation& each : conversations) {
    if (joined.empty() || joined.back().hang_up) {
      joined.push_back(std::move(each));
      continue;
    }
    std::ranges::move(each.messages, std::back_inserter(joined.back().messages));
    joined.back().hang_up = each.hang_up;
  }
  return joined;
}

}  // namespace

ReplayServer::ReplayServer(const Options& options, int stop)
    : file_(options.replay),
      recorded_times_(options.recorded_times),
      conversations_(ReadConversations(options.replay, stop)),
      pty_link_(options.pty_link) {
  if (IsPty()) {
    conversations_ = JoinUpToHangUps(std::move(conversations_));
    StartConversation(std::make_unique<PtyStream>(pty_link_));
  } else {
    listener_.emplace(*options.tcp_port);
  }
}

void ReplayServer::StartConversation(std::unique_ptr<Stream> stream) {
  stream_ = std::move(stream);
  out_.clear();
  replay_.emplace(conversations_[next_++], recorded_times_, Clock::now());
}

std::string ReplayServer::Run(int stop) {
  while (!Played() && Wait(stop)) {
    if (replay_) out_ += replay_->TakeDue(Clock::now());
    Send();
    if (replay_ && !replay_->difference().empty()) break;
    EndByItself();
  }
  if (replay_ && replay_->started()) replay_->End();
  return replay_ && !replay_->difference().empty() ? file_ + ":" + replay_->difference() : std::string();
}

std::optional<ReplayServer::Clock::time_point> ReplayServer::Due() const {
  if (retry_) return retry_;
  if (replay_) return replay_->Due();
  return listener_ ? listener_->PausedUntil() : std::nullopt;
}

// False once `stop` is readable.
bool ReplayServer::Wait(int stop) {
  const bool listens = listener_ && !stream_ && !listener_->PausedUntil();
  std::array<pollfd, 4> watched{{{stop, POLLIN, 0},
                                 {listens ? listener_->ipv4() : -1, POLLIN, 0},
                                 {listens ? listener_->ipv6() : -1, POLLIN, 0},
                                 {stream_ ? stream_->descriptor() : -1, POLLIN, 0}}};
  if (!out_.empty()) watched[3].events |= POLLOUT;
  const auto due = Due();
  const timespec limit = due ? base::TimeUntil(*due) : timespec{};
  if (ppoll(watched.data(), watched.size(), due ? &limit : nullptr, nullptr) <= 0) return true;
  if (watched[0].revents != 0) return false;
  for (const pollfd& entry : {watched[1], watched[2]}) {
    if (entry.revents == 0 || stream_) continue;
    if (base::Descriptor socket = listener_->Accept(entry.fd); socket)
      StartConversation(std::make_unique<TcpStream>(std::move(socket)));
  }
  if ((watched[3].revents & ~POLLOUT) != 0) Receive();
  return true;
}

void ReplayServer::Receive() {
  std::array<char, 4096> space;
  const Transfer received = stream_->Receive(space);
  if (received.kind == Transfer::Kind::kMoved) replay_->Take({space.data(), received.count}, Clock::now());
  if (received.kind == Transfer::Kind::kEnded) EndConnection();
}

void ReplayServer::Send() {
  if (!stream_) return;
  std::string_view rest = out_;
  while (!rest.empty()) {
    const Transfer sent = stream_->Send(rest);
    if (sent.kind == Transfer::Kind::kLater) break;
    if (sent.kind == Transfer::Kind::kEnded) return EndConnection();
    rest.remove_prefix(sent.count);
  }
  out_.erase(0, out_.size() - rest.size());
}

// A connection that only tests whether anything listens does not count as the terminal of the transcript.
void ReplayServer::EndConnection() {
  stream_.reset();
  out_.clear();
  const std::vector<Message>& messages = conversations_[next_ - 1].messages;
  if (!replay_->started() && !messages.empty() && messages.front().from_terminal) {
    --next_;
    replay_.reset();
    return;
  }
  replay_->End();
  if (replay_->difference().empty()) replay_.reset();
}

// Without a hang-up the terminal closes the connection; on a pty that goes unnoticed.
bool ReplayServer::IsInstrumentDone() const {
  if (replay_->HangsUp()) return replay_->hung_up();
  return IsPty() && replay_->finished();
}

// Not before the terminal has read everything.
void ReplayServer::EndByItself() {
  if (!stream_ || !replay_ || !out_.empty() || !IsInstrumentDone()) return;
  if (!stream_->EndOrderly()) {
    retry_ = Clock::now() + kEndRetry;
    return;
  }
  retry_.reset();
  replay_.reset();
  if (!IsPty()) {
    stream_.reset();
  } else if (!Played()) {
    StartConversation(std::make_unique<PtyStream>(pty_link_));
  }
}

}  // namespace kolvane::amplifier
