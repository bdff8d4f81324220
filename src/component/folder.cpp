#include "component/folder.h"

#include <cstdlib>

#include "device/loaded_port_library.h"

namespace kolvane::component {

std::string OwnFolder() { return device::FolderOfCode(reinterpret_cast<const void*>(&OwnFolder)); }

std::string ComponentFolder(const std::string& chosen) {
  std::string folder = chosen;
  if (const char* named = std::getenv("KOLVANE_FOLDER"); folder.empty() && named != nullptr) folder = named;
  if (folder.empty()) return OwnFolder();
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

}  // namespace kolvane::component
