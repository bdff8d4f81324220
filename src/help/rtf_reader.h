#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// The first fault in a rich-text file.
enum class RtfFault {
  kNone,
  kNotRichText,   ///< it does not begin with {\rtf; nothing was read
  kTruncated,     ///< it ends within a group, an escape or binary data
  kBadByte,       ///< \' is not followed by two hexadecimal digits; it was left out
  kTextAfterEnd,  ///< something follows the last closing brace; it was left out
  kTooDeep,       ///< more than kRtfMaxDepth nested groups; read up to there
  kTooLarge,      ///< more than kRtfMaxPieces runs and paragraphs; read up to there
};

/// The format of a run of characters, as far as the pane can show it.
struct RtfFormat {
  bool bold = false;
  std::optional<std::uint32_t> color;  ///< 0xBBGGRR; no value: the pane's own text colour

  bool operator==(const RtfFormat&) const = default;
};

/// Text in UTF-8, never empty; "\t" is a tab, "\n" a line break within the paragraph.
struct RtfRun {
  RtfFormat format;
  std::string text;
};

struct RtfParagraph {
  std::vector<RtfRun> runs;  ///< neighbours differ in format; empty for an empty line
};

struct RtfDocument {
  std::vector<RtfParagraph> paragraphs;
  /// Only the text, each paragraph ended by "\n".
  std::string PlainText() const;
};

/// The fault in German, UTF-8, to be put after "<file>: "; empty for kNone.
std::string_view FaultText(RtfFault fault);

inline constexpr std::size_t kRtfMaxDepth = 256;
inline constexpr std::size_t kRtfMaxPieces = 200'000;

struct [[nodiscard]] RtfResult {
  RtfDocument document;  ///< what could be read, even with a fault
  RtfFault fault = RtfFault::kNone;
};

/// Reads a rich-text file; any bytes are accepted, time and memory are proportional to their number. The
/// subset is described in docs/formats/rich-text.md; anything else is skipped and is not a fault.
RtfResult ReadRtf(std::string_view bytes);

}  // namespace kolvane::help
