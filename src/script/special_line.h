#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "base/runtime_error.h"

namespace kolvane::script {

enum class SpecialCommand {
  kRepeat,
  kEndRepeat,
  kDelay,
  kStop,
  kIfError,
  kIfEqual,
  kIfGreater,
  kIfLess,
  kEndIf,
  kGoTo,
  kOpenLog,
  kWriteLog,
  kCloseLog,
  kSplitParams,
  kGetParam,
  kClear,
  kSilent,
  kAutoLog,
  kFlush,
  kRead,
  kAnswers
};

/// What a command's one argument is.
enum class ArgumentKind {
  kNone,
  kNumber,
  kPosition,
  kText,
  kQuotedText,
  kFile,
  kLabel,
  kOnOff,
  kWhichAnswers
};

struct SpecialWord {
  std::string_view word;
  SpecialCommand command;
  ArgumentKind argument;
};

/// Every $ command, for the interpreter, the checker and completion.
inline constexpr SpecialWord kSpecialWords[] = {
    {"$REPEAT", SpecialCommand::kRepeat, ArgumentKind::kNumber},
    {"$ENDREPEAT", SpecialCommand::kEndRepeat, ArgumentKind::kNone},
    {"$DELAY", SpecialCommand::kDelay, ArgumentKind::kNumber},
    {"$STOP", SpecialCommand::kStop, ArgumentKind::kNone},
    {"$IFERR", SpecialCommand::kIfError, ArgumentKind::kNone},
    {"$IFEQUAL", SpecialCommand::kIfEqual, ArgumentKind::kText},
    {"$IFGREATER", SpecialCommand::kIfGreater, ArgumentKind::kText},
    {"$IFLESS", SpecialCommand::kIfLess, ArgumentKind::kText},
    {"$ENDIF", SpecialCommand::kEndIf, ArgumentKind::kNone},
    {"$GOTO", SpecialCommand::kGoTo, ArgumentKind::kLabel},
    {"$OPENLOG", SpecialCommand::kOpenLog, ArgumentKind::kFile},
    {"$WRITELOG", SpecialCommand::kWriteLog, ArgumentKind::kQuotedText},
    {"$CLOSELOG", SpecialCommand::kCloseLog, ArgumentKind::kNone},
    {"$SPLITPARAMS", SpecialCommand::kSplitParams, ArgumentKind::kNone},
    {"$GETPARAM", SpecialCommand::kGetParam, ArgumentKind::kPosition},
    {"$CLEAR", SpecialCommand::kClear, ArgumentKind::kNone},
    {"$SILENT", SpecialCommand::kSilent, ArgumentKind::kOnOff},
    {"$AUTOLOG", SpecialCommand::kAutoLog, ArgumentKind::kOnOff},
    {"$FLUSH", SpecialCommand::kFlush, ArgumentKind::kNone},
    {"$READ", SpecialCommand::kRead, ArgumentKind::kNone},
    {"$ANSWERS", SpecialCommand::kAnswers, ArgumentKind::kWhichAnswers},
};

/// The command of this word, in upper case; null for none.
constexpr const SpecialWord* FindSpecialWord(std::string_view word) {
  for (const SpecialWord& special : kSpecialWords) {
    if (special.word == word) return &special;
  }
  return nullptr;
}

/// Adds `step` to a counter; throws RuntimeError kOverflow, the counter as it was, where its type is too
/// small.
template <typename Counter>
void AddChecked(Counter& counter, Counter step) {
  Counter sum;
  if (__builtin_add_overflow(counter, step, &sum))
    throw base::RuntimeError(base::RuntimeError::Kind::kOverflow);
  counter = sum;
}

/// The element at `index`; throws RuntimeError kSubscript where there is none.
template <typename Element, std::size_t size>
Element& At(std::array<Element, size>& array, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= size)
    throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
  return array[static_cast<std::size_t>(index)];
}

/// A row that begins with "$", taken apart. The line is cut at each comma and its first piece at each single
/// space; word 0 is the command, word 1 the one argument, all the rest is not used.
class SpecialLine {
 public:
  /// `line` must outlive this.
  explicit SpecialLine(std::string_view line);

  /// The word that names the command, in upper case; empty for one longer than any command's.
  std::string_view Command() const { return {command_, command_size_}; }

  bool HasArgument() const { return has_argument_; }
  /// Empty where two spaces come before it. Throws RuntimeError kSubscript where there is none.
  std::string_view Argument() const;
  /// The number at the argument's start, 0 where none stands there.
  double Number() const;
  /// The argument without the quotes that enclose it: where it begins with one, its first and last character
  /// are stripped, whatever the last one is.
  std::string_view Unquoted() const;

 private:
  static constexpr std::size_t kLongest = 12;  ///< $SPLITPARAMS

  char command_[kLongest];
  std::size_t command_size_ = 0;
  bool has_argument_ = false;
  std::string_view argument_;
};

}  // namespace kolvane::script
