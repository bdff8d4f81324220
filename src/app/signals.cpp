#include "app/signals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <span>

namespace kolvane::app {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

sigset_t SetOf(std::span<const int> numbers) {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : numbers) sigaddset(&set, number);
  return set;
}

// Blocks the signals, whose descriptor it returns, if there is one.
int OpenFor(std::span<const int> numbers) {
  const sigset_t set = SetOf(numbers);
  const int descriptor = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor >= 0) sigprocmask(SIG_BLOCK, &set, nullptr);
  return descriptor;
}

}  // namespace

EndSignals::EndSignals() : descriptor_(OpenFor(kSignals)) {}

EndSignals::~EndSignals() {
  if (descriptor_ < 0) return;
  // Consume received signals; still pending, they would end the process during its shutdown.
  signalfd_siginfo taken;
  while (read(descriptor_, &taken, sizeof taken) > 0) {
  }
  close(descriptor_);
  const sigset_t set = SetOf(kSignals);
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

namespace {

constexpr int kTerminalSignals[] = {SIGTSTP, SIGCONT, SIGWINCH};

}  // namespace

TerminalSignals::TerminalSignals() : descriptor_(OpenFor(kTerminalSignals)) {}

TerminalSignals::~TerminalSignals() {
  if (descriptor_ < 0) return;
  Take();
  close(descriptor_);
  const sigset_t set = SetOf(kTerminalSignals);
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

TerminalSignals::Received TerminalSignals::Take() {
  Received received;
  signalfd_siginfo taken;
  while (read(descriptor_, &taken, sizeof taken) > 0) {
    received.stop |= taken.ssi_signo == SIGTSTP;
    received.continued |= taken.ssi_signo == SIGCONT;
    received.resized |= taken.ssi_signo == SIGWINCH;
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
