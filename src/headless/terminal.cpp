#include "headless/terminal.h"

#include <unistd.h>

#include <cerrno>
#include <new>

#include "base/encoding.h"
#include "device/connection_texts.h"
#include "device/open_sequence.h"
#include "device/port_table.h"
#include "headless/texts.h"

namespace kolvane::headless {
namespace {

static_assert(CommandRunOptions::kLargestCount == terminal::kCountedAnswerLimit);

template <typename Field, typename Value>
void Set(Field& field, const std::optional<Value>& value) {
  if (value) field = static_cast<Field>(*value);
}

void SetTerminator(std::string& field, const std::optional<std::string>& bytes) {
  if (bytes) field = base::FromWindows1252(*bytes);
}

// The destructor may also run out of memory; each step is then done as far as possible.
template <typename Step>
void Attempt(Step step) {
  try {
    step();
  } catch (const std::bad_alloc&) {
  }
}

// The port for the user: the description in the status bar, or the kind and its node.
std::string PortOf(const device::ConnectionParameters& connection) {
  const std::string node = device::PortNode(connection.port_code);
  if (node.empty()) return device::ConnectionDescription(connection);
  return std::string(device::PortKindOfCode(connection.port_code)->caption) + " (" + node + ")";
}

}  // namespace

void ApplyConnectionOptions(const CommandRunOptions& options, device::ConnectionParameters& parameters) {
  Set(parameters.timeout_ms, options.TimeoutMs);
  // For other ports the same fields mean something else, such as the mode of a parallel port.
  if (device::PageOfCode(parameters.port_code) != device::ParameterPage::kRs232) return;
  Set(parameters.baud, options.Baud);
  Set(parameters.parity, options.Parity);
  Set(parameters.data_bits, options.DataBits);
  Set(parameters.stop_bits, options.StopBits);
}

void ApplyTerminalOptions(const CommandRunOptions& options, terminal::ReceiveControls& controls,
                          terminal::TerminalState& state) {
  if (options.TimeoutMs) controls.EditTimeout(std::to_string(*options.TimeoutMs));
  if (options.Count) controls.EditCount(std::to_string(*options.Count));
  // Selecting the format selects a mode too, so a requested mode is set after it.
  if (options.Binary) controls.PickFormat(terminal::receive_format::kBinary);
  if (options.ReceiveMode) controls.PickMode(static_cast<int>(*options.ReceiveMode));
  SetTerminator(state.receive.send_terminator, options.SendTerminator);
  SetTerminator(state.receive.receive_terminator, options.ReceiveTerminator);
  state.options.show_commands = options.ShowCommands;
  state.options.show_response_times = options.ShowTimes;
  state.flush_first = options.Flush;
  state.extras.queries_only = options.QueriesOnly;
  state.extras.blocks = options.Blocks;
  state.extras.device_words = options.DeviceWords;
  state.extras.reconnect = options.Reconnect;
  state.extras.utf8 = options.Utf8;
  state.extras.log_time_stamps = options.TimeStamps;
}

Terminal::Terminal(const RunSetup& setup)
    : options_(setup.options),
      host_(setup.host),
      state_(setup.state),
      messages_(STDERR_FILENO, options_.Verbose, host_.wanted() ? &host_ : nullptr),
      pane_(STDOUT_FILENO, messages_,
            {.shown = options_.Format == AnswerFormat::kText,
             .errors = options_.ErrorLines,
             .times = options_.TimeStamps,
             .colors = setup.colors,
             .clock = &clock_}),
      log_(state_.terminal.output, messages_),
      library_(setup.library_folder),
      core_({state_.device, state_.connection, state_.terminal}, Source(setup.transcript),
            {pane_, log_, messages_, *this}),
      records_(options_, state_.device, state_.terminal.last_answer, core_.clock, pane_),
      give_up_(setup.give_up) {
  messages_.Precede([this] { pane_.Flush(); });
  terminal::ReceiveControls controls(state_.terminal.receive, state_.terminal.shown, core_.device, *this);
  controls.Load(core_.output);
  ApplyTerminalOptions(options_, controls, state_.terminal);
  terminal::ApplyExtras({state_.device, state_.connection, state_.terminal});
}

device::PortLibrarySource& Terminal::Source(Transcript* transcript) {
  if (transcript == nullptr) return library_;
  return recorded_.emplace(library_, *transcript, messages_);
}

Terminal::~Terminal() {
  Attempt([this] { EndLines(); });
  Attempt([this] { log_.CloseLog(); });
  Attempt([this] {
    if (const std::string rest = terminal::texts::BytesWaiting(core_.device.BytesWaiting()); !rest.empty())
      messages_.ShowError(rest);
  });
  Attempt([this] {
    if (state_.device.connected) core_.connect.Toggle();
  });
}

bool Terminal::Connect() {
  core_.connect.Press();
  if (!state_.device.connected) {
    if (options_.Connect.empty() && !StopRequested())
      messages_.ShowError(texts::StoredConnectionTried(PortOf(state_.connection)));
    return false;
  }
  if (options_.Format != AnswerFormat::kText) {
    records_.Start();
    core_.exchange.Listen(&records_);
  }
  if (!options_.LogFile.empty()) {
    log_.OpenLog(options_.LogFile);
    log_.PressRecord();
  }
  return true;
}

[[gnu::hot]] bool Terminal::StopDue() {
  if (stopped_) return true;
  if (host_.failed()) {
    stopped_ = true;
  } else if (pane_.error() != 0) {
    stopped_ = true;
    // A reader that closes the pipe early is not a failure.
    if (pane_.error() != EPIPE) messages_.ShowError(texts::OutputNotWritten(pane_.error()));
  } else if (StopRequested()) {
    stopped_ = true;
    if (!host_.failed()) messages_.ShowError(texts::kRunStopped);
  }
  return stopped_;
}

[[gnu::hot]] bool Terminal::GivenUp() {
  given_up_ = given_up_ || (give_up_ != nullptr && host_.Asks(*give_up_));
  return given_up_;
}

void Terminal::EndLines() {
  pane_.EndLine();
  pane_.Flush();
}

bool Terminal::AcceptsConnection() {
  if (!device::WasClosedAgain(state_.device, state_.connection)) return true;
  if (StopDue()) return false;
  const std::int32_t status = state_.device.open_step_status;
  messages_.ShowError(terminal::texts::Failure(terminal::texts::kConnectFailed,
                                               {static_cast<std::int16_t>(status), std::to_string(status)}) +
                      (modem_word_.empty() ? "" : texts::ModemReplied(modem_word_)));
  return false;
}

// Shows the output so far before waiting for more.
bool Terminal::Waiting(device::Operation /*operation*/, double /*seconds*/) {
  EndLines();
  return !StopRequested() && !GivenUp();
}

bool Terminal::Dialling(const device::DialProgress& progress) {
  if (progress.reply != modem_word_ && device::IsRefusal(progress.reply))
    messages_.ShowError(texts::ModemRefused(progress.reply));
  modem_word_ = progress.reply;
  messages_.Report(terminal::texts::Dialling(progress));
  return !StopRequested() && !GivenUp();
}

}  // namespace kolvane::headless
