#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "help/rtf_reader.h"

namespace kolvane::help {

/// A paragraph of the reference of the $ commands, with what only its source shows.
struct ReferenceParagraph {
  RtfParagraph text;
  bool example_row = false;  ///< a row of a command list, in the font of rows and nothing else
};

inline std::vector<ReferenceParagraph> ReferenceParagraphs(const std::string& source) {
  constexpr std::string_view kStart = "\\pard\\li360\\plain\\f1\\fs20";
  constexpr std::string_view kEnd = "\\par\n";
  const std::string tables = source.substr(0, source.find("\\pard"));
  std::vector<ReferenceParagraph> paragraphs;
  std::size_t at = tables.size();
  for (std::size_t end; (end = source.find(kEnd, at)) != std::string::npos; at = end + kEnd.size()) {
    const std::string own = source.substr(at, end - at);
    const RtfDocument document = ReadRtf(tables + own + "}").document;
    const bool row = own.starts_with(kStart) && own.find('{') == std::string::npos;
    paragraphs.push_back({document.paragraphs.empty() ? RtfParagraph() : document.paragraphs.front(), row});
  }
  return paragraphs;
}

}  // namespace kolvane::help
