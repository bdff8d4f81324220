#pragma once

#include <string>
#include <string_view>

#include "base/clock.h"
#include "headless/messages.h"
#include "pane/pane.h"

namespace kolvane::headless {

/// Which lines go to standard output, and how.
struct LineChoice {
  bool shown = true;    ///< false: only messages and records of WriteRecord
  bool errors = true;   ///< includes errors that replace an answer
  bool times = false;   ///< each line starts with its time, "2026-11-21 15:01:04.123 "; within an answer, too
  bool colors = false;  ///< failures and commands in colour, by escape sequences
  /// If set, a line less than a millisecond after a write, or in the same tick of this clock, is kept and
  /// written by the next line, Flush or FlushDue: a write costs as much as reading a short answer. If null,
  /// and on a terminal, each line is written at once.
  const base::Clock* clock = nullptr;
};

/// The output pane as lines of standard output, or of the host of `messages`: commands, answers and what
/// replaces them go there, everything else to `messages`. A line is written, with its LF, once it is
/// complete: control characters are unchanged, but shown as text on a terminal, which would execute them.
class LinePane final : public pane::Pane {
 public:
  LinePane(int descriptor, Messages& messages, LineChoice choice = {});

  void AppendLine(LineKind kind, std::string_view line) override;
  /// An error becomes a message; other text continues the current line, for a host as a separate line.
  void AppendText(LineKind kind, std::string_view text, int back) override;
  void Clear() override {}
  void Remark(LineKind kind, std::string_view text) override;
  void Refresh() override {}

  /// Ends the exchange: the current line is complete.
  void EndLine();

  /// Writes all complete lines.
  void Flush();
  /// The same if they have waited for a millisecond.
  void FlushDue() {
    if (!unwritten_.empty() && IsDue()) Flush();
  }

  /// Writes a separate line; for a host it is an answer.
  void WriteRecord(std::string_view record);

  /// 0, or the errno of the failed write to standard output, after which nothing is written.
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
  bool line_started_ = false;
  std::string time_;       ///< of the current line, with a space; only if times are wanted
  std::string unwritten_;  ///< complete lines
  double written_ = -1;    ///< time of the last write on the choice's clock
  std::string remark_;     ///< belongs to the current line
  LineKind remark_kind_ = LineKind::kError;
  int error_ = 0;
};

}  // namespace kolvane::headless
