// The contents of a help file: pages, the table of contents and the table of topics.
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "help/contents.h"
#include "help/html.h"

namespace kolvane::fuzz {
namespace {

void RequireCollapsed(std::string_view text) {
  Require(!text.starts_with(' ') && !text.ends_with(' '));
  Require(text.find("  ") == std::string_view::npos &&
          text.find_first_of("\r\n\t") == std::string_view::npos);
}

/// Each step consumes something, and a piece's text is part of what was consumed.
void CheckPieces(std::string_view html) {
  for (std::string_view rest = html; !rest.empty();) {
    const std::size_t before = rest.size();
    const auto piece = help::TakePiece(rest);
    Require(rest.size() < before);
    if (!piece) return Require(rest.empty());
    Require(piece->text.size() + piece->name.size() <= before);
    if (piece->is_tag) Require(help::Attribute(piece->text, "value").size() <= 4 * before);
  }
}

void CheckContents(std::string_view html) {
  int before = -1;
  for (const help::ContentsEntry& entry : help::ParseContents(html)) {
    Require(entry.level >= 0 && entry.level <= before + 1);
    Require(!entry.title.empty() && !entry.page.starts_with('/'));
    before = entry.level;
  }
}

void CheckTopics(Input input) {
  const std::string_view ivb = input.Take(input.Byte());
  const std::string_view strings = input.Rest();
  for (const auto& [topic, page] : help::ReadTopicTable(ivb, strings))
    Require(!page.empty() && strings.find(page) != std::string_view::npos);
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  const std::string html = help::AsUtf8({reinterpret_cast<const char*>(data), size});
  const help::PageText page = help::ReadPageText(html);
  fuzz::RequireCollapsed(page.text);
  fuzz::RequireCollapsed(page.title);
  fuzz::CheckPieces(html);
  fuzz::CheckContents(html);
  fuzz::CheckTopics({data, size});
  return 0;
}
