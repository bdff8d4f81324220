#include "app/signals.h"

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace kolvane::app {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

sigset_t EndSet() {
  sigset_t set;
  sigemptyset(&set);
  for (const int number : kSignals) sigaddset(&set, number);
  return set;
}

}  // namespace

EndSignals::EndSignals() {
  const sigset_t set = EndSet();
  descriptor_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
  if (descriptor_ >= 0) sigprocmask(SIG_BLOCK, &set, nullptr);
}

EndSignals::~EndSignals() {
  if (descriptor_ < 0) return;
  // Consume received signals; still pending, they would end the process during its shutdown.
  signalfd_siginfo taken;
  while (read(descriptor_, &taken, sizeof taken) > 0) {
  }
  close(descriptor_);
  const sigset_t set = EndSet();
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
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
