#include "app/line_editor.h"

#include <histedit.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <utility>

#include "app/shell_typing.h"
#include "base/descriptor.h"
#include "base/encoding.h"

namespace kolvane::app {
namespace {

// Encloses the parts of a prompt that have no width.
constexpr char kNoWidth = '\x01';
constexpr int kHistorySize = 2 * static_cast<int>(ShellHistory::kKept);
constexpr std::size_t kMaxListed = 100;
// Further input stays in the terminal's buffer, which limits a paste.
constexpr std::size_t kMaxTyped = 1 << 20;
// Makes the library call Redraw; no key in UTF-8 has this code by itself.
constexpr wchar_t kRedrawKey = 0x9D;
constexpr const char* kRedrawKeyName = "\\235";

// Characters are UTF-8, whatever locale numbers and dates use.
void UseUtf8() {
  std::setlocale(LC_CTYPE, "");
  if (MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
}

int CharactersIn(std::string_view text) {
  return static_cast<int>(std::ranges::count_if(text, [](char c) { return !base::IsUtf8Continuation(c); }));
}

// Ctrl+\ ends the program at once, with the terminal as it was.
termios mode_at_quit;

void Quit(int number) {
  tcsetattr(STDIN_FILENO, TCSANOW, &mode_at_quit);
  signal(number, SIG_DFL);
  raise(number);
}

LineEditor& SelfOf(EditLine* line) {
  void* self = nullptr;
  el_get(line, EL_CLIENTDATA, &self);
  return *static_cast<LineEditor*>(self);
}

}  // namespace

/// The library's editor and its callbacks.
struct LineEditor::Editor {
  explicit Editor(LineEditor& self)
      : line(el_init("kolvane", stdin, stdout, stderr)), history(history_init()) {
    HistEvent event{};
    ::history(history, &event, H_SETSIZE, kHistorySize);
    for (const std::string& each : self.history_.lines()) ::history(history, &event, H_ENTER, each.c_str());
    el_set(line, EL_CLIENTDATA, &self);
    el_set(line, EL_EDITOR, "emacs");
    el_set(line, EL_HIST, ::history, history);
    el_set(line, EL_GETCFN, &Editor::Read);
    el_set(line, EL_PROMPT_ESC, &Editor::Prompt, kNoWidth);
    el_set(line, EL_SETTY, "-d", "intr=", nullptr);
    // Between two lines, too: keys typed until ShowNothing would be shown, and Ctrl+C and Ctrl+D lost.
    el_set(line, EL_SETTY, "-x", "-icanon", "-echo", "intr=", nullptr);
    // Characters that are switched off have the code 0, and the library binds one of them: a Ctrl+Space would
    // insert the next key, Ctrl+D included.
    el_set(line, EL_BIND, "^@", "em-set-mark", nullptr);
    el_set(line, EL_ADDFN, "give-up", "Give up the line", &Editor::GiveUp);
    el_set(line, EL_ADDFN, "complete-line", "Complete the line", &Editor::Complete);
    el_set(line, EL_ADDFN, "redraw-line", "Draw the line for another size", &Editor::Redraw);
    el_set(line, EL_BIND, kRedrawKeyName, "redraw-line", nullptr);
    el_set(line, EL_BIND, "^C", "give-up", nullptr);
    el_set(line, EL_BIND, "^I", "complete-line", nullptr);
    el_set(line, EL_BIND, "^R", "em-inc-search-prev", nullptr);
  }
  ~Editor() {
    el_end(line);
    history_end(history);
  }
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  static int Read(EditLine* line, wchar_t* character) { return SelfOf(line).ReadCharacter(*character); }
  static char* Prompt(EditLine* line) { return SelfOf(line).prompt_.data(); }
  static unsigned char GiveUp(EditLine* line, int /*key*/) {
    SelfOf(line).cancelled_ = true;
    std::fputs("^C\r\n", stdout);
    std::fflush(stdout);
    return CC_NEWLINE;
  }
  static unsigned char Complete(EditLine* line, int /*key*/) { return SelfOf(line).CompleteLine(); }
  static unsigned char Redraw(EditLine* line, int /*key*/) { return SelfOf(line).Redraw(); }

