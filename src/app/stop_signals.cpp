#include "app/stop_signals.h"

#include <signal.h>

namespace kolvane::app {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

// A signal handler reaches nothing else.
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
