// Format templates, run on a dump: every field line yields at most one line, whatever it contains.
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "inspect/hex_dump.h"
#include "inspect/template_texts.h"

namespace kolvane::fuzz {
namespace {

constexpr std::size_t kBytes = 300;

/// A dump of more bytes than the buffer holds.
const std::string& Dump() {
  static const std::string dump = [] {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string marked;
    for (std::size_t i = 0; i < kBytes; ++i) marked += {'<', kDigits[i / 16 % 16], kDigits[i % 16], '>'};
    return inspect::BuildDump(marked);
  }();
  return dump;
}

std::size_t LinesOf(std::string_view file) {
  std::size_t lines = 1;
  for (const char c : file) lines += c == '\r' || c == '\n';
  return lines;
}

}  // namespace
}  // namespace kolvane::fuzz

/// Byte order and caret, then the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  fuzz::Input input(data, size);
  const bool network_order = input.Byte() % 2 != 0;
  inspect::DumpView view{fuzz::Dump()};
  view.MoveTo(view.Length() * input.Byte() / 255);
  inspect::ByteBuffer buffer{};
  const auto lines = inspect::TemplateTexts(input.Rest(), {network_order, ","}, view, buffer);
  fuzz::Require(lines.size() <= fuzz::LinesOf(input.Rest()));
  for (const std::string& line : lines) {
    fuzz::Require(line.find('=') != std::string::npos);
    fuzz::Require(line.size() <= input.Rest().size() + buffer.size() + 40);
  }
  fuzz::Require(view.caret >= 0 && view.selected >= 0 && view.caret + view.selected <= view.Length());
  return 0;
}
