#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kolvane::help {

struct RtfToken {
  enum class Kind {
    kOpen,       ///< {
    kClose,      ///< }
    kText,       ///< `text`: bytes that stand for themselves
    kWord,       ///< `text` is the control word, `parameter` its number
    kSymbol,     ///< `text` is the one byte after the backslash
    kByte,       ///< `text` is the two digits of \'hh, `parameter` the byte
    kBadByte,    ///< \' without two hexadecimal digits
    kBinary,     ///< \bin and its bytes, skipped
    kEnd,        ///< the end of the file
    kTruncated,  ///< the file ends after a backslash, in \'hh or in binary data
  };

  Kind kind = Kind::kEnd;
  std::string_view text = {};
  std::optional<std::int32_t> parameter = {};
};

/// Cuts the bytes of a rich-text file into tokens, each byte looked at once. Line ends and control bytes, NUL
/// among them, are skipped. Tokens point into the bytes.
class RtfTokens {
 public:
  explicit RtfTokens(std::string_view bytes) : bytes_(bytes) {}

  /// After kEnd and kTruncated comes kEnd.
  RtfToken Next();

 private:
  bool AtEnd() const { return at_ >= bytes_.size(); }
  void SkipControlBytes();
  RtfToken Text();
  RtfToken Control();
  RtfToken Word();
  RtfToken Byte();
  RtfToken Binary(std::int32_t count);
  std::optional<std::int32_t> Parameter();
  RtfToken Truncated();

  std::string_view bytes_;
  std::size_t at_ = 0;
};

}  // namespace kolvane::help
