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

/// What a transfer brought about. kLater: nothing moved, the descriptor is not ready.
struct Transfer {
  enum class Kind { kMoved, kLater, kEnded };
  Kind kind = Kind::kLater;
  std::size_t count = 0;

  /// What read, write, recv or send has returned, errno as it left it.
  static Transfer Of(ssize_t returned);
};

/// When EndOrderly is tried again: no descriptor reports that a peer has read everything.
inline constexpr std::chrono::milliseconds kEndRetry{20};

/// A connection's way in and out. Closing is the destructor's business.
class Stream {
 public:
  virtual ~Stream() = default;
  virtual int descriptor() const = 0;
  virtual Transfer Receive(std::span<char> space) = 0;
  virtual Transfer Send(std::string_view bytes) = 0;
  /// As Receive, but sleeps for some milliseconds until bytes are there: one system call instead of two where
  /// there is nothing else to wait for. kLater at once where that is not possible.
  virtual Transfer ReceivePatiently(std::span<char> space) = 0;
  /// Prepares for closing: the peer gets all that was sent and then an end of stream. False: the peer has to
  /// read first, to be tried again after a while.
  [[nodiscard]] virtual bool EndOrderly() = 0;
  /// Prepares for closing without regard to what the peer has not read.
  virtual void EndByReset() = 0;
};

/// How answers go out on every connection.
struct Transmission {
  std::uint32_t delay_ms = 0;            // before each answer
  std::uint32_t drip_ms = 0;             // between two bytes of an answer; 0 = all at once
  std::string_view terminator = "\r\n";  // of static duration
};

/// The longest pause that any option or command may ask for.
inline constexpr std::uint32_t kMaxPauseMs = 600'000;

/// Between the words CRLF, CR, LF and NONE (case disregarded) and the bytes they stand for.
std::optional<std::string_view> TerminatorNamed(std::string_view word);
std::string_view NameOfTerminator(std::string_view terminator);

/// One received command line without its end. `too_long`: it had more than LineSplitter::kMaxLine bytes, and
/// `text` is empty.
struct Line {
  std::string_view text;
  bool too_long = false;
};

/// Cuts a byte stream into lines ended by LF, CR or CR LF, whatever packets they come in. The bytes are
/// received straight into its buffer of fixed size, and a line is a view into it.
class LineSplitter {
 public:
  static constexpr std::size_t kMaxLine = 8192;

  /// Where the next bytes are to be received; never empty once Next() has returned nothing. Ends the life of
  /// earlier lines.
  std::span<char> Space();
  /// Takes over the first `count` bytes of Space().
  void Commit(std::size_t count) { end_ += count; }
  /// The next complete line, valid until Space() is called; nothing when more bytes are needed.
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
