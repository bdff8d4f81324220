#pragma once

#include <string>

namespace kolvane::component {

/// The folder of the file that this code was loaded from, without a trailing separator.
std::string OwnFolder();

/// The component's folder: `chosen` if not empty, else the environment variable KOLVANE_FOLDER, else
/// OwnFolder(). Without a trailing separator.
std::string ComponentFolder(const std::string& chosen);

}  // namespace kolvane::component
