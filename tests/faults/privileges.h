#pragma once

#include <cstdlib>

#include "app/program.h"

namespace kolvane::faults {

/// The arguments that make a program run as nobody.
inline const std::vector<std::string> kAsNobody = {"setpriv", "--reuid", "65534",
                                                   "--regid", "65534",   "--clear-groups"};

/// The user nobody can run the program only if all users may enter its folder.
inline bool CanRunAsNobody() { return app::RunProgram({"--version"}, {.wrapper = kAsNobody}).status == 0; }
inline constexpr char kCannotRunAsNobody[] = "the program cannot run as another user here";

inline bool CanMount() { return std::system("unshare -m true 2>/dev/null") == 0; }
inline constexpr char kCannotMount[] = "file systems cannot be mounted here";

}  // namespace kolvane::faults
