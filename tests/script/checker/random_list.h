#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "script/script_state.h"
#include "script/special_line.h"

namespace kolvane::script::checker {

/// Makes command lists out of a number, the same list for the same number: rows in any order, nested blocks,
/// and blocks with a few rows changed.
class RandomList {
 public:
  explicit RandomList(unsigned seed) : random_(seed) {}

  std::vector<std::string> Make() {
    rows_.clear();
    const int size = Below(3) == 0 ? 12 : 40;
    const int kind = Below(4);
    if (kind == 0) {
      for (int row = 0; row < size; ++row) rows_.push_back(RandomRow());
    } else {
      if (Below(8) == 0) AddDeepLoops();
      while (static_cast<int>(rows_.size()) < size) AddBlock(0);
      for (int changes = kind == 1 ? 0 : Below(4); changes > 0; --changes) ChangeRow();
    }
    return rows_;
  }

  std::vector<std::string> Answers() {
    std::vector<std::string> answers;
    for (int count = Below(6); count > 0; --count) answers.push_back(OneOf(kAnswers));
    return answers;
  }

  /// A state that earlier runs may leave, counters near their limits included.
  InterpreterState State() {
    static constexpr std::int32_t kCounts[] = {0, 0, -1, 1, 2, std::numeric_limits<std::int32_t>::min()};
    static constexpr std::int16_t kDepths[] = {0, 0, 0, 1, -1, 2, 30, -30, 32766, 32767, -32767, -32768};
    static constexpr std::int16_t kOpenLevels[] = {0, 0, 0, -1, 1, 2, 15, 16, 17, 18};
    InterpreterState state;
    state.RepeatLevel = kOpenLevels[Below(std::size(kOpenLevels))];
    for (std::int32_t& count : state.RepeatCount) count = kCounts[Below(std::size(kCounts))];
    for (std::int16_t& row : state.RepeatRow)
      row = static_cast<std::int16_t>(Below(8) == 0 ? 1025 : Below(40));
    state.IfDepth = kDepths[Below(std::size(kDepths))];
    state.SkipRows = Below(4) == 0;
    if (Coin()) state.ParamList = {"1", "2"};
    return state;
  }

  bool Coin() { return Below(2) == 0; }

 private:
  static constexpr std::string_view kAnswers[] = {"", "?", "1", "1,2,3", "OK", "a,b", ",", "?1"};
  static constexpr std::string_view kNumbers[] = {
      "0",     "1",   "2",          "3",          "-1",          "abc",         "1.5",         "2,5",
      "5x",    "&H2", "2147483647", "2147483648", "-2147483648", "-2147483649", "99999999999", "1e3",
      "1e400", "",    " 2",         "2 2",        ".",           "0.4",         "\t1"};
  static constexpr std::string_view kPositions[] = {"1",   "2", "3", "0",  "-1",         "1.5",
                                                    "0.9", "x", "",  "2x", "99999999999"};
  static constexpr std::string_view kLabels[] = {"a", "b",  "'c", "A", "d e", "none",
                                                 "",  " a", "ä",  "Ä", "a:"};
  static constexpr std::string_view kWords[] = {"ON",  "OFF",   "off", "EIN", "1",  "OK",
                                                "x y", "\"x\"", "\"x", "",    "2,3"};
  static constexpr std::string_view kUnusualRows[] = {
      "$ELSE",   "$IF",      "$REPAET 2", "$ENDIF x", "$ENDIF,",    " $ENDIF ",  "$endif",
      "$Endif",  "$ STOP",   "$",         "\t$STOP",  "$REPEAT2",   "$STOP now", "$ENDREPEAT 3",
      "$LOOP 1", "$GOTOO a", "$ENDFI",    "$ENDIF;",  "$ENDREPAET", "",          "   ",
      "'",       "' note",   "a:",        "A:",       "'c:",        "d e:",      " a:",
      "a: ",     "b:",       "ä:",        ":",        "*IDN?",      "MSV? 1",    "$SPLITPARAMSX",
      "$IFERR x"};

