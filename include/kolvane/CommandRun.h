#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "kolvane/Export.h"
#include "kolvane/LineKind.h"

namespace kolvane {

enum class SerialParity : std::int16_t { kNone, kEven, kOdd };

/// What ends an answer: the receive terminator, the first gap, or a number of bytes.
enum class AnswerEnd { kTerminator, kGap, kCount };

/// What standard output holds: the lines of the output pane, or a record for each exchange
/// (docs/formats/answers.md).
enum class AnswerFormat { kText, kCsv, kJson };

/// What a run without a window works with. What is not set keeps its stored value, or its built-in one with
/// `Connect`; the stored settings are never changed. Texts are UTF-8.
struct CommandRunOptions {
  static constexpr std::int32_t kLargestCount = 1025;
  static constexpr std::int32_t kMostFields = 8192;

  std::string Connect;       ///< a RESOURCE (docs/command-line.md); empty: the user's stored connection
  std::string SettingsFile;  ///< in place of the user's own; UTF-8 path
  std::string Folder;        ///< the component's folder (modem script); empty: as MainClass finds it
  std::string LogFile;       ///< takes each line of the run; empty: none
  std::optional<std::int32_t> Baud;  ///< this and the next three: serial lines only
  std::optional<SerialParity> Parity;
  std::optional<std::int16_t> DataBits;          ///< 7 or 8
  std::optional<std::int16_t> StopBits;          ///< 1 or 2
  std::optional<std::int32_t> TimeoutMs;         ///< of connecting and of each answer
  std::optional<AnswerEnd> ReceiveMode;          ///< choosing one sets ReceiveTerminator: CR LF, else none
  std::optional<std::int32_t> Count;             ///< bytes of an answer, 0 to kLargestCount
  std::optional<std::string> SendTerminator;     ///< the bytes after each command
  std::optional<std::string> ReceiveTerminator;  ///< no byte, one byte or CR LF
  bool Binary = false;  ///< answers byte by byte as <0D>; without ReceiveMode they end at the first gap
  bool ShowCommands = false;
  bool ShowTimes = false;
  bool Verbose = false;
  AnswerFormat Format = AnswerFormat::kText;
  /// With kCsv: a row for each numeric answer only, with so many columns for its fields.
  std::optional<std::int32_t> Fields;
  bool Flush = false;        ///< what has come is discarded before each command, silently
  bool QueriesOnly = false;  ///< a command without "?" outside quotes is not followed by a read
  bool Blocks = false;       ///< an answer that begins with "#" and a digit is read as a block
  bool DeviceWords = true;   ///< DCL, RES and STP end an exchange
  bool Reconnect = false;    ///< after a lost connection the next command connects first
  bool Utf8 = false;         ///< the device's bytes are UTF-8
  bool ErrorLines = true;    ///< a failed answer has a line on standard output
  bool TimeStamps = false;  ///< lines on standard output and in the log begin with "2026-11-21 15:01:04.123 "
  /// How many times the list is run or the commands are sent, on one connection; without it once, or with
  /// EveryMs until the run is stopped.
  std::optional<std::int32_t> Repeat;
  /// From the start of one pass to that of the next; starts that a long pass misses are skipped.
  std::optional<std::int32_t> EveryMs;
  std::string Transcript;       ///< takes all bytes both ways (docs/formats/transcript.md); empty: none
  bool TranscriptTimes = true;  ///< its lines say when
  /// Asked after each row or command, and about every 50 ms of a wait; true ends the run.
  std::function<bool()> StopRequested;
  /// Takes each line, without its line end, in the place of standard output and standard error; a response
  /// time and a message are lines of their own here. Which lines come is said by the fields above, as without
  /// it.
  std::function<void(LineKind Kind, const std::string& Line)> OnLine;
};

/// How a run ended; where several apply, the one that stands first here.
enum class CommandRunStatus : int {
  kUsage = 2,  ///< `Connect` is no RESOURCE, list or settings cannot be read, no transcript be made; nothing
               ///< was done
  kNotConnected = 3,  ///< no connection came about at the start and nothing was sent, or none after a loss
  kStopped = 1,       ///< an error in the list, a stop that was asked for, or unusable standard output
  kAnswerFailed = 4,  ///< at least one command or answer failed
  kDone = 0
};

// All write commands and answers to standard output, each line ended by LF as soon as it is complete (lines
// in quick succession share a write, and none waits longer than 50 ms for it), and messages to standard
// error, one line each, control characters as <1B> where that is a terminal; or they hand all of them to
// OnLine. They need neither display nor application object. They return when the run has ended; one at a time
// in a process, on whichever thread, which is also that of StopRequested and OnLine. What StopRequested or
// OnLine throws ends the run and leaves the call once log and connection are closed; OnLine gets no more
// lines then.

/// Connects, runs the command file `File` (UTF-8 path, of a pipe as well) from its first row to its end and
/// disconnects.
KOLVANE_EXPORT CommandRunStatus RunCommandList(const std::string& File, const CommandRunOptions& Options);

/// Connects, sends each of `Commands` (of an empty one only the terminator) and disconnects. Unless Utf8 is
/// set, one with a character that Windows-1252 lacks is not sent and ends the run: kStopped.
KOLVANE_EXPORT CommandRunStatus SendCommands(const std::vector<std::string>& Commands,
                                             const CommandRunOptions& Options);

/// The same for the lines (UTF-8) of the descriptor `Input`, each sent as soon as it has come, until they
/// end. Repeat and EveryMs mean nothing here.
KOLVANE_EXPORT CommandRunStatus SendLines(int Input, const CommandRunOptions& Options);

}  // namespace kolvane
