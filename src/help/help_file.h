#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "help/chm_archive.h"
#include "help/contents.h"

namespace kolvane::help {

/// The help file beside the component.
inline constexpr char kHelpFileName[] = "Terminal.chm";

/// A compiled help file: pages by number or path, contents and search. Paths have no leading '/'. What can be
/// read of a damaged file is available; every failure gives an empty result.
class HelpFile {
 public:
  /// Null if the file is missing or not a help file.
  static std::unique_ptr<HelpFile> Open(const std::string& path);
  static std::unique_ptr<HelpFile> FromBytes(std::string bytes);

  /// The page of a numeric topic.
  std::string TopicPage(std::uint32_t topic) const;
  /// Topic 1, else the first entry of the contents that has a page, else the first page of the file.
  std::string StartPage() const;

  /// A page's HTML as UTF-8.
  std::string Page(std::string_view path) const;
  /// The bytes of any object.
  std::string Bytes(std::string_view path) const;
  bool Has(std::string_view path) const;

  const std::vector<ContentsEntry>& contents() const { return contents_; }
  /// The page's title in the contents, else its own, else its path.
  std::string Title(const std::string& path) const;

  /// The pages that contain every word of `words`, see PageIndex. The first call reads all pages.
  std::vector<SearchHit> Search(std::string_view words) const;

 private:
  explicit HelpFile(std::unique_ptr<ChmArchive> archive);

  std::vector<std::string> PagePaths() const;
  std::string ContentsFile() const;
  void BuildIndex() const;

  std::unique_ptr<ChmArchive> archive_;
  std::map<std::uint32_t, std::string> topics_;
  std::vector<ContentsEntry> contents_;
  mutable std::optional<PageIndex> index_;
};

/// Keeps the help file read last, and reads it again if it has changed.
class HelpFileCache {
 public:
  /// Null if the file is missing or damaged; the one read before is kept then.
  std::shared_ptr<const HelpFile> Get(const std::string& path);

 private:
  struct Version {
    std::string path;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;

    bool operator==(const Version&) const = default;
  };

  Version version_;
  std::shared_ptr<const HelpFile> file_;
};

}  // namespace kolvane::help
