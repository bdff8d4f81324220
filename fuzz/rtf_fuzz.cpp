// Rich-text files.
#include "fuzz/require.h"
#include "fuzz/utf8.h"
#include "help/rtf_reader.h"

namespace kolvane::fuzz {
namespace {

std::size_t CheckParagraph(const help::RtfParagraph& paragraph) {
  const help::RtfFormat* before = nullptr;
  for (const help::RtfRun& run : paragraph.runs) {
    Require(!run.text.empty() && IsUtf8(run.text));
    Require(!run.format.color || *run.format.color <= 0xFFFFFF);
    Require(before == nullptr || !(*before == run.format));
    before = &run.format;
  }
  return 1 + paragraph.runs.size();
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  const help::RtfResult result = help::ReadRtf({reinterpret_cast<const char*>(data), size});
  std::size_t pieces = 0;
  for (const help::RtfParagraph& paragraph : result.document.paragraphs)
    pieces += fuzz::CheckParagraph(paragraph);
  fuzz::Require(pieces <= help::kRtfMaxPieces + 1);
  fuzz::Require(result.document.PlainText().size() <= 3 * size + 1);
  fuzz::Require(result.fault != help::RtfFault::kNotRichText || pieces == 0);
  fuzz::Require((result.fault == help::RtfFault::kNone) == help::FaultText(result.fault).empty());
  return 0;
}
