#pragma once

#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "device/port_library.h"

namespace kolvane::device {

/// Why a file cannot be used as port library.
struct PortLibraryFailure {
  enum class Kind {
    kNoFile,          ///< no file at the path
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

/// Loads the shared object at `path`, which must export every function of PortLibrary except the optional
/// ones; it is unloaded when the returned object is destroyed.
[[nodiscard]] PortLibraryResult LoadPortLibrary(const std::string& path);

/// The folder, without a trailing separator, of the file that contains the code at `address`.
std::string FolderOfCode(const void* address);

/// Whether KOLVANE_PORT_LIBRARY names a library.
bool IsPortLibraryNamed();

/// The file named by KOLVANE_PORT_LIBRARY or, if that is not set, libdevlnk.so in `folder`.
std::string PortLibraryPath(const std::string& folder);

/// Loads PortLibraryPath(folder) on first use; after a failure each further use tries again.
class LazyPortLibrary final : public PortLibrarySource {
 public:
  explicit LazyPortLibrary(std::string folder) : folder_(std::move(folder)) {}
  PortLibrary* Library() override;
  std::string Failure() const override { return failure_; }
  void SetWaitHandler(const WaitHandler& handler) override;
  [[gnu::hot]] bool IsAttended() const override { return attended_; }

 private:
  PortLibrary* Load();

  std::string folder_;
  std::unique_ptr<PortLibrary> library_;
  std::string failure_;
  WaitHandler handler_;
  bool attended_ = false;
};

}  // namespace kolvane::device
