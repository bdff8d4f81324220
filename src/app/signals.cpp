#include "app/signals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace kolvane::app {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

bool IsIgnored(int number) {
  struct sigaction action {};
  return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

SignalDescriptor::SignalDescriptor(std::span<const int> numbers) {
  sigemptyset(&signals_);
  for (const int number : numbers) {
    if (!IsIgnored(number)) sigaddset(&signals_, number);
  }
  descriptor_ = signalfd(-1, &signals_, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ >= 0) sigprocmask(SIG_BLOCK, &signals_, nullptr);
}

SignalDescriptor::~SignalDescriptor() {
  if (descriptor_ < 0) return;
  // Unblocking delivers the signals still pending.
  while (Take() != 0) {
  }
  close(descriptor_);
  sigprocmask(SIG_UNBLOCK, &signals_, nullptr);
}

int SignalDescriptor::Take() {
  signalfd_siginfo taken;
  return read(descriptor_, &taken, sizeof taken) > 0 ? static_cast<int>(taken.ssi_signo) : 0;
}

EndSignals::EndSignals() : signals_(kSignals) {}

namespace {

constexpr int kTerminalSignals[] = {SIGTSTP, SIGCONT, SIGWINCH};

}  // namespace

TerminalSignals::TerminalSignals() : signals_(kTerminalSignals) {}

TerminalSignals::Received TerminalSignals::Take() {
  Received received;
  while (const int number = signals_.Take()) {
    received.stop |= number == SIGTSTP;
    received.continued |= number == SIGCONT;
    received.resized |= number == SIGWINCH;
  }
  return received;
}

void TerminalSignals::Stop() {
  sigset_t stop;
  sigemptyset(&stop);
  sigaddset(&stop, SIGTSTP);
  raise(SIGTSTP);
  // Unblocking delivers it, which stops the process.
  sigprocmask(SIG_UNBLOCK, &stop, nullptr);
  sigprocmask(SIG_BLOCK, &stop, nullptr);
}

namespace {

// A signal handler cannot access anything else.
volatile sig_atomic_t raised = 0;

void Handle(void (*handler)(int)) {
  for (const int number : kSignals) {
    if (IsIgnored(number)) continue;
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(number, &action, nullptr);
  }
}

void Raise(int /*number*/) {
  raised = 1;
  Handle(SIG_DFL);
}

}  // namespace

StopSignals::StopSignals() {
  raised = 0;
  Handle(Raise);
}

StopSignals::~StopSignals() { Handle(SIG_DFL); }

bool StopSignals::Raised() { return raised != 0; }

}  // namespace kolvane::app
