#include "help/help_file_cache.h"

#include <system_error>
#include <utility>

namespace kolvane::help {

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
