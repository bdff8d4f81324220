#pragma once

#include <string>

namespace kolvane::component {

/// The folder of the file that this code was loaded from, without a separator at its end.
std::string OwnFolder();

/// The component's folder: `chosen` where it is not empty, else the environment variable KOLVANE_FOLDER, else
/// OwnFolder(). Without a separator at its end.
std::string ComponentFolder(const std::string& chosen);

}  // namespace kolvane::component
