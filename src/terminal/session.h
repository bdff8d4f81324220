#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "device/device.h"
#include "device/device_state.h"
#include "terminal/connect_commands.h"
#include "terminal/output.h"
#include "terminal/terminal_state.h"

namespace kolvane::terminal {

/// What a command that has been sent means for the session.
struct PostSendRule {
  bool disconnects = false;  ///< the connect button is to be pressed
  bool continues = true;     ///< an answer follows
  std::string_view message;  ///< shown in the answer's place; may be empty
};

/// The rule for `command`: it is searched for "DCL", "RES" (or "*RST") and "STP" in this order, anywhere and
/// in any case; the first hit wins, longer words that happen to contain one of them included.
PostSendRule RuleFor(std::string_view command);

/// Strips a text answer of what does not belong to it: the spaces around it, then one NUL, then the
/// terminator (CR LF in any case; part of it where the device left only that).
void TrimAnswer(std::string& answer, std::string_view receive_terminator);

/// Appends received bytes as they are shown: the characters with these Windows-1252 codes (with `utf8`, these
/// characters) or, with `binary`, <0D> for each.
void AppendDisplayForm(std::string_view bytes, bool binary, std::string& text, bool utf8 = false);

inline constexpr std::int32_t kTextAnswerLimit = 16000;  ///< characters, mode 0
inline constexpr std::size_t kAutoAnswerLimit = 8192;    ///< bytes, mode 1

/// What became of a command.
enum class Sent {
  kWritten,
  kNotConnected,  ///< dropped, since no connection came about
  kWriteFailed    ///< the failure stands in the pane
};

/// The steps of an exchange: a command to the device, its answer to the pane and into
/// TerminalState::last_answer. Exchange puts them together.
class Session {
 public:
  Session(device::Device& device, device::DeviceState& device_state, TerminalState& state, Output& output,
          ConnectCommands& connect)
      : device_(device), device_state_(device_state), state_(state), output_(output), connect_(connect) {}

  /// Writes `command` and the send terminator. Not connected, it presses the connect button once. Echoing is
  /// the caller's business, whatever `print_command` says.
  Sent SendCommand(std::string_view command, bool print_command = false);

  /// Connects where nothing is connected, and after a loss where that is wanted. Returns whether there is a
  /// connection.
  bool EnsureConnected();

  /// Tells how many bytes have come that no answer took; nothing is asked where nobody is told.
  void TellBytesWaiting();

  /// Discards what has come and says so.
  void Flush() { FlushInput(device_, output_); }

  /// Presses the connect button where the rule for `command` says so, and returns the rule. Without device
  /// words no rule ends an exchange; where only queries are answered, another command's continues no longer.
  PostSendRule PostSendCheck(std::string_view command);

  /// Reads one answer as the receive settings say, shows it and keeps it. Returns whether one came; the
  /// error's description is shown and kept otherwise (mode 1: an empty answer). Throws RuntimeError where the
  /// text of ReceiveTimo or BinChars is not a number or the count is outside 0 to kCountedAnswerLimit;
  /// nothing has been read then and the last answer stays.
  bool GetAnswer();

 private:
  bool ReadAnswer();
  /// The text is read as a number only where it has changed.
  void TakeTimeout();
  bool ReadAsSet();
  /// Nothing where the answer is no block.
  std::optional<bool> ReadBlock();
  bool ReadToTerminator();
  bool ReadToGap();
  bool ReadCounted();
  /// Appends what was gathered to the answer, as modes 1 and 2 show it.
  void AppendGathered();
  bool ShowAnswer(std::string_view shown);
  bool ShowFailure(const device::DeviceError& error);
  void NoteFailure(const device::DeviceError& error);
  void ShowWords(const device::DeviceError& error);

  device::Device& device_;
  device::DeviceState& device_state_;
  TerminalState& state_;
  Output& output_;
  ConnectCommands& connect_;
  bool sent_ = false;            // the command whose answer is read next
  std::int32_t timeout_ms_ = 0;  // of the answer in hand, what timeout_text_ says
  std::optional<std::string> timeout_text_;
  // Kept from exchange to exchange for their capacity.
  std::string answer_;
  std::string answer_bytes_;
  std::string gathered_;
  Bytes buffer_;
};

}  // namespace kolvane::terminal
