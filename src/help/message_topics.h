#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "help/widget_topics.h"

namespace kolvane::help {

/// The number, without its sign, in the brackets that end a failure, "… (-22)"; 0 where there is none.
int StatusIn(std::string_view text);

/// Where the help explains the message that a box shows; nothing for a text that is not one of the
/// terminal's. A failure with a status of the port library leads to that status, wherever it stands in the
/// text.
std::optional<HelpPlace> MessagePlace(std::string_view text);

/// The statuses, without their sign, that have an anchor of their own on the page of statuses: 22 is "s22".
std::span<const int> ExplainedStatuses();

}  // namespace kolvane::help
