#include "app/signals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace kolvane::app {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

sigset_t SetOf(std::span<const int> numbers) {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : numbers) sigaddset(&set, number);
  return set;
}

}  // namespace

SignalDescriptor::SignalDescriptor(std::span<const int> numbers) : numbers_(numbers) {
  const sigset_t set = SetOf(numbers_);
  descriptor_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ >= 0) sigprocmask(SIG_BLOCK, &set, nullptr);
}

SignalDescriptor::~SignalDescriptor() {
  if (descriptor_ < 0) return;
  // Those still pending would take effect now.
  while (Take() != 0) {
  }
  close(descriptor_);
  const sigset_t set = SetOf(numbers_);
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
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
  const int number[] = {SIGTSTP};
  const sigset_t set = SetOf(number);
  raise(SIGTSTP);
  // It is delivered here.
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
  sigprocmask(SIG_BLOCK, &set, nullptr);
}

namespace {

// A signal handler cannot access anything else.
volatile sig_atomic_t raised = 0;

void Handle(void (*handler)(int)) {
  for (const int number : kSignals) {
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action = {};
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
