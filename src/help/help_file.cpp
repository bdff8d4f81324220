#include "help/help_file.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "base/files.h"
#include "base/text.h"
#include "help/contents.h"
#include "help/html.h"
#include "help/topics.h"

namespace kolvane::help {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMaxFile = std::uintmax_t{128} << 20;
constexpr std::size_t kMaxPages = 5'000;

std::string ObjectPath(std::string_view path) { return "/" + std::string(path); }

bool EndsWithNoCase(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && base::EqualsNoCase(text.substr(text.size() - end.size()), end);
}

bool IsPage(std::string_view path) { return EndsWithNoCase(path, ".html") || EndsWithNoCase(path, ".htm"); }

std::string_view TailAfter(std::string_view path) {
  const std::size_t separator = path.find_first_of("/\\");
  return separator == std::string_view::npos ? std::string_view() : path.substr(separator + 1);
}

// The compiler notes a page by its path in the build: finds the longest tail of it that is in the file.
std::string ResolveTail(const ChmArchive& archive, std::string_view noted) {
  for (; !noted.empty(); noted = TailAfter(noted)) {
    if (archive.Has(ObjectPath(noted))) return std::string(noted);
  }
  return {};
}

}  // namespace

HelpFile::HelpFile(std::unique_ptr<ChmArchive> archive)
    : archive_(std::move(archive)),
      topics_(ReadTopicTable(archive_->Read("/#IVB"), archive_->Read("/#STRINGS"))),
      contents_(ParseContents(Page(ContentsFile()))) {}

std::unique_ptr<HelpFile> HelpFile::Open(const std::string& path) {
  std::error_code error;
  if (fs::file_size(path, error) > kMaxFile || error) return nullptr;
  std::string bytes;
  if (base::ReadFile(path, bytes) != 0) return nullptr;
  return FromBytes(std::move(bytes));
}

std::unique_ptr<HelpFile> HelpFile::FromBytes(std::string bytes) {
  auto archive = ChmArchive::Open(std::move(bytes));
  return archive == nullptr ? nullptr : std::unique_ptr<HelpFile>(new HelpFile(std::move(archive)));
}

std::string HelpFile::ContentsFile() const {
  const std::vector<std::string>& paths = archive_->paths();
  const auto found =
      std::ranges::find_if(paths, [](const std::string& path) { return EndsWithNoCase(path, ".hhc"); });
  return found == paths.end() ? std::string() : found->substr(1);
}

std::string HelpFile::TopicPage(std::uint32_t topic) const {
  const auto found = topics_.find(topic);
  return found == topics_.end() ? std::string() : ResolveTail(*archive_, found->second);
}

std::string HelpFile::StartPage() const {
  if (std::string page = TopicPage(kStartTopic); !page.empty()) return page;
  const auto entry =
      std::ranges::find_if(contents_, [this](const ContentsEntry& one) { return Has(one.page); });
  if (entry != contents_.end()) return entry->page;
  const std::vector<std::string> pages = PagePaths();
  return pages.empty() ? std::string() : pages.front();
}

std::string HelpFile::Page(std::string_view path) const { return AsUtf8(Bytes(path)); }

std::string HelpFile::Bytes(std::string_view path) const { return archive_->Read(ObjectPath(path)); }

bool HelpFile::Has(std::string_view path) const { return !path.empty() && archive_->Has(ObjectPath(path)); }

std::string HelpFile::Title(const std::string& path) const {
  const auto entry = std::ranges::find_if(
      contents_, [&path](const ContentsEntry& one) { return base::EqualsNoCase(one.page, path); });
  if (entry != contents_.end()) return entry->title;
  const std::string title = ReadPageText(Page(path)).title;
  return title.empty() ? path : title;
}

// In the order of the contents, then the pages missing there; each only once, whatever the case of its path.
std::vector<std::string> HelpFile::PagePaths() const {
  std::vector<std::string> pages;
  std::unordered_set<std::string> known;
  const auto add = [&](const std::string& path) {
    if (pages.size() < kMaxPages && known.insert(base::UpperCase(path)).second) pages.push_back(path);
  };
  for (const ContentsEntry& entry : contents_) {
    if (Has(entry.page)) add(entry.page);
  }
  for (const std::string& path : archive_->paths()) {
    if (IsPage(path)) add(path.substr(1));
  }
  return pages;
}

void HelpFile::BuildIndex() const {
  index_.emplace();
  for (const std::string& path : PagePaths()) {
    const std::string html = Page(path);
    if (html.empty()) continue;
    const PageText page = ReadPageText(html);
    index_->Add({Title(path), path}, page.text, page.key_words);
  }
}

std::vector<SearchHit> HelpFile::Search(std::string_view words) const {
  if (!index_) BuildIndex();
  return index_->Find(words);
}

std::shared_ptr<const HelpFile> HelpFileCache::Get(const std::string& path) {
  std::error_code error;
  Version version{path, std::filesystem::file_size(path, error), {}};
  if (error) return nullptr;
  version.time = std::filesystem::last_write_time(path, error);
  if (error) return nullptr;
  if (file_ != nullptr && version == version_) return file_;
  std::shared_ptr<const HelpFile> file = HelpFile::Open(path);
  if (file == nullptr || file->StartPage().empty()) return nullptr;
  version_ = std::move(version);
  return file_ = std::move(file);
}

}  // namespace kolvane::help
