#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// How a run of characters looks.
struct RtfFormat {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  int half_points = 24;                ///< size, 2 to 400
  int font = 0;                        ///< number in RtfDocument::fonts; one that the table lacks is allowed
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
  std::map<int, std::string> fonts;  ///< names in UTF-8 by font number

  /// Empty for a number that the font table lacks.
  std::string_view FontName(int number) const;
  /// The text alone, each paragraph ended by "\n".
  std::string PlainText() const;
};

}  // namespace kolvane::help
