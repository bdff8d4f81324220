#pragma once

#include <string>
#include <string_view>

namespace kolvane::devlnk {

/// The value of `key` in section [PORTS] of the text of a ports.ini; empty when there is none. Takes any text
/// whatever; docs/formats/ports-ini.md has the rules.
std::string_view FindPort(std::string_view text, std::string_view key);

/// The start of the user's ports.ini, as much of it as counts; empty when there is none to be read.
std::string ReadPortsFile();

}  // namespace kolvane::devlnk
