#pragma once

#include <string>

#include "device/port_library.h"

namespace kolvane::device {

/// Where the device operations get the port library from, at each use.
class PortLibrarySource {
 public:
  virtual ~PortLibrarySource() = default;
  /// Null when there is none to be had; Failure() says why then.
  virtual PortLibrary* Library() = 0;
  /// German sentence for the user; empty after a Library() that was not null.
  virtual std::string Failure() const = 0;
};

}  // namespace kolvane::device
