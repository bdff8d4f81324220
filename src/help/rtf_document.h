#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kolvane::help {

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
  /// The text alone, each paragraph ended by "\n".
  std::string PlainText() const;
};

}  // namespace kolvane::help
