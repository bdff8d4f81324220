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

/// What ends an answer: the receive terminator, the first gap, or a byte count.
enum class AnswerEnd { kTerminator, kGap, kCount };

/// What standard output holds: the lines of the output pane, or one record per exchange
/// (docs/formats/answers.md).
enum class AnswerFormat { kText, kCsv, kJson };

/// Settings of a run without a window. A field that is not set keeps its stored value or, with `Connect`, its
/// built-in one; the stored settings are never changed. Texts are UTF-8.
struct CommandRunOptions {
  static constexpr std::int32_t kLargestCount = 1025;
  static constexpr std::int32_t kMostFields = 8192;

  std::string Connect;       ///< a RESOURCE (docs/command-line.md); empty: the user's stored connection
  std::string SettingsFile;  ///< used instead of the user's own; UTF-8 path
  std::string Folder;        ///< the component's folder (modem script); empty: as MainClass finds it
  std::string LogFile;       ///< receives each line of the run; empty: none
  std::optional<std::int32_t> Baud;  ///< this and the next three: serial lines only
  std::optional<SerialParity> Parity;
  std::optional<std::int16_t> DataBits;          ///< 7 or 8
  std::optional<std::int16_t> StopBits;          ///< 1 or 2
  std::optional<std::int32_t> TimeoutMs;         ///< for connecting and for each answer
  std::optional<AnswerEnd> ReceiveMode;          ///< setting it also sets ReceiveTerminator: CR LF, else none
  std::optional<std::int32_t> Count;             ///< bytes of an answer, 0 to kLargestCount
  std::optional<std::string> SendTerminator;     ///< the bytes after each command
  std::optional<std::string> ReceiveTerminator;  ///< empty, one byte or CR LF
  bool Binary = false;  ///< shows answers byte by byte as <0D>; without ReceiveMode they end at the first gap
  bool ShowCommands = false;
  bool ShowTimes = false;
  bool Verbose = false;
  AnswerFormat Format = AnswerFormat::kText;
  /// With kCsv: only numeric answers become rows, with this many columns for their fields.
  std::optional<std::int32_t> Fields;
  bool Flush = false;        ///< silently discards unread input before each command
  bool QueriesOnly = false;  ///< a command without "?" outside quotes is not followed by a read
  bool Blocks = false;       ///< an answer that starts with "#" and a digit is read as a block
  bool DeviceWords = true;   ///< DCL, RES and STP end an exchange
  bool Reconnect = false;    ///< after a lost connection the next command reconnects first
  bool Utf8 = false;         ///< the device's bytes are UTF-8
  bool ErrorLines = true;    ///< a failed answer gets a line on standard output
  bool TimeStamps = false;  ///< lines on standard output and in the log start with "2026-11-21 15:01:04.123 "
  /// How many times the list is run or the commands are sent, on one connection. Default: once, or with
  /// EveryMs until the run is stopped.
  std::optional<std::int32_t> Repeat;
  /// Milliseconds from the start of one pass to the start of the next, at least 1. Starts missed during a
  /// long pass are skipped.
  std::optional<std::int32_t> EveryMs;
  std::string Transcript;       ///< receives all bytes in both directions (docs/formats/transcript.md);
                                ///< empty: none
  bool TranscriptTimes = true;  ///< its lines have times
  /// Called after each row or command, and about every 50 ms during a wait; true ends the run.
  std::function<bool()> StopRequested;
  /// Receives each line, without its line end, instead of standard output and standard error; a response time
  /// and a message are separate lines here. The fields above select the lines as usual.
  std::function<void(LineKind Kind, const std::string& Line)> OnLine;
};

/// How a run ended; if several apply, the first one listed here.
enum class CommandRunStatus : int {
  kUsage = 2,  ///< `Connect` is not a RESOURCE, list or settings cannot be read, or the transcript cannot be
               ///< created; nothing was done
  kNotConnected = 3,  ///< could not connect at the start, so nothing was sent, or could not reconnect after a
                      ///< loss
  kStopped = 1,       ///< an error in the list, a requested stop, or unusable standard input or output
  kAnswerFailed = 4,  ///< at least one command or answer failed
  kDone = 0
};

// All of these write commands and answers to standard output, each line ended by LF as soon as it is complete
// (lines in quick succession share a write; none waits for it longer than 50 ms), and messages to standard
// error, one line each, with control characters as <1B> on a terminal; or they pass all lines to OnLine. They
// need neither display nor application object. They return when the run has ended. Only one runs at a time in
// a process, on any thread; StopRequested and OnLine are called on that thread. An exception from
// StopRequested or OnLine ends the run and is rethrown once log and connection are closed; OnLine then
// receives no more lines.

/// Connects, runs the command file `File` (UTF-8 path, may be a pipe) from first row to last and disconnects.
KOLVANE_EXPORT CommandRunStatus RunCommandList(const std::string& File, const CommandRunOptions& Options);

/// Connects, sends each of `Commands` (for an empty one only the terminator) and disconnects. Unless Utf8 is
/// set, a command with a character outside Windows-1252 is not sent and ends the run: kStopped.
KOLVANE_EXPORT CommandRunStatus SendCommands(const std::vector<std::string>& Commands,
                                             const CommandRunOptions& Options);

/// Like SendCommands, for the lines (UTF-8) of the descriptor `Input`, each sent as soon as it arrives, up to
/// end of file. Repeat and EveryMs are ignored.
KOLVANE_EXPORT CommandRunStatus SendLines(int Input, const CommandRunOptions& Options);

}  // namespace kolvane
