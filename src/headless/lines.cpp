#include "headless/lines.h"

#include <unistd.h>

#include "base/descriptor.h"
#include "terminal/typed_fields.h"

namespace kolvane::headless {

using terminal::kCrLf;

LinePane::LinePane(int descriptor, Messages& messages)
    : descriptor_(descriptor), at_terminal_(isatty(descriptor) == 1), messages_(messages) {}

void LinePane::AppendLine(LineKind kind, std::string_view line) {
  EndLine();
  if (kind == LineKind::kNotice) return messages_.Tell(line);
  Append(kind, line);
  if (kind == LineKind::kCommand) EndLine();
}

void LinePane::AppendText(LineKind kind, std::string_view text, int /*back*/) {
  if (kind == LineKind::kError) return messages_.ShowError(text);
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
  if (error_ == 0) error_ = base::WriteAll(descriptor_, at_terminal_ ? WithVisibleControls(line_) : line_);
}

}  // namespace kolvane::headless
