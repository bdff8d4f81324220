#include "headless/run.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "device/sendable.h"
#include "headless/line_input.h"
#include "headless/texts.h"
#include "script/checker/check_texts.h"
#include "script/checker/checker.h"
#include "script/command_file.h"
#include "terminal/texts.h"

namespace kolvane::headless {
namespace {

// In English, like all messages about the command line itself.
std::string Reason(const script::FileResult& result) {
  if (result.problem == script::FileResult::Problem::kLineTooLong)
    return "a line is too long for a command file";
  return std::generic_category().message(result.error);
}

std::string ReadFailure(const std::string& file, const script::FileResult& result) {
  return "cannot read the command list '" + file + "': " + Reason(result);
}

}  // namespace

List::List(Terminal& terminal, RunState& state)
    : terminal_(terminal),
      core_({state.script, state.terminal, state.device, terminal.core().exchange, terminal.pane(),
             terminal.core().waits, *this, terminal.log(), *this}) {}

bool List::Load(const std::string& file) {
  const auto stop_due = [this](int /*waited_ms*/) { return terminal_.StopDue() || terminal_.GivenUp(); };
  const script::FileResult result = script::LoadCommandFile(core_.list, file, stop_due);
  if (terminal_.stopped()) return false;
  if (!result.ok() && terminal_.GivenUp()) {
    terminal_.messages().ShowError(texts::kRunStopped);
  } else if (!result.ok()) {
    terminal_.messages().ShowError(ReadFailure(file, result));
  } else if (core_.list.left_out() > 0) {
    terminal_.messages().ShowError("'" + file + "' is longer than " + std::to_string(script::kListRows) +
                                   " lines, left out: " + std::to_string(core_.list.left_out()));
  }
  return result.ok();
}

Schedule::Schedule(std::optional<std::int32_t> passes, std::optional<std::int32_t> period_ms,
                   Clock::time_point start)
    : left_(passes ? *passes : (period_ms ? kUnlimited : 1)), due_(start) {
  if (period_ms) period_ = std::chrono::milliseconds(std::max(*period_ms, 1));
}

std::optional<Schedule::Clock::time_point> Schedule::Next(Clock::time_point now) {
  if (left_ <= 0) return std::nullopt;
  --left_;
  if (first_) {
    first_ = false;
  } else if (!period_) {
    due_ = now;
  } else {
    due_ += *period_;
    if (due_ < now) due_ += (now - due_ + *period_ - Clock::duration(1)) / *period_ * *period_;
  }
  return due_;
}

namespace {

// Makes the passes of a run, each when it is due, until one returns false or a stop is requested.
template <typename Pass>
void MakePasses(Terminal& terminal, Pass pass) {
  const CommandRunOptions& options = terminal.options();
  Schedule schedule(options.Repeat, options.EveryMs, Schedule::Clock::now());
  while (const auto due = schedule.Next(Schedule::Clock::now())) {
    if (*due > Schedule::Clock::now()) terminal.EndLines();
    if (WaitFor(-1, due, [&terminal] { return terminal.StopDue(); }) == WaitEnd::kGivenUp || !pass()) return;
  }
}

}  // namespace

CommandRunStatus List::Play() {
  bool all_done = true;
  CommandRunStatus last = CommandRunStatus::kDone;
  MakePasses(terminal_, [&] {
    last = PlayOnce();
    all_done &= last == CommandRunStatus::kDone;
    return last == CommandRunStatus::kDone || last == CommandRunStatus::kAnswerFailed;
  });
  terminal_.EndLines();
  if (terminal_.StopDue() && last != CommandRunStatus::kNotConnected) return CommandRunStatus::kStopped;
  return last == CommandRunStatus::kDone && !all_done ? CommandRunStatus::kAnswerFailed : last;
}

CommandRunStatus List::PlayOnce() {
  core_.runner.Play();
  return Status();
}

CommandRunStatus List::PlayRows(const std::vector<std::string>& rows) {
  if (rows.size() > script::kListRows) {
    terminal_.messages().ShowError("more than " + std::to_string(script::kListRows) +
                                   " rows belong together");
    return CommandRunStatus::kStopped;
  }
  single_row_ = rows.size() == 1;
  core_.list.SetTexts(1, rows);
  core_.runner.RunCommandList(0);
  return Status();
}

CommandRunStatus List::Status() {
  const script::RunOutcome& outcome = core_.runner.outcome();
  if (terminal_.IsConnectionLost()) return CommandRunStatus::kNotConnected;
  if (outcome.list_error || terminal_.stopped()) return CommandRunStatus::kStopped;
  return outcome.exchange_failed ? CommandRunStatus::kAnswerFailed : CommandRunStatus::kDone;
}

[[gnu::hot]] void List::Yield() {
  terminal_.pane().EndLine();
  terminal_.pane().FlushDue();
  if (terminal_.StopDue() || terminal_.IsConnectionLost() || terminal_.GivenUp()) core_.runner.Abort();
}

void List::ShowError(std::string_view text) { terminal_.messages().ShowError(text); }

void List::ShowListError(std::string_view text, std::string_view error) {
  ShowError(single_row_ ? error : text);
}

CommandRunStatus RunList(const RunSetup& setup, const std::string& file) {
  Terminal terminal(setup);
  List list(terminal, setup.state);
  if (!list.Load(file)) return terminal.stopped() ? CommandRunStatus::kStopped : CommandRunStatus::kUsage;
  if (!terminal.Connect()) return CommandRunStatus::kNotConnected;
  return terminal.StopDue() ? CommandRunStatus::kStopped : list.Play();
}

namespace {

/// Sends commands one by one and keeps the overall result.
class CommandSender {
 public:
  explicit CommandSender(Terminal& terminal) : terminal_(terminal) {}

