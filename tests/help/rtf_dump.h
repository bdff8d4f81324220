#pragma once

#include <cstdio>
#include <string>

#include "help/rtf_reader.h"

namespace kolvane::help {

/// A document as one line: each run as marks and text in brackets, each paragraph ended by "/". Marks: b for
/// bold, # and the colour as BBGGRR.
inline std::string Dump(const RtfDocument& document) {
  std::string out;
  for (const RtfParagraph& paragraph : document.paragraphs) {
    for (const auto& [format, text] : paragraph.runs) {
      if (format.bold) out += 'b';
      if (format.color) {
        char digits[8];
        std::snprintf(digits, sizeof digits, "#%06X", *format.color);
        out += digits;
      }
      out += '[' + text + ']';
    }
    out += '/';
  }
  return out;
}

/// The dump of `body` as the content of a file; its fault before it, if there is one.
inline std::string Read(const std::string& body) {
  const RtfResult result = ReadRtf("{\\rtf1\\ansi " + body + "}");
  const std::string fault =
      result.fault == RtfFault::kNone ? "" : "fault " + std::to_string(static_cast<int>(result.fault)) + ": ";
  return fault + Dump(result.document);
}

}  // namespace kolvane::help
