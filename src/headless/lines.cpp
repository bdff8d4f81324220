#include "headless/lines.h"

#include <unistd.h>

#include "base/descriptor.h"
#include "terminal/typed_fields.h"

namespace kolvane::headless {

using terminal::kCrLf;

LinePane::LinePane(int descriptor, Messages& messages, bool shows_lines)
    : descriptor_(descriptor),
      shows_lines_(shows_lines),
      at_terminal_(isatty(descriptor) == 1),
      messages_(messages) {}

void LinePane::AppendLine(LineKind kind, std::string_view line) {
  EndLine();
  if (kind == LineKind::kNotice) return messages_.Tell(line);
  if (!shows_lines_) return;
  Append(kind, line);
  if (kind == LineKind::kCommand) EndLine();
}

void LinePane::AppendText(LineKind kind, std::string_view text, int /*back*/) {
  if (kind == LineKind::kError) return messages_.ShowError(text);
  if (!shows_lines_) return;
  if (messages_.host() != nullptr) EndLine();
  Append(kind, text);
}

void LinePane::EndLine() {
  if (!line_begun_) return;
  WriteLine();
  line_.clear();
  line_begun_ = false;
}

void LinePane::Append(LineKind kind, std::string_view text) {
  if (!line_begun_) kind_ = kind;
  line_begun_ = true;
  for (std::size_t at; (at = text.find(kCrLf)) != std::string_view::npos;) {
    line_.append(text.substr(0, at)).append(1, '\n');
    text.remove_prefix(at + kCrLf.size());
  }
  line_ += text;
}

void LinePane::WriteLine() {
  if (line_.ends_with('\n')) line_.pop_back();
  if (messages_.host() != nullptr) return messages_.host()->Hand(kind_, line_);
  line_ += '\n';
  Write(line_);
}

void LinePane::WriteRecord(std::string_view record) {
  if (messages_.host() != nullptr) return messages_.host()->Hand(LineKind::kAnswer, std::string(record));
  Write(std::string(record) + '\n');
}

void LinePane::Write(std::string_view line) {
  if (error_ == 0) error_ = base::WriteAll(descriptor_, at_terminal_ ? WithVisibleControls(line) : line);
}

}  // namespace kolvane::headless
