#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kolvane::devlnk {

/// The user's ports.ini, whether it exists or not; empty if the user has no folder for it.
std::filesystem::path PortsFile();

inline constexpr std::string_view kPortsSection = "[PORTS]";

/// The value of `key` in section [PORTS] of a ports.ini text; empty if there is none. Accepts any text;
/// docs/formats/ports-ini.md has the rules.
std::string_view FindPort(std::string_view text, std::string_view key);

/// The start of the user's ports.ini, up to the size that is evaluated; empty if it cannot be read.
std::string ReadPortsFile();

/// The node or board number that the variable KOLVANE_COM1 and so on fixes for a name; empty if it is not
/// set.
std::string FixedNode(std::string_view name);

/// The device node for COM1, COM2, LPT1, LPT2, or the board number for GPIB: the fixed one, else that of
/// the user's ports.ini, else the default. Empty for any other name.
std::string NodeFor(std::string_view name);

/// The node or board number for a name if the user has not configured any.
std::string_view DefaultNode(std::string_view name);

}  // namespace kolvane::devlnk
