#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "kolvane/CommandRun.h"
#include "kolvane/Export.h"

namespace kolvane::instrument {
class Connection;
}

namespace kolvane {

/// A connection or transfer that failed; what() names the resource, the reason in German and the status.
class KOLVANE_EXPORT InstrumentError : public std::runtime_error {
 public:
  static constexpr std::int32_t kInvalidArgument = -2;
  static constexpr std::int32_t kNotOpen = -3;
  static constexpr std::int32_t kNotAvailable = -4;
  static constexpr std::int32_t kReadTimeout = -30;
  static constexpr std::int32_t kGivenUp = -60;
  static constexpr std::int32_t kBlockTooLong = -61;
  static constexpr std::int32_t kNoBlock = -62;

  InstrumentError(std::int32_t code, const std::string& text) : std::runtime_error(text), status_(code) {}

  /// Negative; docs/status-codes.md explains each.
  std::int32_t status() const { return status_; }

 private:
  std::int32_t status_;
};

/// How an instrument is connected to.
struct InstrumentOptions {
  std::int32_t TimeoutMs = 3000;  ///< for connecting, for each command and for each answer
  /// Ends each answer and is stripped. With CR LF, a lone LF ends it too. Empty: the end that USB and GPIB
  /// instruments mark, otherwise the first 50 ms of silence.
  std::string ReadTermination = "\r\n";
  std::string WriteTermination = "\n";  ///< follows each command
  // The next four are for serial lines only.
  std::optional<std::int32_t> Baud = {};      ///< default: COM1_BAUD or COM2_BAUD of ports.ini, else 9600
  std::optional<SerialParity> Parity = {};    ///< default: none
  std::optional<std::int16_t> DataBits = {};  ///< 7 or 8; default: 8
  std::optional<std::int16_t> StopBits = {};  ///< 1 or 2; default: 1
  /// Called about every 50 ms by a call that waits, on its thread; true gives up that call (kGivenUp). It
  /// must not use the instrument. An exception it throws leaves the call.
  std::function<bool()> GiveUp = {};
};

/// How an InstrumentMessage ended.
enum class MessageEnd {
  kCount,        ///< the requested number of bytes
  kTermination,  ///< the requested bytes; they are part of the message
  kInstrument,   ///< marked by the instrument (USB, GPIB)
  kGap           ///< silence
};

/// Flow control of a serial line: none, the characters XOFF and XON, or the lines RTS and CTS.
enum class SerialFlow { kNone, kXonXoff, kRtsCts };

/// What ends ReadMessage, whichever comes first.
struct MessageLimits {
  std::size_t Count = std::size_t{16} << 20;  ///< bytes, 1 to this default
  std::string Termination = {};               ///< empty: none
  bool InstrumentEnds = true;                 ///< the instrument's own end mark counts
  std::int32_t GapMs = -1;                    ///< silence after the first byte; negative: ignored
};

/// A message with its bytes as received.
struct InstrumentMessage {
  std::string Bytes;
  MessageEnd End;
};

/// An independent connection to one instrument, without a terminal. There may be any number; each may be used
/// from several threads, whose calls run one after the other (a query is one call). Needs neither display nor
/// application object. Commands and answers are bytes as they are on the line. Every call may throw
/// InstrumentError. Bytes received before a failure stay for the next read, except those of a block, and of
/// answers and counts above 16 MiB.
class KOLVANE_EXPORT Instrument {
 public:
  /// Connects to `Resource` (names: docs/command-line.md). Throws std::invalid_argument for an invalid name
  /// or option.
  explicit Instrument(const std::string& Resource, const InstrumentOptions& Options = {});
  Instrument(Instrument&&) noexcept;
  Instrument& operator=(Instrument&&) noexcept;
  ~Instrument();

  const std::string& Resource() const;
  /// Makes waiting calls of other threads give up and disconnects; a second call does nothing.
  void Close();
  bool IsOpen() const;

  /// Sends a command and its termination.
  void Write(std::string_view Command);
  /// Receives one answer.
  std::string Read();
  /// Write and Read in one call, with no call of another thread between them.
  std::string Query(std::string_view Command);
  /// Sends the bytes as they are.
  void WriteBytes(std::string_view Bytes);
  /// Receives exactly `Count` bytes.
  std::string ReadBytes(std::size_t Count);
  /// Sends a command and receives a block in IEEE 488.2 form, at most 64 MiB. Returns what follows its "#"
  /// head, without the termination. The time-out applies between bytes.
  std::string QueryBlock(std::string_view Command);
  /// Sends a command and splits its answer at commas, semicolons and spaces. Throws std::invalid_argument if
  /// a part is not a number.
  std::vector<double> QueryValues(std::string_view Command);
  /// Receives until one of the limits is reached.
  InstrumentMessage ReadMessage(const MessageLimits& Limits);

  /// Discards unread input; returns the number of bytes.
  std::size_t Flush();
  /// Unread bytes received so far; USB and GPIB instruments keep theirs until asked.
  std::size_t BytesWaiting() const;

  /// The status byte, read out of band: USB and GPIB, kNotAvailable elsewhere.
  std::uint8_t ReadStatusByte();

  /// Changes the line parameters; kInvalidArgument if this is not a serial line.
  void SetLine(std::int32_t Baud, SerialParity Parity, std::int16_t DataBits, std::int16_t StopBits,
               SerialFlow Flow = SerialFlow::kNone);

  std::int32_t TimeoutMs() const;
  /// 0: only what can be done at once. Throws std::invalid_argument if negative.
  void SetTimeoutMs(std::int32_t Milliseconds);
  std::string ReadTermination() const;
  void SetReadTermination(const std::string& Termination);
  std::string WriteTermination() const;
  void SetWriteTermination(const std::string& Termination);

 private:
  std::unique_ptr<instrument::Connection> connection_;
};

}  // namespace kolvane
