#include "headless/lines.h"

#include <unistd.h>

#include <utility>

#include "base/clock.h"
#include "base/descriptor.h"
#include "base/text.h"
#include "terminal/receive_controls.h"

namespace kolvane::headless {

using terminal::kCrLf;

namespace {

constexpr double kSharedWriteSeconds = 0.001;
constexpr std::size_t kMaxUnwritten = 1 << 16;

constexpr std::string_view kPlain = "\x1B[0m";

// Colour numbers, so that the user's own colour scheme applies.
std::string_view ColorOf(LineKind kind) {
  switch (kind) {
    case LineKind::kError:
      return "\x1B[31m";
    case LineKind::kCommand:
      return "\x1B[36m";
    case LineKind::kTime:
    case LineKind::kNotice:
      return "\x1B[2m";
    case LineKind::kAnswer:
      break;
  }
  return {};
}

}  // namespace

LinePane::LinePane(int descriptor, Messages& messages, LineChoice choice)
    : descriptor_(descriptor), at_terminal_(isatty(descriptor) == 1), messages_(messages), choice_(choice) {}

[[gnu::hot]] void LinePane::AppendLine(LineKind kind, std::string_view line) {
  EndLine();
  if (kind == LineKind::kNotice) return messages_.Report(line);
  if (!choice_.shown) return;
  if (kind == LineKind::kError && !choice_.errors && messages_.host() == nullptr) return;
  Append(kind, line);
  if (kind == LineKind::kCommand) EndLine();
}

void LinePane::AppendText(LineKind kind, std::string_view text, int /*back*/) {
  if (kind == LineKind::kError) return messages_.ShowError(text);
  if (!choice_.shown) return;
  if (messages_.host() != nullptr) EndLine();
  Append(kind, text);
}

// A remark follows the line that it belongs to.
void LinePane::Remark(LineKind kind, std::string_view text) {
  if (!line_started_) return messages_.Remark(kind, text);
  remark_ = text;
  remark_kind_ = kind;
}

[[gnu::hot]] void LinePane::EndLine() {
  if (!line_started_) return;
  WriteLine();
  line_.clear();
  line_started_ = false;
  if (const std::string remark = std::exchange(remark_, {}); !remark.empty())
    messages_.Remark(remark_kind_, remark);
}

[[gnu::hot]] void LinePane::Append(LineKind kind, std::string_view text) {
  if (!line_started_) {
    kind_ = kind;
    if (choice_.times && messages_.host() == nullptr) time_ = base::TimeStamp() + ' ';
  }
  line_started_ = true;
  for (std::size_t at; (at = text.find(kCrLf)) != std::string_view::npos;) {
    line_.append(text.substr(0, at)).append(1, '\n');
    text.remove_prefix(at + kCrLf.size());
  }
  line_ += text;
}

[[gnu::hot]] void LinePane::WriteLine() {
  if (line_.ends_with('\n')) line_.pop_back();
  if (messages_.host() != nullptr) return messages_.host()->Deliver(kind_, line_);
  if (choice_.times) line_ = base::WithLinePrefix(line_, time_);
  line_ += '\n';
  Write(line_, choice_.colors ? ColorOf(kind_) : std::string_view());
}

void LinePane::WriteRecord(std::string_view record) {
  if (messages_.host() != nullptr) return messages_.host()->Deliver(LineKind::kAnswer, std::string(record));
  Write(std::string(record) + '\n');
}

[[gnu::hot]] void LinePane::Write(std::string_view line, std::string_view color) {
  if (error_ != 0) return;
  if (!color.empty()) unwritten_ += color;
  unwritten_ += at_terminal_ ? WithVisibleControls(line) : line;
  if (!color.empty()) unwritten_.insert(unwritten_.size() - 1, kPlain);
  if (at_terminal_ || IsDue()) Flush();
}

[[gnu::hot]] bool LinePane::IsDue() const {
  return choice_.clock == nullptr || unwritten_.size() >= kMaxUnwritten ||
         choice_.clock->Seconds() - written_ >= kSharedWriteSeconds;
}

[[gnu::hot]] void LinePane::Flush() {
  if (unwritten_.empty()) return;
  error_ = base::WriteAllWaiting(descriptor_, unwritten_);
  unwritten_.clear();
  if (choice_.clock != nullptr) written_ = choice_.clock->Seconds();
}

}  // namespace kolvane::headless
