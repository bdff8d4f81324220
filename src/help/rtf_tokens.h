#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

enum class RtfMeaning {
  kUnknown,  ///< skipped, but its group is read
  kSkip,     ///< the rest of its group is not text of the document
  kColorTable,
  kBold,
  kColor,
  kPlain,
  kParagraph,
  kInsert,  ///< stands for `text`
  kUnicode,
  kFallbackLength,
  kRed,
  kGreen,
  kBlue,
};

/// Collects the colour table, at most kMaxEntries entries. An entry without components is the pane's own
/// colour.
class RtfColorTable {
 public:
  static constexpr std::size_t kMaxEntries = 256;

  /// Components are clamped to 0 to 255.
  void Apply(RtfMeaning meaning, std::int32_t parameter);
  /// A ";" ends an entry.
  void AddText(std::string_view text);
  /// 0xBBGGRR; no value for the pane's own colour and for an index outside the table.
  std::optional<std::uint32_t> At(std::int32_t index) const;

 private:
  void SetComponent(unsigned shift, std::int32_t value);

  std::vector<std::optional<std::uint32_t>> colors_;
  std::optional<std::uint32_t> entry_;
};

/// Combines the numbers of \u: one gives a character, or two the halves of a surrogate pair.
class RtfUnicode {
 public:
  /// The UTF-8 that `number` completes; empty for a first half and for control characters. Negative numbers
  /// count down from 65536; an invalid character becomes U+FFFD.
  std::string Add(std::int32_t number);

  /// U+FFFD if a first half was left without its second, else empty; to be called before any other text.
  std::string Flush();

 private:
  char32_t first_half_ = 0;
};

struct RtfWord {
  std::string_view name;
  RtfMeaning meaning = RtfMeaning::kUnknown;
  std::string_view text = {};  ///< UTF-8
};

/// The meaning of a control word; names are case-sensitive.
RtfWord FindRtfWord(std::string_view name);

/// The same for the byte after the backslash of a control symbol.
RtfWord FindRtfSymbol(std::string_view byte);

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

/// Splits the bytes of a rich-text file into tokens, looking at each byte once. Line ends and control bytes,
/// including NUL, are skipped. Tokens point into the bytes.
class RtfTokens {
 public:
  explicit RtfTokens(std::string_view bytes) : bytes_(bytes) {}

  /// After kEnd or kTruncated it returns kEnd.
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
