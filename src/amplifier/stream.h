#pragma once

#include <sys/types.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::amplifier {

/// The result of a transfer. kLater: nothing was transferred, the descriptor is not ready.
struct Transfer {
  enum class Kind { kMoved, kLater, kEnded };
  Kind kind = Kind::kLater;
  std::size_t count = 0;

  /// From the result of read, write, recv or send, with errno as they left it.
  static Transfer Of(ssize_t returned);
};

/// Pause before EndOrderly is repeated: no descriptor signals that a peer has read everything.
inline constexpr std::chrono::milliseconds kEndRetry{20};

/// Input and output of a connection. The destructor closes it.
class Stream {
 public:
  virtual ~Stream() = default;
  virtual int descriptor() const = 0;
  virtual Transfer Receive(std::span<char> space) = 0;
  virtual Transfer Send(std::string_view bytes) = 0;
  /// Like Receive, but waits some milliseconds for bytes: one system call instead of two if there is nothing
  /// else to wait for. kLater at once if that is not possible.
  virtual Transfer ReceiveWithTimeout(std::span<char> space) = 0;
  /// Prepares for closing: the peer gets everything sent and then end of stream. False if the peer must read
  /// first; try again later.
  [[nodiscard]] virtual bool EndOrderly() = 0;
  /// Prepares for closing and discards what the peer has not read.
  virtual void EndByReset() = 0;
};

/// How answers are sent on every connection.
struct Transmission {
  std::uint32_t delay_ms = 0;            // before each answer
  std::uint32_t drip_ms = 0;             // between two bytes of an answer; 0 = all at once
  std::string_view terminator = "\r\n";  // a view of a static string
};

/// The longest pause that an option or command may set.
inline constexpr std::uint32_t kMaxPauseMs = 600'000;

/// Convert between the words CRLF, CR, LF and NONE (in any case) and their bytes.
std::optional<std::string_view> TerminatorNamed(std::string_view word);
std::string_view NameOfTerminator(std::string_view terminator);

/// One received command line without its end. `too_long`: it was longer than LineSplitter::kMaxLine bytes,
/// and `text` is empty.
struct Line {
  std::string_view text;
  bool too_long = false;
};

/// Splits a byte stream into lines ended by LF, CR or CR LF, independent of packets. Bytes are received
/// directly into its fixed-size buffer, and a line is a view into it.
class LineSplitter {
 public:
  static constexpr std::size_t kMaxLine = 8192;

  /// Room for the next bytes; never empty once Next() has returned nothing. Invalidates earlier lines.
  std::span<char> Space();
  /// Adds the first `count` bytes of Space().
  void Commit(std::size_t count) { end_ += count; }
  /// The next complete line, valid until Space() is called; nothing if more bytes are needed.
  std::optional<Line> Next();

 private:
  void SkipLfOfPair();
  void KeepUnfinished();

  std::array<char, 2 * kMaxLine> buffer_;
  std::size_t begin_ = 0;
  std::size_t scanned_ = 0;
  std::size_t end_ = 0;
  bool after_cr_ = false;
  bool discarding_ = false;
};

}  // namespace kolvane::amplifier
