#include "help/rtf_document.h"

namespace kolvane::help {

std::string RtfDocument::PlainText() const {
  std::string text;
  for (const RtfParagraph& paragraph : paragraphs) {
    for (const RtfRun& run : paragraph.runs) text += run.text;
    text += '\n';
  }
  return text;
}

}  // namespace kolvane::help
