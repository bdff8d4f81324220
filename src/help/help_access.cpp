#include "help/help_access.h"

#include <utility>

namespace kolvane::help {

HelpAccess::HelpAccess(HelpViewer& viewer, std::function<std::string()> default_file)
    : viewer_(viewer), default_file_(std::move(default_file)) {}

void HelpAccess::ShowHelp(std::int32_t number, const std::string& path) {
  viewer_.ShowPlace(path.empty() ? default_file_() : path, {static_cast<std::uint32_t>(number), {}});
}

}  // namespace kolvane::help
