#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// The first thing that was wrong with a rich-text file.
enum class RtfFault {
  kNone,
  kNotRichText,   ///< it does not begin with {\rtf; nothing was read
  kTruncated,     ///< it ends inside a group, an escape or binary data
  kBadByte,       ///< \' is not followed by two hexadecimal digits; those \' were left out
  kTextAfterEnd,  ///< something follows the last closing brace; it was left out
  kTooDeep,       ///< more than kRtfDeepest groups inside each other; read up to there
  kTooLarge,      ///< more than kRtfMostPieces runs and paragraphs; read up to there
};

/// How a run of characters looks, as far as the pane can show it.
struct RtfFormat {
  bool bold = false;
  std::optional<std::uint32_t> color;  ///< 0xBBGGRR; nothing = the pane's own text colour

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

/// The fault in German, UTF-8, to follow "<file>: "; empty for kNone.
std::string_view FaultText(RtfFault fault);

inline constexpr std::size_t kRtfDeepest = 256;
inline constexpr std::size_t kRtfMostPieces = 200'000;

struct [[nodiscard]] RtfResult {
  RtfDocument document;  ///< what could be read, also with a fault
  RtfFault fault = RtfFault::kNone;
};

/// Reads the bytes of a rich-text file, whatever they are, in time and memory proportional to their number.
/// The subset is described in docs/formats/rich-text.md; what lies outside is skipped and no fault.
RtfResult ReadRtf(std::string_view bytes);

}  // namespace kolvane::help
