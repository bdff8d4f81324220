#include "amplifier/server_thread.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace kolvane::amplifier {
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
