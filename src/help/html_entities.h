#pragma once

#include <cstdint>
#include <string_view>

namespace kolvane::help {

/// The character that an entity stands for, by its name without '&' and ';' ("auml", "#228", "#xE4"); 0 for
/// one that is not known.
std::uint32_t EntityCharacter(std::string_view name);

}  // namespace kolvane::help
