#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "device/device.h"
#include "device/device_state.h"
#include "terminal/connect_commands.h"
#include "terminal/output.h"
#include "terminal/terminal_state.h"

namespace kolvane::terminal {

/// The effect of a sent command on the session.
struct PostSendRule {
  bool disconnects = false;  ///< as a press of the connect button does
  bool continues = true;     ///< an answer follows
  std::string_view message;  ///< shown instead of the answer; may be empty
};

/// The rule for `command`: "DCL", "RES" (or "*RST") and "STP" are searched for in this order, anywhere and in
/// any case; the first match wins, even within a longer word.
PostSendRule RuleFor(std::string_view command);

/// Those words, for completion.
std::vector<std::string_view> DeviceWords();

/// Strips from a text answer the spaces around it, then one NUL, then the terminator (CR LF in any case; part
/// of it if the device left only that).
void TrimAnswer(std::string& answer, std::string_view receive_terminator);

/// Appends each byte as <0D>.
void AppendByteForm(std::string_view bytes, std::string& text);

/// Appends received bytes in their display form: decoded as Windows-1252 (as UTF-8 with `utf8`) or, with
/// `binary`, by AppendByteForm.
void AppendDisplayForm(std::string_view bytes, bool binary, std::string& text, bool utf8 = false);

inline constexpr std::int32_t kTextAnswerLimit = 16000;  ///< characters, mode 0
inline constexpr std::size_t kAutoAnswerLimit = 8192;    ///< bytes, mode 1

/// The outcome of sending a command.
enum class Sent {
  kWritten,
  kNotConnected,  ///< dropped because connecting failed
  kWriteFailed    ///< the pane shows the failure
};

/// The steps of an exchange: a command to the device, its answer to the pane and into
/// TerminalState::last_answer. Exchange combines them.
class Session {
 public:
  Session(device::Device& device, device::DeviceState& device_state, TerminalState& state, Output& output,
          ConnectCommands& connect)
      : device_(device), device_state_(device_state), state_(state), output_(output), connect_(connect) {}

  /// Writes `command` and the send terminator; if not connected, first presses the connect button once.
  /// Echoing is left to the caller.
  Sent SendCommand(std::string_view command);
  /// Of the last command; negative if writing failed.
  std::int32_t write_status() const { return write_status_; }

  /// For a read without a command: connects if not connected, and after a loss if reconnecting is on and
  /// everything received before has been read. Returns whether there is a connection.
  bool EnsureConnected();

  /// Reports how many received bytes no answer has read; does not ask the device if no view is set.
  void ReportBytesWaiting();

  /// Discards the bytes received so far and says so.
  void Flush() { FlushInput(device_, output_); }

  /// Toggles the connection if the rule for `command` says so, and returns the rule. Without device words
  /// no rule ends an exchange; if only queries are answered, the rule of any other command does not continue.
  PostSendRule PostSendCheck(std::string_view command);

  /// Reads one answer according to the receive settings, shows and stores it. Returns whether one was
  /// received; otherwise the error's description is shown and stored (mode 1: an empty answer). Throws
  /// RuntimeError if the text of ReceiveTimo or BinChars is not a number or the count is negative, before
  /// anything is read, and for a count above kCountedAnswerLimit once so many bytes have been read and
  /// dropped. The last answer is unchanged then.
  bool GetAnswer();

 private:
  bool Connect(bool restores);
  bool ReadAnswer();
  /// Parses the text only if it has changed.
  void TakeTimeout();
  bool ReadAsSet();
  /// No value if the answer is not a block.
  std::optional<bool> ReadBlock();
  bool CompletePutBack(std::string_view terminator);
  bool ReadToTerminator();
  bool ReadToGap();
  bool ReadCounted();
  /// Appends the gathered bytes to the answer in the display form of modes 1 and 2.
  void AppendGathered();
  bool ShowAnswer(std::string_view shown);
  bool ShowFailure(const device::DeviceError& error);
  bool ShowNothing(const device::DeviceError& error);
  void NoteFailure(const device::DeviceError& error);
  void ShowWords(const device::DeviceError& error);

  device::Device& device_;
  device::DeviceState& device_state_;
  TerminalState& state_;
  Output& output_;
  ConnectCommands& connect_;
  bool sent_ = false;          // the command whose answer is read next was sent
  std::string write_failure_;  // its code and meaning, if sending failed
  std::int32_t write_status_ = 0;
  std::int32_t timeout_ms_ = 0;  // for the current answer, parsed from timeout_text_
  std::optional<std::string> timeout_text_;
  // Members only to keep their capacity between exchanges.
  std::string answer_;
  std::string answer_bytes_;
  std::string gathered_;
  Bytes buffer_;
};

}  // namespace kolvane::terminal
