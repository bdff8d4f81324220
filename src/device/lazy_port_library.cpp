#include "device/lazy_port_library.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "device/loaded_port_library.h"

namespace kolvane::device {
namespace {

constexpr char kVariable[] = "KOLVANE_PORT_LIBRARY";

}  // namespace

std::string FolderOfCode(const void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return ".";
  std::error_code error;
  const std::filesystem::path file = std::filesystem::canonical(info.dli_fname, error);
  // A program found along PATH is known by its bare name alone.
  if (error) return std::filesystem::canonical("/proc/self/exe", error).parent_path();
  return file.parent_path();
}

bool IsPortLibraryNamed() {
  const char* chosen = std::getenv(kVariable);
  return chosen != nullptr && *chosen != '\0';
}

std::string PortLibraryPath(const std::string& folder) {
  return IsPortLibraryNamed() ? std::getenv(kVariable) : folder + "/libdevlnk.so";
}

PortLibrary* LazyPortLibrary::Library() {
  if (library_ != nullptr) return library_.get();
  PortLibraryResult result = LoadPortLibrary(PortLibraryPath(folder_));
  if (const auto* failure = std::get_if<PortLibraryFailure>(&result)) {
    failure_ = FailureText(*failure);
    return nullptr;
  }
  failure_.clear();
  library_ = std::move(std::get<std::unique_ptr<PortLibrary>>(result));
  return library_.get();
}

}  // namespace kolvane::device
