#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/look.h"
#include "terminal/extras.h"
#include "terminal/output.h"

namespace kolvane::terminal {

namespace receive_mode {
inline constexpr std::uint8_t kTerminator = 0;  ///< an answer ends at the receive terminator
inline constexpr std::uint8_t kAuto = 1;        ///< an answer ends at the first gap
inline constexpr std::uint8_t kCount = 2;       ///< an answer has a fixed number of bytes
}  // namespace receive_mode

/// The gap that ends an answer in mode 1, milliseconds.
inline constexpr std::int32_t kGapMs = 50;

namespace receive_format {
inline constexpr std::uint8_t kAscii = 0;
inline constexpr std::uint8_t kBinary = 1;
}  // namespace receive_format

/// How answers are received and commands ended. Terminators are UTF-8: empty, one character or CR LF; the
/// send terminator may be any text.
struct ReceiveSettings {
  std::uint8_t mode = receive_mode::kTerminator;
  std::uint8_t binary_display = 0;  ///< 1: modes 1 and 2 show every byte as <0D>
  std::string receive_terminator = "\r\n";
  std::string send_terminator = "\n";

  /// Whether answers are shown byte by byte.
  bool ShowsBytes() const { return mode != receive_mode::kTerminator && binary_display != 0; }
};

/// What the receive and send controls show. Mode and format may differ from the settings in force: after
/// "ASCII" has been picked, the list shows "Auto" although mode 0 is in force.
struct ReceiveShown {
  int mode = receive_mode::kTerminator;  ///< index in cmbReceiveMode
  int format = receive_format::kAscii;   ///< index in cmbReceiveFormat
  std::string receive_terminator = "CRLF";
  std::string send_terminator = "LF";
  std::string timeout = "3000";  ///< ReceiveTimo as typed, milliseconds
  std::string count = "1";       ///< BinChars as typed
};

/// The most recent answer, or the description of the error if it failed.
struct LastAnswer {
  std::string text;
  std::string bytes;  ///< as received, if the text shows each as <0D>
  /// The text split at every comma; an empty text is one empty field.
  std::vector<std::string> Fields() const;
};

/// Check marks of the menu array mnuOption.
struct Options {
  bool show_commands = true;
  bool show_response_times = false;
  bool line_breaks = false;
};

/// The options by their index in mnuOption.
inline constexpr std::array<bool Options::*, 3> kOptionItems = {
    &Options::show_commands, &Options::show_response_times, &Options::line_breaks};

/// The session's part of the process-wide record.
struct TerminalState {
  ReceiveSettings receive;
  ReceiveShown shown;
  LastAnswer last_answer;
  Options options;
  OutputFlags output;
  Extras extras;
  std::optional<bool> answers_of_run;  ///< queries only, as chosen by the running list
  bool flush_first = false;            ///< received bytes are discarded before each command

  /// Whether only commands with "?" are followed by a read.
  bool QueriesOnly() const { return answers_of_run.value_or(extras.queries_only); }
};

/// What the window shows and the settings store besides connection and reception.
struct WindowSettings {
  std::int16_t com_log = 0;  ///< only kept as stored
  base::Look pane;
  base::Look command_list;
};

}  // namespace kolvane::terminal
