// Compiled help files: whatever the bytes, every request of the viewer returns.
#include "help/help_file.h"

#include "fuzz/require.h"

namespace kolvane::fuzz {
namespace {

constexpr std::size_t kMaxPages = 4;

void Check(const help::HelpFile& file) {
  const std::string start = file.StartPage();
  Require(start.empty() || file.Has(start));
  for (const std::uint32_t topic : {0u, 1u, 2u, 100u}) {
    const std::string page = file.TopicPage(topic);
    Require(page.empty() || file.Has(page));
  }
  std::size_t pages = 0;
  for (const help::ContentsEntry& entry : file.contents()) {
    if (++pages > kMaxPages) break;
    Require(entry.page.empty() || !file.Title(entry.page).empty());
    Require(!file.Has(entry.page) || file.Page(entry.page).size() <= 2 * help::ChmArchive::kMaxObject);
  }
  for (const help::SearchHit& hit : file.Search("a")) Require(file.Has(hit.page));
  Require(file.Search("").empty());
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  if (const auto file = help::HelpFile::FromBytes({reinterpret_cast<const char*>(data), size}))
    fuzz::Check(*file);
  return 0;
}
