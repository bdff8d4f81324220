#pragma once

#include <string_view>

/// What the inspector tells the user.
namespace kolvane::inspect::texts {

inline constexpr std::string_view kNothingMarked =
    "Bitte markieren Sie einen Binärdatenblock, den Sie analysieren möchten.";

}  // namespace kolvane::inspect::texts