  /// False if the run ends before or with this command.
  bool Send(std::string_view command) {
    if (terminal_.StopDue() || !IsSendable(command)) return false;
    all_done_ &= !terminal_.core().exchange.Run(command, terminal::Sender::kList).Failed();
    terminal_.pane().EndLine();
    return !terminal_.IsConnectionLost();
  }

  CommandRunStatus Status() {
    terminal_.EndLines();
    if (terminal_.IsConnectionLost()) return CommandRunStatus::kNotConnected;
    if (refused_ || terminal_.StopDue()) return CommandRunStatus::kStopped;
    return all_done_ ? CommandRunStatus::kDone : CommandRunStatus::kAnswerFailed;
  }

 private:
  // The device would receive a different command; as in a list, that ends the run.
  bool IsSendable(std::string_view command) {
    const std::string_view character = device::UnsendableCharacter(terminal_.device(), command);
    if (!character.empty()) terminal_.messages().ShowError(terminal::texts::NotSendable(character));
    refused_ = !character.empty();
    return !refused_;
  }

  Terminal& terminal_;
  bool all_done_ = true;
  bool refused_ = false;
};

}  // namespace

std::string CannotReadInput(int error) {
  return "cannot read standard input: " +
         (error == EMSGSIZE ? "a line is too long for a command" : std::generic_category().message(error));
}

CommandRunStatus SendAll(const RunSetup& setup, const std::vector<std::string>& commands) {
  Terminal terminal(setup);
  if (!terminal.Connect()) return CommandRunStatus::kNotConnected;
  CommandSender sender(terminal);
  MakePasses(terminal, [&] {
    return std::ranges::all_of(commands, [&](const std::string& command) { return sender.Send(command); });
  });
  return sender.Status();
}

CommandRunStatus SendInput(const RunSetup& setup, int input) {
  Terminal terminal(setup);
  if (!terminal.Connect()) return CommandRunStatus::kNotConnected;
  CommandSender sender(terminal);
  LineInput lines(input);
  std::string line;
  LineInput::Result result{};
  do {
    if (!lines.HasLine()) terminal.EndLines();
    result = lines.Next(line, [&terminal] { return terminal.StopDue(); });
  } while (result == LineInput::Result::kLine && sender.Send(line));
  if (result != LineInput::Result::kFailed) return sender.Status();
  terminal.messages().ShowError(CannotReadInput(lines.error()));
  return CommandRunStatus::kStopped;
}

namespace {

ListFinding Public(const script::checker::Finding& finding) {
  return {finding.row, finding.kind == script::checker::FindingKind::kError, finding.text,
          finding.replacement, finding.other_row};
}

ListFinding LinesLeftOut(std::size_t lines) {
  constexpr int kFirst = script::kListRows + 1;
  const int last = script::kListRows + static_cast<int>(lines);
  return {kFirst, false, script::checker::texts::BeyondTheList(kFirst, last), {}, 0};
}

CheckedCommandList CheckFile(const std::string& file) {
  CheckedCommandList checked{file, {}, {}};
  script::CommandList list;
  const script::FileResult result = script::LoadCommandFile(list, file);
  if (!result.ok()) {
    checked.Problem = ReadFailure(file, result);
    return checked;
  }
  for (const script::checker::Finding& finding : script::checker::CheckList(list))
    checked.Findings.push_back(Public(finding));
  if (list.left_out() > 0) checked.Findings.push_back(LinesLeftOut(list.left_out()));
  return checked;
}

}  // namespace

std::vector<CheckedCommandList> CheckFiles(const std::vector<std::string>& files) {
  std::vector<CheckedCommandList> checked;
  for (const std::string& file : files) checked.push_back(CheckFile(file));
  return checked;
}

}  // namespace kolvane::headless
