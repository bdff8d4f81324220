#pragma once

#include <string>
#include <vector>

#include "kolvane/ListCheck.h"
#include "kolvane/Ports.h"

namespace kolvane::app {

/// One line per finding: "FILE:ROW: Fehler: TEXT" or "FILE:ROW: Hinweis: TEXT".
std::string FindingLines(const std::vector<CheckedCommandList>& lists);

/// The exit status of `kolvane check`: 0 no errors, 1 at least one, 2 a file cannot be read.
int CheckStatus(const std::vector<CheckedCommandList>& lists);

/// One line per port: RESOURCE, device node and description in columns separated by two spaces; "-" for a
/// missing entry.
std::string PortTable(const std::vector<Port>& ports);

}  // namespace kolvane::app
