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
  std::int32_t TimeoutMs = 3000;  ///< of connecting, of each command and of each answer
  /// Ends each answer and is stripped. CR LF: a lone LF ends it, too. Empty: the end that USB and GPIB
  /// instruments mark themselves, else the first 50 ms of silence.
  std::string ReadTermination = "\r\n";
  std::string WriteTermination = "\n";  ///< follows each command
  std::optional<std::int32_t> Baud =
      {};  ///< this and the next three: serial lines only; COM1_BAUD, else 9600
  std::optional<SerialParity> Parity = {};    ///< none
  std::optional<std::int16_t> DataBits = {};  ///< 7 or 8; 8
  std::optional<std::int16_t> StopBits = {};  ///< 1 or 2; 1
  /// Asked about every 50 ms by a call that waits, on its thread; true gives the call up (kGivenUp). It must
  /// not use the instrument. What it throws leaves the call.
  std::function<bool()> GiveUp = {};
};

/// What InstrumentMessage ends with.
enum class MessageEnd {
  kCount,        ///< so many bytes as were asked for
  kTermination,  ///< the bytes that were named; they are part of it
  kInstrument,   ///< the instrument's own mark (USB, GPIB)
  kGap           ///< silence
};

/// How the two sides of a serial line hold each other up: not at all, by the characters XOFF and XON, by the
/// lines RTS and CTS.
enum class SerialFlow { kNone, kXonXoff, kRtsCts };

/// What ReadMessage reads up to, whichever comes first.
struct MessageLimits {
  std::size_t Count = std::size_t{16} << 20;  ///< bytes, at least 1, at most that many
  std::string Termination = {};               ///< empty: none
  bool InstrumentEnds = true;                 ///< the instrument's own mark counts
  std::int32_t GapMs = -1;                    ///< silence once something has come; negative: does not count
};

/// The bytes of a message as they came.
struct InstrumentMessage {
  std::string Bytes;
  MessageEnd End;
};

/// A connection of its own to one instrument, without a terminal: any number at once, each usable from
/// several threads, whose calls come one after the other (a query is one call). It needs neither display nor
/// application object. Commands and answers are bytes as they are on the line. Every call may throw
/// InstrumentError; bytes that came before a failure stay for the next read, but for those of a block, and of
/// answers and counts above 16 MiB.
class KOLVANE_EXPORT Instrument {
 public:
  /// Connects. `Resource`: docs/command-line.md has the names. Throws std::invalid_argument for a name or an
  /// option that is none.
  explicit Instrument(const std::string& Resource, const InstrumentOptions& Options = {});
  Instrument(Instrument&&) noexcept;
  Instrument& operator=(Instrument&&) noexcept;
  /// Closes.
  ~Instrument();

  const std::string& Resource() const;
  /// Gives up what other threads wait for and disconnects; a second call does nothing.
  void Close();
  bool IsOpen() const;

  /// Sends a command and its termination.
  void Write(std::string_view Command);
  /// Receives one answer.
  std::string Read();
  /// Both, with nothing of another thread's between them.
  std::string Query(std::string_view Command);
  /// Sends the bytes as they are.
  void WriteBytes(std::string_view Bytes);
  /// Receives so many bytes.
  std::string ReadBytes(std::size_t Count);
  /// Sends a command and receives a block in the form of IEEE 488.2, at most 64 MiB: what follows its head
  /// "#", without the termination. The time-out holds between the bytes.
  std::string QueryBlock(std::string_view Command);
  /// Sends a command and splits its answer at commas, semicolons and spaces. Throws std::invalid_argument for
  /// a part that is not a number.
  std::vector<double> QueryValues(std::string_view Command);
  /// Receives up to one of the limits.
  InstrumentMessage ReadMessage(const MessageLimits& Limits);

  /// Discards what has come and has not been read; returns the number of bytes.
  std::size_t Flush();
  /// What has come and has not been read; USB and GPIB instruments keep theirs until they are asked.
  std::size_t BytesWaiting() const;

  /// The status byte, asked of the instrument beside its messages: USB and GPIB, kNotAvailable elsewhere.
  std::uint8_t ReadStatusByte();

  /// Changes the line parameters; kInvalidArgument where there is no serial line.
  void SetLine(std::int32_t Baud, SerialParity Parity, std::int16_t DataBits, std::int16_t StopBits,
               SerialFlow Flow = SerialFlow::kNone);

  std::int32_t TimeoutMs() const;
  /// Throws std::invalid_argument below 0; 0: only what can be done at once.
  void SetTimeoutMs(std::int32_t Milliseconds);
  std::string ReadTermination() const;
  void SetReadTermination(const std::string& Termination);
  std::string WriteTermination() const;
  void SetWriteTermination(const std::string& Termination);

 private:
  std::unique_ptr<instrument::Connection> connection_;
};

}  // namespace kolvane
