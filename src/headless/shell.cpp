#include "headless/shell.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "device/connection_texts.h"
#include "device/port_table.h"
#include "headless/line_input.h"
#include "headless/run.h"
#include "script/checker/row_check.h"
#include "script/command_list.h"
#include "script/completion.h"
#include "terminal/session.h"

namespace kolvane::headless {
namespace {

constexpr const char* kContinuationPrompt = "... ";

// The first word of a row, in upper case.
std::string WordOf(std::string_view row) { return base::UpperCase(row.substr(0, row.find_first_of(" ,"))); }

// How a row changes the number of open loops and conditions.
int DepthOf(std::string_view row) {
  using script::checker::FlowOp;
  const FlowOp op = script::checker::FlowOpOf(script::checker::RowParts(row));
  if (op == FlowOp::kRepeat || op == FlowOp::kCondition) return 1;
  return op == FlowOp::kEndRepeat || op == FlowOp::kEndIf ? -1 : 0;
}

std::string WithoutQuotes(std::string_view text) {
  text = base::TrimSpaces(text);
  if (text.size() > 1 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  return std::string(text);
}

/// Lines from standard input, for a shell without a user.
class PlainInput {
 public:
  explicit PlainInput(Terminal& terminal) : terminal_(terminal) {}

  ShellInput Read(std::string& line) {
    if (!lines_.HasLine()) terminal_.EndLines();
    const auto result = lines_.Next(line, [this] { return terminal_.StopDue(); });
    failed_ = result == LineInput::Result::kFailed;
    if (failed_) terminal_.messages().ShowError(CannotReadInput(lines_.error()));
    return result == LineInput::Result::kLine ? ShellInput::kLine : ShellInput::kEnd;
  }

  /// Whether the last Read failed; the user has been told why.
  bool failed() const { return failed_; }

 private:
  Terminal& terminal_;
  LineInput lines_{STDIN_FILENO};
  bool failed_ = false;
};

class Shell {
 public:
  Shell(Terminal& terminal, RunState& state, const ShellHost& host)
      : terminal_(terminal), state_(state), host_(host), plain_(terminal) {}

  CommandRunStatus Run() {
    std::string line;
    while (!terminal_.StopDue()) {
      const ShellInput input = host_.ReadLine ? host_.ReadLine(Prompt(), line) : plain_.Read(line);
      if (input == ShellInput::kEnd) break;
      if (input == ShellInput::kCancelled) {
        rows_.Finish();
      } else {
        Take(line);
      }
    }
    if (plain_.failed()) return CommandRunStatus::kStopped;
    // Like a list that ends with an open loop or condition.
    if (!host_.ReadLine && rows_.open() && !terminal_.StopDue())
      Note(List(terminal_, state_).PlayRows(rows_.Finish()));
    if (terminal_.StopDue()) return CommandRunStatus::kStopped;
    return all_done_ ? CommandRunStatus::kDone : CommandRunStatus::kAnswerFailed;
  }

 private:
  std::string Prompt() const {
    if (rows_.open()) return kContinuationPrompt;
    const bool connected = state_.device.connected && !terminal_.core().connect.lost();
    return ConnectionName(state_.connection) + (connected ? "> " : " (disconnected)> ");
  }

  void Take(std::string_view line) {
    line = base::TrimSpaces(line);
    terminal_.Resume();
    // An error, a $STOP or a list without its ends must not decide whether later rows are sent.
    state_.script.interpreter.CloseBlocks();
    List list(terminal_, state_);
    if (!rows_.open() && WordOf(line) == "$RUN") {
      Play(list, WithoutQuotes(line.substr(std::string_view("$RUN").size())));
    } else if (const auto rows = rows_.Take(line); !rows.empty()) {
      Note(list.PlayRows(rows));
    }
  }

  void Play(List& list, const std::string& file) {
    Note(list.Load(file) ? list.PlayOnce() : CommandRunStatus::kStopped);
  }

  void Note(CommandRunStatus status) {
    terminal_.pane().EndLine();
    all_done_ &= status == CommandRunStatus::kDone;
  }

  Terminal& terminal_;
  RunState& state_;
  const ShellHost& host_;
  PlainInput plain_;
  ShellRows rows_;
  bool all_done_ = true;
};

}  // namespace

std::vector<std::string> ShellRows::Take(std::string_view row) {
  row = base::TrimSpaces(row);
  if (row.empty()) return {};
  rows_.emplace_back(row);
  depth_ += DepthOf(row);
  // A list has no room for more rows.
  if (depth_ > 0 && rows_.size() <= script::kListRows) return {};
  return Finish();
}

std::vector<std::string> ShellRows::Finish() {
  depth_ = 0;
  return std::exchange(rows_, {});
}

std::string ConnectionName(const device::ConnectionParameters& connection) {
  namespace code = device::port_code;
  switch (connection.port_code) {
    case code::kOffline:
      return "OFFLINE";
    case code::kTcpIp: {
      const bool brackets = connection.ip_address.find(':') != std::string::npos;
      const std::string host = brackets ? "[" + connection.ip_address + "]" : connection.ip_address;
      return host + ":" + device::IpPortText(connection.ip_port);
    }
    case code::kUsb:
      return "USB " + connection.usb_address;
    case code::kGpib:
      return "GPIB " + std::to_string(connection.address);
    default:
      return connection.node.empty() ? device::PortKindOfCode(connection.port_code)->caption
                                     : connection.node;
  }
}

CommandRunStatus RunShell(const RunSetup& setup, const ShellHost& host) {
  Terminal terminal(setup);
  if (!terminal.Connect()) return CommandRunStatus::kNotConnected;
  return Shell(terminal, setup.state, host).Run();
}

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kRun = "$RUN ";

// Folders end with "/"; hidden files are offered only if the typed name starts with ".". Names with control
// characters, which would act on the terminal, are not.
std::vector<std::string> Files(std::string_view typed) {
  const std::size_t slash = typed.rfind('/');
  const std::string_view folder = typed.substr(0, slash == typed.npos ? 0 : slash + 1);
  const std::string_view prefix = typed.substr(folder.size());
  std::vector<std::string> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder.empty() ? "." : fs::path(folder), error), end;
       !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with(prefix) || (prefix.empty() && name.starts_with('.'))) continue;
    if (std::ranges::any_of(name, base::IsAsciiControl)) continue;
    std::error_code ignored;
    found.push_back(std::string(folder) + name + (entry->is_directory(ignored) ? "/" : ""));
  }
  std::ranges::sort(found);
  return found;
}

}  // namespace

std::vector<std::string> CompleteShellLine(std::string_view typed) {
  std::vector<std::string> found;
  for (const std::string_view with_file : {kRun, std::string_view("$OPENLOG ")}) {
    if (!base::StartsWithNoCase(typed, with_file)) continue;
    const std::string word(typed.substr(0, with_file.size()));
    for (const std::string& file : Files(typed.substr(word.size()))) found.push_back(word + file);
    return found;
  }
  const script::CommandList none;
  for (const script::Completion& each : script::Completions(typed, none)) found.push_back(each.row);
  if (typed.starts_with('$') && base::StartsWithNoCase(kRun, typed)) found.emplace_back(kRun);
  for (const std::string_view word : terminal::DeviceWords())
    if (!typed.empty() && base::StartsWithNoCase(word, typed)) found.emplace_back(word);
  return found;
}

}  // namespace kolvane::headless