  EditLine* line;
  History* history;
};

LineEditor::LineEditor(int end, ShellHistory& history, CompleteFunction complete, bool colors)
    : end_(end), history_(history), complete_(std::move(complete)), colors_(colors) {
  UseUtf8();
  tcgetattr(STDIN_FILENO, &at_start_);
  mode_at_quit = at_start_;
  if (signal(SIGQUIT, Quit) == SIG_IGN) signal(SIGQUIT, SIG_IGN);
  editor_ = std::make_unique<Editor>(*this);
  ShowNothing();
}

LineEditor::~LineEditor() {
  editor_.reset();
  tcsetattr(STDIN_FILENO, TCSADRAIN, &at_start_);
  if (signal(SIGQUIT, SIG_DFL) == SIG_IGN) signal(SIGQUIT, SIG_IGN);
}

void LineEditor::ShowNothing() {
  termios mode = at_start_;
  mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
  mode.c_cc[VINTR] = _POSIX_VDISABLE;
  mode.c_cc[VMIN] = 1;
  mode.c_cc[VTIME] = 0;
  tcsetattr(STDIN_FILENO, TCSADRAIN, &mode);
}

void LineEditor::TakeSignals() {
  const TerminalSignals::Received received = signals_.Take();
  resized_ |= received.resized;
  if (!received.stop && !received.continued) return;
  if (editing_) el_set(editor_->line, EL_PREP_TERM, 0);
  if (received.stop) {
    tcsetattr(STDIN_FILENO, TCSADRAIN, &at_start_);
    TerminalSignals::Stop();
    signals_.Take();
  }
  // The user's shell has its own mode, and the size may have changed unnoticed.
  ShowNothing();
  resized_ = true;
  if (!editing_) return;
  el_set(editor_->line, EL_PREP_TERM, 1);
  el_set(editor_->line, EL_REFRESH);
}

ShellInput LineEditor::ReadLine(const std::string& prompt, std::string& line) {
  prompt_ = prompt;
  // The library loses a part without width at the very end.
  if (colors_ && !prompt.empty())
    prompt_ = "\x01\x1B[1m\x01" + prompt.substr(0, prompt.size() - 1) + "\x01\x1B[0m\x01" + prompt.back();
  cancelled_ = false;
  TakeSignals();
  resized_ = false;
  el_resize(editor_->line);
  editing_ = true;
  int count = 0;
  const char* text = el_gets(editor_->line, &count);
  editing_ = false;
  ShowNothing();
  if (cancelled_) return ShellInput::kCancelled;
  if (text == nullptr || count <= 0) {
    std::fputs("\n", stdout);
    std::fflush(stdout);
    return ShellInput::kEnd;
  }
  line.assign(text, static_cast<std::size_t>(count));
  if (line.ends_with('\n')) line.pop_back();
  HistEvent event{};
  if (line.find_first_not_of(' ') != line.npos) ::history(editor_->history, &event, H_ENTER, line.c_str());
  history_.Add(line);
  return ShellInput::kLine;
}

bool LineEditor::GiveUp() {
  TakeSignals();
  for (pollfd entry{STDIN_FILENO, POLLIN, 0}; poll(&entry, 1, 0) == 1 && typed_.size() < kMaxTyped;)
    if (!Receive()) break;
  if (!typed_.HasGivenUp()) return false;
  typed_.Clear();
  return true;
}

bool LineEditor::Receive() {
  std::array<char, 4096> piece;
  const ssize_t got = read(STDIN_FILENO, piece.data(), piece.size());
  if (got > 0) typed_.Append({piece.data(), static_cast<std::size_t>(got)});
  return got > 0 || (got < 0 && base::IsTransient(errno));
}

bool LineEditor::ReadByte(char& byte) {
  while (typed_.empty()) {
    std::array<pollfd, 2> watched{{{STDIN_FILENO, POLLIN, 0}, {end_, POLLIN, 0}}};
    if (poll(watched.data(), watched.size(), -1) < 0) continue;
    if (watched[1].revents != 0 || !Receive()) return false;
  }
  byte = typed_.Take();
  return true;
}

int LineEditor::ReadCharacter(wchar_t& character) {
  while (typed_.empty() && !resized_ && !cleared_) {
    std::array<pollfd, 3> watched{
        {{STDIN_FILENO, POLLIN, 0}, {end_, POLLIN, 0}, {signals_.descriptor(), POLLIN, 0}}};
    if (poll(watched.data(), watched.size(), -1) < 0) continue;
    if (watched[2].revents != 0) {
      TakeSignals();
    } else if (watched[1].revents != 0 || !Receive()) {
      return 0;
    }
  }
  if (resized_ || cleared_) {
    character = kRedrawKey;
    return 1;
  }
  std::string bytes(1, typed_.Take());
  while (bytes.size() < base::Utf8Length(bytes[0])) {
    char next = '\0';
    if (!ReadByte(next)) return 0;
    bytes += next;
    if (!base::IsUtf8Continuation(next)) break;
  }
  const char32_t point = base::DecodeUtf8(bytes, 0).value;
  character = point == base::kMalformed ? L'?' : static_cast<wchar_t>(point);
  return 1;
}

// The library must know the new size only when the cursor is in the first row: with fewer rows it would
// otherwise write beyond its copy of the screen.
unsigned char LineEditor::Redraw() {
  EditLine* line = editor_->line;
  if (!cleared_) {
    const LineInfo* info = el_line(line);
    kept_line_.assign(info->buffer, info->lastchar);
    after_cursor_ = CharactersIn({info->cursor, info->lastchar});
    el_cursor(line, after_cursor_);
    el_deletestr(line, CharactersIn(kept_line_));
    kept_prompt_ = std::exchange(prompt_, {});
    resized_ = false;
    cleared_ = true;
    return CC_REDISPLAY;
  }
  el_resize(line);
  prompt_ = std::move(kept_prompt_);
  el_insertstr(line, kept_line_.c_str());
  el_cursor(line, -after_cursor_);
  cleared_ = false;
  return CC_REDISPLAY;
}

unsigned char LineEditor::CompleteLine() {
  const LineInfo* info = el_line(editor_->line);
  const std::string typed(info->buffer, info->cursor);
  const std::vector<std::string> candidates = complete_(typed);
  if (candidates.empty()) return CC_REFRESH_BEEP;
  const std::string common = CommonPrefix(candidates);
  if (common.size() < typed.size() || common == typed) {
    List(candidates);
    return CC_REDISPLAY;
  }
  el_deletestr(editor_->line, CharactersIn(typed));
  return el_insertstr(editor_->line, common.c_str()) == 0 ? CC_REFRESH : CC_REFRESH_BEEP;
}

void LineEditor::List(const std::vector<std::string>& candidates) {
  const std::size_t listed = std::min(candidates.size(), kMaxListed);
  std::string text = "\n";
  for (std::size_t i = 0; i < listed; ++i) text.append(candidates[i]).append(1, '\n');
  if (listed < candidates.size()) text += "...\n";
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

}  // namespace kolvane::app
