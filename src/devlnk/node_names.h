#pragma once

#include <string>
#include <string_view>

namespace kolvane::devlnk {

/// The value of `key` in section [PORTS] of the text of a ports.ini; empty when there is none. Takes any text
/// whatever; docs/formats/ports-ini.md has the rules.
std::string_view FindPort(std::string_view text, std::string_view key);

/// The start of the user's ports.ini, as much of it as counts; empty when it cannot be read.
std::string ReadPortsFile();

/// What stands for COM1, COM2, LPT1, LPT2 (device nodes) or GPIB (board number) on this system: the variable
/// KOLVANE_COM1 and so on, else the user's ports.ini, else the default. Empty for any other name.
std::string NodeFor(std::string_view name);

/// What stands for it where the user has not said otherwise.
std::string_view DefaultNode(std::string_view name);

}  // namespace kolvane::devlnk
