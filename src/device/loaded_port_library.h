#pragma once

#include <memory>
#include <string>
#include <variant>

#include "device/port_library.h"

namespace kolvane::device {

/// Why a file cannot serve as port library.
struct PortLibraryFailure {
  enum class Kind {
    kNoFile,          ///< nothing stands at the path
    kNotLoadable,     ///< detail: the system's reason
    kMissingFunction  ///< detail: the function's name
  };
  Kind kind;
  std::string path;
  std::string detail;
};

/// "Die Portbibliothek „/path/lib.so“ kann nicht benutzt werden: Funktion QDX_ReadPort fehlt."
std::string FailureText(const PortLibraryFailure& failure);

using PortLibraryResult = std::variant<std::unique_ptr<PortLibrary>, PortLibraryFailure>;

/// Loads the shared object at `path`, which must export every function of PortLibrary but the optional ones;
/// it is unloaded with the object that is returned.
[[nodiscard]] PortLibraryResult LoadPortLibrary(const std::string& path);

}  // namespace kolvane::device
