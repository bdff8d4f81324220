#pragma once

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

/// The pause that ends an answer in mode 1, milliseconds.
inline constexpr std::int32_t kGapMs = 50;

namespace receive_format {
inline constexpr std::uint8_t kAscii = 0;
inline constexpr std::uint8_t kBinary = 1;
}  // namespace receive_format

/// How answers are received and commands ended. Terminators are UTF-8: empty, one character, CR LF, or for
/// sending any text.
struct ReceiveSettings {
  std::uint8_t mode = receive_mode::kTerminator;
  std::uint8_t binary_display = 0;  ///< 1: modes 1 and 2 show every byte as <0D>
  std::string receive_terminator = "\r\n";
  std::string send_terminator = "\n";

  /// Whether answers are shown byte by byte.
  bool ShowsBytes() const { return mode != receive_mode::kTerminator && binary_display != 0; }
};

/// What the receive and send controls show. Mode and format may differ from the settings in force: the list
/// says "Auto" while mode 0 is, once "ASCII" has been picked.
struct ReceiveShown {
  int mode = receive_mode::kTerminator;  ///< index in cmbReceiveMode
  int format = receive_format::kAscii;   ///< index in cmbReceiveFormat
  std::string receive_terminator = "CRLF";
  std::string send_terminator = "LF";
  std::string timeout = "3000";  ///< ReceiveTimo as typed, milliseconds
  std::string count = "1";       ///< BinChars as typed
};

/// The most recent answer, or the description of the error that came in its place.
struct LastAnswer {
  std::string text;
  std::string bytes;  ///< as they came, where the text shows each as <0D>
  /// The text split at every comma; an empty text is one empty field.
  std::vector<std::string> Fields() const;
};

/// Check marks of the menu array mnuOption, in its order.
struct Options {
  bool show_commands = true;
  bool show_response_times = false;
  bool line_breaks = false;
  /// Turns the mark of item `index` over; any other index is ignored.
  void Toggle(int index);
};

/// The session's slice of the process-wide record.
struct TerminalState {
  ReceiveSettings receive;
  ReceiveShown shown;
  LastAnswer last_answer;
  Options options;
  OutputFlags output;
  Extras extras;
  std::optional<bool> answers_of_run;  ///< queries only, as the list in hand has chosen
  bool flush_first = false;            ///< what has come is discarded before each command

  /// Whether a command that is no query is not followed by a read.
  bool QueriesOnly() const { return answers_of_run.value_or(extras.queries_only); }
};

/// What the window shows and the settings keep besides connection and reception.
struct WindowSettings {
  std::int16_t com_log = 0;
  base::Look pane;
  base::Look command_list;
};

}  // namespace kolvane::terminal
