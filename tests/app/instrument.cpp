#include "app/instrument.h"

#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace kolvane::app {

Instrument::Instrument(Reply reply) : reply_(std::move(reply)), thread_([this] { Serve(); }) {}

Instrument::~Instrument() {
  listener_.Shutdown();
  thread_.join();
}

void Instrument::Serve() {
  for (int peer; (peer = listener_.Accept()) >= 0;) {
    ServeConnection(peer);
    close(peer);
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
  }
}

void Instrument::ServeConnection(int peer) {
  std::string line;
  for (char c = 0; recv(peer, &c, 1, 0) == 1;) {
    if (c != '\n') {
      line += c;
      continue;
    }
    {
      const std::lock_guard lock(mutex_);
      lines_.push_back(line);
      changed_.notify_all();
    }
    const std::string answer = reply_(line);
    if (send(peer, answer.data(), answer.size(), MSG_NOSIGNAL) < 0) return;
    line.clear();
  }
}

void Instrument::AwaitLines(std::size_t count) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return lines_.size() >= count; });
}

std::vector<std::string> Instrument::lines() {
  const std::lock_guard lock(mutex_);
  return lines_;
}

void Instrument::AwaitClose() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return closed_; });
}

}  // namespace kolvane::app
