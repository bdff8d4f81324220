#include "component/headless_terminal.h"

#include <unistd.h>

#include <cerrno>
#include <new>

#include "component/folder.h"
#include "component/headless_settings.h"
#include "component/texts.h"
#include "device/open_sequence.h"

namespace kolvane::component {
namespace {

// The end comes by lack of memory, too, and then each step is made as far as it goes.
template <typename Step>
void Attempt(Step step) {
  try {
    step();
  } catch (const std::bad_alloc&) {
  }
}

}  // namespace

HeadlessTerminal::HeadlessTerminal(const CommandRunOptions& options, HostLines& host, ComponentState& state)
    : options_(options),
      host_(host),
      state_(state),
      messages_(STDERR_FILENO, options.Verbose, host.wanted() ? &host : nullptr),
      pane_(STDOUT_FILENO, messages_),
      log_(state.terminal.output, messages_),
      library_(OwnFolder()),
      core_({state.device, state.connection, state.terminal}, library_, {pane_, log_, messages_, *this}) {
  terminal::ReceiveControls controls(state.terminal.receive, state.terminal.shown, core_.device, *this);
  controls.Load(core_.output);
  ApplyTerminalOptions(options, controls, state.terminal);
}

HeadlessTerminal::~HeadlessTerminal() {
  Attempt([this] { pane_.EndLine(); });
  Attempt([this] { log_.Close(); });
  Attempt([this] {
    if (state_.device.connected) core_.connect.Press();
  });
}

bool HeadlessTerminal::Connect() {
  core_.connect.Press();
  if (!state_.device.connected) return false;
  if (!options_.LogFile.empty()) {
    log_.OpenLog(options_.LogFile);
    log_.PressRecord();
  }
  return true;
}

bool HeadlessTerminal::StopDue() {
  if (stopped_) return true;
  if (host_.failed()) {
    stopped_ = true;
  } else if (pane_.error() != 0) {
    stopped_ = true;
    // A reader that has seen enough is no failure worth a word.
    if (pane_.error() != EPIPE) messages_.ShowError(texts::OutputNotWritten(pane_.error()));
  } else if (StopRequested()) {
    stopped_ = true;
    messages_.ShowError(texts::kRunStopped);
  }
  return stopped_;
}

bool HeadlessTerminal::AcceptsConnection() {
  if (!device::WasClosedAgain(state_.device, state_.connection)) return true;
  if (StopDue()) return false;
  const std::int32_t status = state_.device.open_step_status;
  messages_.ShowError(terminal::texts::Failure(terminal::texts::kConnectFailed,
                                               {static_cast<std::int16_t>(status), std::to_string(status)}) +
                      (modem_word_.empty() ? "" : texts::ModemSaid(modem_word_)));
  return false;
}

void HeadlessTerminal::Dialling(const device::DialProgress& progress) {
  modem_word_ = progress.reply;
  messages_.Tell(terminal::texts::Dialling(progress));
}

}  // namespace kolvane::component
