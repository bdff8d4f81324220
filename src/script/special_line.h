#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

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

/// The kind of a command's one argument.
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

inline constexpr std::string_view kOn = "ON";
inline constexpr std::string_view kOff = "OFF";
inline constexpr std::string_view kAlways = "ALWAYS";
inline constexpr std::string_view kQueries = "QUERIES";
inline constexpr std::string_view kOnOff[] = {kOn, kOff};
inline constexpr std::string_view kWhichAnswers[] = {kAlways, kQueries};

/// The words from which an argument of `kind` is chosen; empty if it is not chosen from a list.
constexpr std::span<const std::string_view> ArgumentWords(ArgumentKind kind) {
  if (kind == ArgumentKind::kOnOff) return kOnOff;
  if (kind == ArgumentKind::kWhichAnswers) return kWhichAnswers;
  return {};
}

inline constexpr std::size_t kLongestWord = [] {
  std::size_t longest = 0;
  for (const SpecialWord& special : kSpecialWords) longest = std::max(longest, special.word.size());
  return longest;
}();

/// The command for `word`, which is in upper case; null if there is none.
constexpr const SpecialWord* FindSpecialWord(std::string_view word) {
  for (const SpecialWord& special : kSpecialWords) {
    if (special.word == word) return &special;
  }
  return nullptr;
}

/// A row that begins with "$", split into words: the line is cut at each comma and its first piece at each
/// single space; word 0 is the command, word 1 its only argument, the rest is ignored.
class SpecialLine {
 public:
  /// `line` must outlive this object.
  explicit SpecialLine(std::string_view line);

  /// The command word in upper case; empty if it is longer than any command.
  std::string_view Command() const { return {command_, command_size_}; }

  bool HasArgument() const { return has_argument_; }
  /// Empty if two spaces precede it. Throws RuntimeError kSubscript if there is none.
  std::string_view Argument() const;
  /// The number at the argument's start, 0 if there is none.
  double Number() const;
  /// The argument without enclosing quotes: if it begins with a quote, its first and last character are
  /// stripped, whatever the last one is.
  std::string_view Unquoted() const;

 private:
  char command_[kLongestWord];
  std::size_t command_size_ = 0;
  bool has_argument_ = false;
  std::string_view argument_;
};

}  // namespace kolvane::script
