#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "help/help_file.h"

namespace kolvane::help {

/// Keeps the help file that was read last, and reads it anew when it has changed.
class HelpFileCache {
 public:
  /// Null where the file is missing or damaged; what was read before is kept then.
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
