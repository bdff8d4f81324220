#pragma once

#include <string>
#include <string_view>

namespace kolvane::devlnk {

/// What stands for COM1, COM2, LPT1, LPT2 (device nodes) or GPIB (board number) on this system: the variable
/// KOLVANE_COM1 and so on, else the user's ports.ini, else the default. Empty for any other name.
std::string NodeFor(std::string_view name);

/// What stands for it where the user has not said otherwise.
std::string_view DefaultNode(std::string_view name);

}  // namespace kolvane::devlnk
