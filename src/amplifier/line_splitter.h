#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace kolvane::amplifier {

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
