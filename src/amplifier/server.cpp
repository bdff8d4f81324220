#include "amplifier/server.h"

#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "amplifier/instrument.h"
#include "amplifier/line_handler.h"
#include "amplifier/pty.h"
#include "amplifier/whole_file.h"
#include "base/clock.h"

namespace kolvane::amplifier {
namespace {

constexpr std::size_t kMaxConnections = 64;
// Exchanges with one busy connection before the others are checked.
constexpr int kExchangesInARow = 256;

std::unique_ptr<LineHandler> NewHandler(const Options& options, const base::Clock& clock, int stop) {
  if (options.echo) return std::make_unique<Echo>(options.transmission);
  Instrument::Setup setup{options.seed, options.transmission, {}};
  for (const std::string& path : options.files) setup.files.push_back(ReadWholeFile(path, stop));
  return std::make_unique<Instrument>(clock, std::move(setup));
}

}  // namespace

Server::Server(const Options& options, int stop)
    : options_(options), handler_(NewHandler(options, clock_, stop)) {
  if (options.tcp_port) listener_.emplace(*options.tcp_port);
  if (!options.pty_link.empty()) OpenPty();
}

void Server::Run(int stop) {
  do {
    ExchangeWithOnlyOne();
    DropEnded();
    Wait(stop);
    ServeConnections();
  } while (watched_.front().revents == 0);
}

void Server::ExchangeWithOnlyOne() {
  if (pty_ || connections_.size() != 1) return;
  for (int i = 0; i < kExchangesInARow && connections_.front()->Exchange(); ++i) {
  }
}

void Server::Wait(int stop) {
  watched_.clear();
  Watch(stop, POLLIN);
  // poll ignores a negative descriptor.
  const bool listens = listener_ && connections_.size() < kMaxConnections && !listener_->PausedUntil();
  Watch(listens ? listener_->ipv4() : -1, POLLIN);
  Watch(listens ? listener_->ipv6() : -1, POLLIN);
  Watch(pty_ ? pty_->descriptor() : -1, pty_ ? pty_->Events() : short{0});
  for (const auto& connection : connections_) Watch(connection->descriptor(), connection->Events());

  const auto due = NextDue();
  const timespec limit = due ? base::TimeUntil(*due) : timespec{};
  if (ppoll(watched_.data(), watched_.size(), due ? &limit : nullptr, nullptr) < 0) {
    for (pollfd& entry : watched_) entry.revents = 0;
  }
}

std::optional<Connection::Clock::time_point> Server::NextDue() const {
  std::optional<Connection::Clock::time_point> first;
  const auto take = [&first](std::optional<Connection::Clock::time_point> due) {
    if (due && (!first || *due < *first)) first = due;
  };
  if (listener_) take(listener_->PausedUntil());
  if (pty_) take(pty_->Due());
  for (const auto& connection : connections_) take(connection->Due());
  return first;
}

void Server::ServeConnections() {
  constexpr std::size_t kPty = 3;
  const auto serve = [this](Connection& connection, std::size_t index) {
    if (watched_[index].revents != 0) connection.OnEvents(watched_[index].revents);
    if (connection.Due()) connection.OnTime(Connection::Clock::now());
  };
  if (pty_) serve(*pty_, kPty);
  for (std::size_t i = 0; i < connections_.size(); ++i) serve(*connections_[i], kPty + 1 + i);
  for (std::size_t index = 1; index < kPty; ++index) {
    if (watched_[index].revents != 0) Accept(watched_[index].fd);
  }
}

void Server::Accept(int listening) {
  base::Descriptor socket = listener_->Accept(listening);
  if (!socket) return;
  connections_.push_back(std::make_unique<Connection>(std::make_unique<TcpStream>(std::move(socket)),
                                                      *handler_, options_.behaviour));
}

// The link is moved to the new terminal before the old one hangs up.
void Server::OpenPty() {
  pty_ = std::make_unique<Connection>(std::make_unique<PtyStream>(options_.pty_link), *handler_,
                                      options_.behaviour);
}

void Server::DropEnded() {
  std::erase_if(connections_, [](const auto& connection) { return connection->Ended(); });
  if (pty_ && pty_->Ended()) OpenPty();
}

namespace {

Options WithPort(Options options) {
  if (!options.tcp_port && options.pty_link.empty()) options.tcp_port = 0;
  return options;
}

base::Descriptor NewEvent() {
  base::Descriptor event(eventfd(0, EFD_CLOEXEC));
  if (!event) throw std::system_error(errno, std::generic_category(), "cannot make an event descriptor");
  return event;
}

}  // namespace

ServerThread::ServerThread(Options options)
    : server_(WithPort(std::move(options))),
      stop_(NewEvent()),
      thread_([this] { server_.Run(stop_.get()); }) {}

ServerThread::~ServerThread() {
  eventfd_write(stop_.get(), 1);
  thread_.join();
}

}  // namespace kolvane::amplifier
