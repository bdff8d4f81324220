#include "amplifier/replay_server.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "amplifier/pty.h"
#include "base/clock.h"

namespace kolvane::amplifier {
namespace {

// No descriptor reports that a peer has read everything.
constexpr std::chrono::milliseconds kEndRetry{20};

std::vector<Conversation> ReadConversations(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  if (!stream.is_open() || stream.bad())
    throw std::runtime_error("cannot read " + file + ": " + std::generic_category().message(errno));
  auto read = ReadTranscript(text);
  if (const auto* problem = std::get_if<TranscriptProblem>(&read))
    throw std::runtime_error(file + ":" + std::to_string(problem->line) +
                             ": no line of a transcript: " + problem->text);
  auto& conversations = std::get<std::vector<Conversation>>(read);
  if (conversations.empty()) throw std::runtime_error(file + ": nothing was said in this transcript");
  return std::move(conversations);
}

// A line knows neither beginning nor end of a connection.
std::vector<Conversation> AsOne(std::vector<Conversation> conversations) {
  std::vector<Conversation> one(1);
  one.front().seconds = conversations.front().seconds;
  for (Conversation& each : conversations)
    std::ranges::move(each.utterances, std::back_inserter(one.front().utterances));
  return one;
}

}  // namespace

ReplayServer::ReplayServer(const Options& options)
    : file_(options.replay),
      recorded_times_(options.recorded_times),
      conversations_(ReadConversations(options.replay)),
      on_line_(!options.pty_link.empty()) {
  if (on_line_) {
    conversations_ = AsOne(std::move(conversations_));
    Begin(std::make_unique<PtyStream>(options.pty_link));
  } else {
    listener_.emplace(*options.tcp_port);
  }
}

void ReplayServer::Begin(std::unique_ptr<Stream> stream) {
  stream_ = std::move(stream);
  out_.clear();
  replay_.emplace(conversations_[next_++], recorded_times_, Clock::now());
}

std::string ReplayServer::Run(int stop) {
  while (!Played() && Wait(stop)) {
    if (replay_) out_ += replay_->Say(Clock::now());
    Send();
    if (replay_ && !replay_->difference().empty()) break;
    EndOnLine();
  }
  if (replay_ && replay_->begun()) replay_->End();
  return replay_ && !replay_->difference().empty() ? file_ + ":" + replay_->difference() : std::string();
}

// False once it is told to stop.
bool ReplayServer::Wait(int stop) {
  const bool listens = listener_ && !stream_;
  std::array<pollfd, 4> watched{{{stop, POLLIN, 0},
                                 {listens ? listener_->ipv4() : -1, POLLIN, 0},
                                 {listens ? listener_->ipv6() : -1, POLLIN, 0},
                                 {stream_ ? stream_->descriptor() : -1, POLLIN, 0}}};
  if (!out_.empty()) watched[3].events |= POLLOUT;
  const auto due = retry_ ? retry_ : replay_ ? replay_->Due() : std::nullopt;
  const timespec limit = due ? base::TimeUntil(*due) : timespec{};
  if (ppoll(watched.data(), watched.size(), due ? &limit : nullptr, nullptr) <= 0) return true;
  if (watched[0].revents != 0) return false;
  for (const pollfd& entry : {watched[1], watched[2]}) {
    if (entry.revents == 0 || stream_) continue;
    if (base::Descriptor socket = TcpListener::Accept(entry.fd); socket)
      Begin(std::make_unique<TcpStream>(std::move(socket)));
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
  while (stream_ && !out_.empty()) {
    const Transfer sent = stream_->Send(out_);
    if (sent.kind == Transfer::Kind::kLater) return;
    if (sent.kind == Transfer::Kind::kEnded) return EndConnection();
    out_.erase(0, sent.count);
  }
}

// Whoever only looks whether somebody listens is not the terminal of the transcript.
void ReplayServer::EndConnection() {
  stream_.reset();
  out_.clear();
  if (!replay_->begun() && conversations_[next_ - 1].utterances.front().from_terminal) {
    --next_;
    replay_.reset();
    return;
  }
  replay_->End();
  if (replay_->difference().empty()) replay_.reset();
}

// A hang-up must not take away what the terminal has not read yet.
void ReplayServer::EndOnLine() {
  if (!on_line_ || !replay_ || !replay_->over() || !out_.empty()) return;
  if (stream_->EndOrderly()) {
    replay_.reset();
  } else {
    retry_ = Clock::now() + kEndRetry;
  }
}

}  // namespace kolvane::amplifier
