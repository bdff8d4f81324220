#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace kolvane::help {

/// The numeric topics of a help file: number to the page's path as the compiler noted it, without an anchor,
/// from the bytes of the objects #IVB (pairs of number and place) and #STRINGS (texts ended by NUL). Pairs
/// that point nowhere are left out, as are paths of more than 1024 bytes: many pairs may share one.
std::map<std::uint32_t, std::string> ReadTopicTable(std::string_view ivb, std::string_view strings);

}  // namespace kolvane::help
