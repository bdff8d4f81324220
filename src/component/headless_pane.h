#pragma once

#include <string>
#include <string_view>

#include "component/headless_messages.h"
#include "terminal/pane.h"

namespace kolvane::component {

/// The output pane as lines of standard output: commands and answers go there, all else to `messages`. A line
/// is written, with its LF, once nothing can follow in it any more.
class HeadlessPane final : public terminal::Pane {
 public:
  HeadlessPane(int descriptor, HeadlessMessages& messages) : descriptor_(descriptor), messages_(messages) {}

  void AppendLine(std::string_view line, terminal::Color color) override;
  /// A text that begins with a line break is a message of its own.
  void AppendText(std::string_view text, int back) override;
  void Clear() override {}
  void Refresh() override {}

  /// The exchange in hand is over: the line in hand is complete.
  void EndLine();

  /// While true, lines are notices about the connection.
  void SetConnectionNotices(bool on) { connection_notices_ = on; }
  /// The command in hand, which decides whether the line behind it is its answer. The text must outlive its
  /// exchange.
  void SetCommand(std::string_view command) { command_ = command; }

  /// 0, or why standard output took no more; nothing is written from then on.
  int error() const { return error_; }

 private:
  bool IsNotice(std::string_view line) const;
  void Append(std::string_view text);

  int descriptor_;
  HeadlessMessages& messages_;
  std::string line_;
  bool line_begun_ = false;
  bool connection_notices_ = false;
  std::string_view command_;
  int error_ = 0;
};

}  // namespace kolvane::component
