#include "integration/modem.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>

namespace kolvane::integration {

Modem::Modem(Answers answers, bool echoes) : answers_(std::move(answers)), echoes_(echoes) {
  if (pipe(wake_) != 0) std::abort();
  // A line that the program has closed would otherwise echo what is sent.
  termios mode{};
  if (tcgetattr(line_.slave(), &mode) != 0) std::abort();
  cfmakeraw(&mode);
  if (tcsetattr(line_.slave(), TCSANOW, &mode) != 0) std::abort();
  thread_ = std::thread([this] { Serve(); });
}

Modem::~Modem() {
  close(wake_[1]);
  thread_.join();
  close(wake_[0]);
}

void Modem::Serve() {
  pollfd events[] = {{line_.master(), POLLIN, 0}, {wake_[0], 0, 0}};
  while (poll(events, 2, -1) > 0 && events[1].revents == 0) {
    char bytes[256];
    const ssize_t got = read(line_.master(), bytes, sizeof bytes);
    for (ssize_t i = 0; i < got; ++i) Receive(bytes[i]);
  }
}

void Modem::Receive(char c) {
  const std::lock_guard lock(mutex_);
  if (echoes_ && !connected_) SendUnasked({&c, 1});
  const char end = connected_ ? '\n' : '\r';
  if (c != end) {
    partial_line_ += c;
    return;
  }
  lines_.push_back(std::exchange(partial_line_, {}));
  if (connected_) {
    SendUnasked(lines_.back() + "\r\n");
  } else if (const auto answer = answers_.find(lines_.back()); answer != answers_.end()) {
    connected_ = answer->second.find("CONNECT") != std::string::npos;
    SendUnasked(answer->second);
  }
  line_received_.notify_all();
}

void Modem::SendUnasked(std::string_view text) {
  if (write(line_.master(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) std::abort();
}

std::vector<std::string> Modem::AwaitLines(std::size_t count) {
  std::unique_lock lock(mutex_);
  line_received_.wait(lock, [&] { return lines_.size() >= count; });
  return lines_;
}

}  // namespace kolvane::integration
