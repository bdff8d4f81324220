#include "app/instrument.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace kolvane::app {

Instrument::Instrument(Reply reply)
    : reply_(std::move(reply)), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, generic, size) != 0 || listen(listener_, 8) != 0 ||
      getsockname(listener_, generic, &size) != 0)
    throw std::runtime_error("no loopback port");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

Instrument::~Instrument() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
}

void Instrument::Serve() {
  for (int peer; (peer = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
    Talk(peer);
    close(peer);
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
  }
}

void Instrument::Talk(int peer) {
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
