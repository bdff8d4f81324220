#pragma once

#include <string_view>

#include "help/rtf_reader.h"

namespace kolvane::help {

/// The fault in German, UTF-8, to follow "<file>: "; empty for kNone.
std::string_view FaultText(RtfFault fault);

}  // namespace kolvane::help
