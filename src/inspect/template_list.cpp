#include "inspect/template_list.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/folding.h"

namespace kolvane::inspect {
namespace {

bool ComesFirst(const std::string& a, const std::string& b) {
  const std::string upper_a = base::UpperCase(a);
  const std::string upper_b = base::UpperCase(b);
  return upper_a == upper_b ? a < b : upper_a < upper_b;
}

}  // namespace

std::vector<std::string> ListTemplates(const std::string& folder) {
  namespace fs = std::filesystem;
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = entry->path().filename();
    std::error_code type_error;
    if (base::ContainsNoCase(name, ".BNS") && entry->is_regular_file(type_error))
      names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end(), ComesFirst);
  return names;
}

}  // namespace kolvane::inspect
