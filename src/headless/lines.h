#pragma once

#include <string>
#include <string_view>

#include "base/clock.h"
#include "headless/messages.h"
#include "pane/pane.h"

namespace kolvane::headless {

/// Which lines go to standard output, and how.
struct LineChoice {
  bool shown = true;    ///< false: nothing but messages and what WriteRecord is given
  bool errors = true;   ///< what stands in the place of an answer that did not come, too
  bool times = false;   ///< each line begins with its time, "2026-11-21 15:01:04.123 "
  bool colors = false;  ///< failures and commands in colours, by escape sequences
  /// Given, a line that follows another one within a millisecond is written later, by Flush, FlushDue or with
  /// the next one: a write costs as much as reading a short answer. Null, and at a terminal: each at once.
  const base::Clock* clock = nullptr;
};

/// The output pane as lines of standard output, or of the host of `messages`: commands, answers and what
/// stands in their place go there, all else to `messages`. A line is written, with its LF, once nothing can
/// follow in it any more: as it came, control characters included, but visibly at a terminal, which would act
/// on them.
class LinePane final : public pane::Pane {
 public:
  LinePane(int descriptor, Messages& messages, LineChoice choice = {});

  void AppendLine(LineKind kind, std::string_view line) override;
  /// An error is a message; other text goes on in the line in hand, for a host in one of its own.
  void AppendText(LineKind kind, std::string_view text, int back) override;
  void Clear() override {}
  void Remark(LineKind kind, std::string_view text) override;
  void Refresh() override {}

  /// The exchange in hand is over: the line in hand is complete.
  void EndLine();

  /// Writes the complete lines that are not written yet.
  void Flush();
  /// The same where they have waited for a millisecond.
  void FlushDue() {
    if (!unwritten_.empty() && IsDue()) Flush();
  }

  /// Writes a line of its own, an answer's for a host.
  void WriteRecord(std::string_view record);

  /// 0, or why standard output took no more; nothing is written from then on.
  int error() const { return error_; }

 private:
  void Append(LineKind kind, std::string_view text);
  void WriteLine();
  void Write(std::string_view line, std::string_view color = {});
  bool IsDue() const;

  int descriptor_;
  bool at_terminal_;
  Messages& messages_;
  LineChoice choice_;
  LineKind kind_ = LineKind::kAnswer;
  std::string line_;
  bool line_begun_ = false;
  std::string unwritten_;  ///< complete lines
  double written_ = -1;    ///< when, by the choice's clock
  std::string remark_;     ///< belongs to the line in hand
  LineKind remark_kind_ = LineKind::kError;
  int error_ = 0;
};

}  // namespace kolvane::headless
