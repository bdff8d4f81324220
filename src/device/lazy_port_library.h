#pragma once

#include <memory>
#include <string>
#include <utility>

#include "device/port_library_source.h"

namespace kolvane::device {

/// The folder, without a separator at its end, of the file whose code `address` lies in.
std::string FolderOfCode(const void* address);

/// Whether KOLVANE_PORT_LIBRARY names a library.
bool IsPortLibraryNamed();

/// The file named by KOLVANE_PORT_LIBRARY, or libdevlnk.so in `folder` where that is not set.
std::string PortLibraryPath(const std::string& folder);

/// Loads PortLibraryPath(folder) at first use; after a failure each further use tries again.
class LazyPortLibrary final : public PortLibrarySource {
 public:
  explicit LazyPortLibrary(std::string folder) : folder_(std::move(folder)) {}
  PortLibrary* Library() override;
  std::string Failure() const override { return failure_; }

 private:
  std::string folder_;
  std::unique_ptr<PortLibrary> library_;
  std::string failure_;
};

}  // namespace kolvane::device
