#pragma once

#include <string>
#include <vector>

namespace kolvane::inspect {

/// The names of the files in `folder` that match `*.BNS*`, letter case ignored, in alphabetical order. A
/// folder that cannot be read has none.
std::vector<std::string> ListTemplates(const std::string& folder);

}  // namespace kolvane::inspect
