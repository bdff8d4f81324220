#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "help/widget_topics.h"

namespace kolvane::help {

/// The number, without its sign, in the brackets at the end of a failure, "… (-22)"; 0 if there is none.
int StatusIn(std::string_view text);

/// Where the help explains the message of a box; no value for a text that is not one of the terminal's. A
/// failed connect or disconnect that ends in a status of the port library leads to that status.
std::optional<HelpPlace> MessagePlace(std::string_view text);

/// The statuses, without their sign, that have an anchor on the page of statuses: "s22" for 22.
std::span<const int> ExplainedStatuses();

}  // namespace kolvane::help