  template <typename Number>
  int Below(Number limit) {
    return static_cast<int>(random_() % static_cast<unsigned>(limit));
  }

  template <std::size_t size>
  std::string OneOf(const std::string_view (&texts)[size]) {
    return std::string(texts[Below(static_cast<int>(size))]);
  }

  /// A word that the interpreter executes.
  const SpecialWord& RandomWord() { return kSpecialWords[Below(static_cast<int>(SpecialCommand::kFlush))]; }

  std::string Argument(ArgumentKind kind) {
    switch (kind) {
      case ArgumentKind::kNumber:
        return Below(3) == 0 ? OneOf(kNumbers) : std::to_string(Below(3));
      case ArgumentKind::kPosition:
        return Below(3) == 0 ? OneOf(kPositions) : "1";
      case ArgumentKind::kLabel:
        return OneOf(kLabels);
      default:
        return OneOf(kWords);
    }
  }

  std::string RandomRow() {
    if (Below(3) == 0) return OneOf(kUnusualRows);
    const SpecialWord& word = RandomWord();
    std::string row(word.word);
    const bool takes_argument = word.argument != ArgumentKind::kNone;
    if (Below(20) == 0 ? !takes_argument : takes_argument) row += " " + Argument(word.argument);
    return row;
  }

  void AddBlock(int depth) {
    switch (depth > 3 ? 9 : Below(10)) {
      case 0:
      case 1:
        rows_.push_back("$REPEAT " + std::to_string(Below(3)));
        AddBlocks(depth);
        rows_.emplace_back("$ENDREPEAT");
        break;
      case 2:
      case 3:
        rows_.push_back(OneOf(kConditions));
        AddBlocks(depth);
        rows_.emplace_back("$ENDIF");
        break;
      case 4:
        rows_.push_back("$GOTO " + OneOf(kLabels));
        break;
      case 5:
        rows_.push_back(OneOf(kLabels) + ":");
        break;
      case 6:
        rows_.push_back(OneOf(kLogRows));
        break;
      case 7:
        rows_.emplace_back("MSV?");
        rows_.emplace_back("$SPLITPARAMS");
        break;
      case 8:
        rows_.push_back("$GETPARAM " + (Below(6) == 0 ? OneOf(kPositions) : std::to_string(1 + Below(2))));
        break;
      default:
        rows_.push_back(Below(12) == 0 ? "$STOP" : Below(3) == 0 ? RandomRow() : "MSV?");
        break;
    }
  }
  static constexpr std::string_view kConditions[] = {"$IFERR", "$IFEQUAL 1", "$IFGREATER 2", "$IFLESS 2"};
  static constexpr std::string_view kLogRows[] = {"$OPENLOG a", "$WRITELOG x", "$CLOSELOG", "$AUTOLOG ON"};

  void AddBlocks(int depth) {
    for (int count = 1 + Below(3); count > 0; --count) AddBlock(depth + 1);
  }

  /// About as many nested loops as are allowed.
  void AddDeepLoops() {
    const int loops = 15 + Below(4);
    for (int level = 0; level < loops; ++level) rows_.emplace_back("$REPEAT 0");
    for (int level = Below(2); level < loops; ++level) rows_.emplace_back("$ENDREPEAT");
  }

  void ChangeRow() {
    const auto at = rows_.begin() + Below(static_cast<int>(rows_.size()));
    switch (Below(3)) {
      case 0:
        *at = RandomRow();
        break;
      case 1:
        rows_.insert(at, RandomRow());
        break;
      default:
        rows_.erase(at);
        break;
    }
    if (rows_.empty()) rows_.emplace_back();
  }

  std::mt19937 random_;
  std::vector<std::string> rows_;
};

}  // namespace kolvane::script::checker
