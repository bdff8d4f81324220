#include "script/watch.h"

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "script/special_line.h"

namespace kolvane::script {
namespace {

std::string YesOrNo(bool value) { return value ? "ja" : "nein"; }

/// How often a $REPEAT's block runs, by its row; 0 if the row is no longer a $REPEAT.
std::int64_t Passes(const std::string& row) {
  const SpecialLine line(base::TrimSpaces(row));
  if (line.Command() != "$REPEAT" || !line.HasArgument()) return 0;
  const auto count = base::FitInt32(line.Number());
  return count ? std::max<std::int64_t>(*count, 0) + 1 : 0;
}

/// "3 von 10" for the loop open at `level`.
std::string PassOf(const CommandList& list, const InterpreterState& state, std::size_t level) {
  const std::int64_t passes = Passes(list.Text(state.RepeatRow[level]));
  const std::int64_t pass = passes - state.RepeatCount[level];
  if (pass < 1 || pass > passes) return "noch " + std::to_string(state.RepeatCount[level]);
  return std::to_string(pass) + " von " + std::to_string(passes);
}

/// How much of the outermost loop is done, 0 to 1; 0 if a loop's passes are unknown.
double ShareDone(const CommandList& list, const InterpreterState& state) {
  double share = 0;
  for (std::int16_t level = state.RepeatLevel; level >= 1; --level) {
    const auto at = static_cast<std::size_t>(level);
    const std::int64_t passes = Passes(list.Text(state.RepeatRow[at]));
    const std::int64_t done = passes - state.RepeatCount[at] - 1;
    if (done < 0 || done >= passes) return 0;
    share = (static_cast<double>(done) + share) / static_cast<double>(passes);
  }
  return share;
}

/// An estimate beyond a year says nothing, and nested loops can have more passes than any integer counts.
constexpr double kLongestEstimate = 365.0 * 24 * 60 * 60;

/// "1:05" for 65 seconds.
std::string Minutes(double seconds) {
  const auto whole = static_cast<long>(seconds);
  const std::string rest = std::to_string(whole % 60);
  return std::to_string(whole / 60) + ":" + (rest.size() < 2 ? "0" : "") + rest;
}

WatchItem Loops(const CommandList& list, const InterpreterState& state) {
  WatchItem item{"Schleifen", std::to_string(state.RepeatLevel)};
  for (int level = 1; level <= std::min<int>(state.RepeatLevel, kLevels - 1); ++level) {
    const auto at = static_cast<std::size_t>(level);
    item.children.push_back({"Zeile " + std::to_string(state.RepeatRow[at]), PassOf(list, state, at)});
  }
  return item;
}

WatchItem Fields(const std::vector<std::string>& fields) {
  WatchItem item{"Letzte Antwort", std::to_string(fields.size()) + (fields.size() == 1 ? " Teil" : " Teile")};
  int number = 0;
  for (const std::string& field : fields) item.children.push_back({std::to_string(++number), field});
  return item;
}

std::string Count(std::int32_t count, std::string_view one, std::string_view more) {
  return std::to_string(count) + " " + std::string(count == 1 ? one : more);
}

}  // namespace

std::string StillOpen(const InterpreterState& state, bool silent, bool recording) {
  std::string text;
  const auto add = [&text](const std::string& part) {
    text += (text.empty() ? "Noch offen: " : ", ") + part;
  };
  if (state.RepeatLevel > 0) add(Count(state.RepeatLevel, "Schleife", "Schleifen"));
  if (state.RepeatLevel < 0) add(std::to_string(-state.RepeatLevel) + " $ENDREPEAT zu viel");
  if (state.IfDepth > 0) add(Count(state.IfDepth, "Bedingung", "Bedingungen"));
  if (state.IfDepth < 0) add(std::to_string(-state.IfDepth) + " $ENDIF zu viel");
  if (state.SkipRows) add("Zeilen werden übergangen");
  if (silent) add("$SILENT ON");
  if (recording) add("$AUTOLOG ON");
  return text;
}

std::vector<WatchItem> WatchItems(const CommandList& list, const InterpreterState& state,
                                  const WatchedSession& session) {
  return {
      {"ParamValue", state.ParamValue},
      Fields(session.fields),
      Loops(list, state),
      {"Offene Bedingungen", std::to_string(state.IfDepth)},
      {"Zeilen werden übergangen", YesOrNo(state.SkipRows)},
      {"Status", std::to_string(session.last_result)},
      {"$SILENT", session.silent ? "ON" : "OFF"},
      {"Logdatei", session.log_open ? (session.log_recording ? "offen, schreibt mit" : "offen") : "keine"},
  };
}

std::string RunProgress::Text(const CommandList& list, const InterpreterState& state, double seconds) {
  std::string text =
      "Zeile " + std::to_string(list.current_row()) + " von " + std::to_string(list.LastUsedRow());
  if (state.RepeatLevel >= 1 && state.RepeatLevel < kLevels)
    text += ", Schleife " + PassOf(list, state, static_cast<std::size_t>(state.RepeatLevel));
  return text + ", " + Minutes(seconds) + TimeLeft(list, state, seconds);
}

std::string RunProgress::TimeLeft(const CommandList& list, const InterpreterState& state, double seconds) {
  const bool in_loop = state.RepeatLevel >= 1 && state.RepeatLevel < kLevels;
  const double share = in_loop ? ShareDone(list, state) : 0;
  if (const int row = in_loop ? state.RepeatRow[1] : 0; row != loop_row_ || share < share_at_start_) {
    loop_row_ = row;
    loop_start_ = seconds;
    share_at_start_ = share;
  }
  const double elapsed = seconds - loop_start_;
  if (elapsed < 1 || share <= share_at_start_) return {};
  const double left = elapsed * (1 - share) / (share - share_at_start_);
  return left > kLongestEstimate ? std::string() : ", noch etwa " + Minutes(left);
}

}  // namespace kolvane::script
