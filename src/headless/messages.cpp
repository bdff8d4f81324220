#include "headless/messages.h"

#include <unistd.h>

#include "base/descriptor.h"
#include "base/text.h"
#include "terminal/session.h"

namespace kolvane::headless {
namespace {

// Inner line breaks become one space each, those at the ends are dropped.
std::string OneLine(std::string_view text) {
  std::string line;
  bool broken = false;
  for (const char c : text) {
    if (c == '\r' || c == '\n') {
      broken = true;
      continue;
    }
    if (broken && !line.empty()) line += ' ';
    broken = false;
    line += c;
  }
  return line;
}

bool IsShown(char c) { return !base::IsAsciiControl(c) || c == '\t' || c == '\n'; }

// The range from U+0080 to U+009F: C2 80 to C2 9F.
bool IsSecondControl(std::string_view text) {
  return text.size() > 1 && text[0] == '\xC2' && (static_cast<unsigned char>(text[1]) & 0xE0) == 0x80;
}

}  // namespace

std::string WithVisibleControls(std::string_view text) {
  std::string visible;
  while (!text.empty()) {
    const std::size_t size = IsSecondControl(text) ? 2 : 1;
    const std::string_view last = text.substr(size - 1, 1);
    if (size == 2 || !IsShown(last[0])) {
      terminal::AppendByteForm(last, visible);
    } else {
      visible += last;
    }
    text.remove_prefix(size);
  }
  return visible;
}

void HostLines::Deliver(LineKind kind, const std::string& line) {
  if (refuses_lines_) return;
  try {
    handler_(kind, line);
  } catch (...) {
    refuses_lines_ = true;
    if (!failed()) thrown_ = std::current_exception();
  }
}

bool HostLines::Asks(const std::function<bool()>& question) {
  if (failed() || !question) return failed();
  try {
    return question();
  } catch (...) {
    thrown_ = std::current_exception();
    return true;
  }
}

void HostLines::Rethrow() const {
  if (failed()) std::rethrow_exception(thrown_);
}

Messages::Messages(int descriptor, bool verbose, HostLines* host)
    : descriptor_(descriptor), verbose_(verbose), at_terminal_(isatty(descriptor) == 1), host_(host) {}

void Messages::ShowFailure(std::string_view text, std::string_view words) {
  ShowError(words.empty() ? std::string(text) : std::string(text) + ": " + std::string(words));
}

void Messages::Show(LineKind kind, std::string_view text) {
  if (host_ != nullptr) return host_->Deliver(kind, OneLine(text));
  if (before_) before_();
  const std::string line = "kolvane: " + OneLine(text) + "\n";
  // A failure to write to standard error has nowhere to be reported.
  (void)base::WriteAllWaiting(descriptor_, at_terminal_ ? WithVisibleControls(line) : line);
}

}  // namespace kolvane::headless
