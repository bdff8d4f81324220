#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "script/checker/check_texts.h"
#include "script/checker/checker.h"
#include "script/checker/row_words.h"
#include "script/run_bench.h"
#include "script/special_line.h"
#include "script/texts.h"

namespace kolvane::script::checker {

/// Plays lists on the real runner and interpreter and compares what they refuse with what the checker has
/// reported. Each run starts with the state that the one before has left.
class CheckReplay {
 public:
  CheckReplay() {
    bench_.host.at_yield = [this] { RowDone(); };
  }

  /// Restores the state of a program just started.
  void Reset() {
    bench_.script.interpreter = {};
    bench_.state.last_answer = {};
    bench_.log.open = false;
  }

  /// Sets the state left by earlier runs.
  void SetState(const InterpreterState& state) { bench_.script.interpreter = state; }
  void SetLogOpen(bool open) { bench_.log.open = open; }
  /// The device's answers, in turn and repeated; an empty text is a time-out.
  void SetAnswers(std::vector<std::string> answers) { answers_ = std::move(answers); }

  /// Plays at most `budget` rows of the list. With `log_known` the checker knows whether the log is open.
  /// Returns the first disagreement; empty if there is none.
  std::string Compare(const std::vector<std::string>& rows, bool log_known, int budget) {
    const std::vector<std::string_view> views(rows.begin(), rows.end());
    log_open_but_unknown_ = !log_known && bench_.log.open;
    const LogAtStart log = bench_.log.open ? LogAtStart::kOpen : LogAtStart::kClosed;
    Prepare(rows, CheckList(views,
                            RunStart::Of(bench_.script.interpreter, log_known ? log : LogAtStart::kUnknown)));
    budget_ = budget;
    bench_.core.runner.Play();
    return disagreement_;
  }

  int rows_played() const { return rows_played_; }
  int refused() const { return refused_; }
  int errors_reached() const { return errors_reached_; }

 private:
  struct Reported {
    bool any = false;
    bool error = false;
    bool unreachable = false;
  };

  void Prepare(const std::vector<std::string>& rows, const std::vector<Finding>& findings) {
    reported_.assign(kListRows + 2, {});
    for (const Finding& finding : findings) {
      Reported& reported = reported_.at(static_cast<std::size_t>(finding.row));
      reported.any = true;
      reported.error |= finding.kind == FindingKind::kError;
      reported.unreachable |= finding.text.ends_with(" nie erreicht");
    }
    Fill(rows);
    bench_.device.calls.clear();
    bench_.library.calls.clear();
    bench_.log.calls.clear();
    bench_.log.lines.clear();
    bench_.prompt.errors.clear();
    bench_.prompt.messages.clear();
    bench_.pane = {};
    bench_.view.waited_for.clear();
    bench_.host.locks.clear();
    disagreement_.clear();
    row_ = 1;
    skips_ = bench_.script.interpreter.SkipRows;
    Answer();
  }

  /// Faster than ShowFile, which writes every row of the list.
  void Fill(std::vector<std::string> rows) {
    const std::size_t before = std::exchange(rows_, rows.size());
    rows.resize(std::max(rows_, before));
    bench_.core.list.SetTexts(1, rows);
  }

  void Answer() {
    bench_.device.text_answers.clear();
    if (answers_.empty()) return;
    const std::string& answer = answers_[next_answer_++ % answers_.size()];
    if (!answer.empty()) bench_.device.text_answers.push_back(answer + "\r\n");
  }

  std::string Row() const { return std::to_string(row_) + " \"" + bench_.core.list.Text(row_) + "\""; }

  /// A split answer may have any number of fields, and a log of unknown state counts as closed if the list
  /// needs it to be.
  bool IsUnknownToChecker() const {
    const std::string& error = bench_.prompt.errors.back();
    // The checker knows some words that the interpreter does not execute yet.
    const RowParts parts(bench_.core.list.Text(row_));
    if (parts.word != nullptr && error.ends_with(script::texts::kUnknownCommand)) return true;
    if (log_open_but_unknown_ && error.ends_with(script::texts::kLogAlreadyOpen)) return true;
    if (!error.ends_with(script::texts::kNoSuchParameter)) return false;
    return SpecialLine(parts.line).Number() >= 1;
  }

  bool IsEndIf() const { return base::EqualsNoCase(base::TrimSpaces(bench_.core.list.Text(row_)), "$ENDIF"); }

  // The row `row_` has been executed or skipped.
  void RowDone() {
    ++rows_played_;
    const Reported& reported = reported_.at(static_cast<std::size_t>(row_));
    if (bench_.core.runner.outcome().list_error) {
      ++refused_;
      if (!reported.any && !IsUnknownToChecker()) Disagree("refused, but not reported: ");
    } else if (reported.error && !skips_) {
      Disagree("reported as an error, but not refused: ");
    }
    errors_reached_ += reported.error && !skips_;
    if (reported.unreachable && (!skips_ || IsEndIf())) Disagree("reported as unreachable, but executed: ");
    row_ = bench_.core.list.current_row() + 1;
    skips_ = bench_.script.interpreter.SkipRows;
    // All rows after the last one used are empty.
    if (--budget_ <= 0 || row_ > static_cast<int>(rows_)) bench_.core.runner.Break();
    Answer();
  }

  void Disagree(const std::string& how) {
    if (disagreement_.empty()) disagreement_ = how + Row();
  }

  RunBench bench_;
  std::vector<std::string> answers_;
  std::size_t next_answer_ = 0;
  std::vector<Reported> reported_;
  std::string disagreement_;
  std::size_t rows_ = 0;
  int row_ = 1;
  bool skips_ = false;
  bool log_open_but_unknown_ = false;
  int budget_ = 0;
  int rows_played_ = 0;
  int refused_ = 0;
  int errors_reached_ = 0;
};

}  // namespace kolvane::script::checker
