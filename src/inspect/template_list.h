#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kolvane::inspect {

/// A format template that can be chosen.
struct TemplateFile {
  std::string name;  ///< of the file
  std::string path;

  bool operator==(const TemplateFile&) const = default;
};

/// The files that match `*.BNS*`, case ignored: those of the user's own folder, then those of the
/// component's whose names the user's own has not, and of these the ones that come with the program last.
/// Each group is in alphabetical order. A folder that cannot be read, or is empty, has none.
std::vector<TemplateFile> ListTemplates(const std::string& user_folder, const std::string& component_folder);

/// Whether a template of that name comes with the program.
bool IsSupplied(std::string_view name);

}  // namespace kolvane::inspect
