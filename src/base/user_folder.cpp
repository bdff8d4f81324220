#include "base/user_folder.h"

#include <cstdlib>

namespace kolvane::base {

std::filesystem::path UserFolder(const char* variable, const char* below_home) {
  namespace fs = std::filesystem;
  constexpr auto kOwn = "Kolvane";
  const char* named = std::getenv(variable);
  if (named != nullptr && fs::path(named).is_absolute()) return fs::path(named) / kOwn;
  const char* home = std::getenv("HOME");
  if (home == nullptr || !fs::path(home).is_absolute()) return {};
  return fs::path(home) / below_home / kOwn;
}

}  // namespace kolvane::base
