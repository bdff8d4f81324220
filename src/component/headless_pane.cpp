#include "component/headless_pane.h"

#include "base/write_all.h"
#include "terminal/post_send_check.h"
#include "terminal/terminators.h"

namespace kolvane::component {

using terminal::kCrLf;

void HeadlessPane::AppendLine(std::string_view line, terminal::Color color) {
  EndLine();
  const bool command = color == terminal::kCommandColor;
  if (!command && IsNotice(line)) return messages_.Tell(line);
  line_begun_ = true;
  Append(line);
  if (command) EndLine();
}

void HeadlessPane::AppendText(std::string_view text, int /*back*/) {
  if (text.starts_with(kCrLf)) return messages_.ShowError(text);
  line_begun_ = true;
  Append(text);
}

void HeadlessPane::EndLine() {
  if (!line_begun_) return;
  if (!line_.ends_with('\n')) line_ += '\n';
  if (error_ == 0) error_ = base::WriteAll(descriptor_, line_);
  line_.clear();
  line_begun_ = false;
}

// An instrument may answer in the very words of a notice.
bool HeadlessPane::IsNotice(std::string_view line) const {
  if (connection_notices_) return true;
  const terminal::PostSendRule rule = terminal::RuleFor(command_);
  return !rule.continues && line == rule.message;
}

void HeadlessPane::Append(std::string_view text) {
  for (std::size_t at; (at = text.find(kCrLf)) != std::string_view::npos;) {
    line_.append(text.substr(0, at)).append(1, '\n');
    text.remove_prefix(at + kCrLf.size());
  }
  line_ += text;
}

}  // namespace kolvane::component
