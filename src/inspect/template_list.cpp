#include "inspect/template_list.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/text.h"

namespace kolvane::inspect {
namespace {

constexpr std::string_view kSupplied[] = {"KVA-1-KOPF.BNS", "KVA-2-INT16.BNS", "KVA-3-FLOAT32.BNS"};

bool ComesFirst(const TemplateFile& a, const TemplateFile& b) {
  const std::string upper_a = base::UpperCase(a.name);
  const std::string upper_b = base::UpperCase(b.name);
  return upper_a == upper_b ? a.name < b.name : upper_a < upper_b;
}

std::vector<TemplateFile> TemplatesIn(const std::string& folder) {
  namespace fs = std::filesystem;
  std::vector<TemplateFile> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename();
    std::error_code type_error;
    if (base::ContainsNoCase(name, ".BNS") && entry->is_regular_file(type_error))
      files.push_back({name, entry->path()});
  }
  std::sort(files.begin(), files.end(), ComesFirst);
  return files;
}

bool Has(const std::vector<TemplateFile>& files, std::string_view name) {
  return std::ranges::any_of(
      files, [name](const TemplateFile& file) { return base::EqualsNoCase(file.name, name); });
}

}  // namespace

bool IsSupplied(std::string_view name) {
  return std::ranges::any_of(kSupplied,
                             [name](std::string_view own) { return base::EqualsNoCase(own, name); });
}

std::vector<TemplateFile> ListTemplates(const std::string& user_folder, const std::string& component_folder) {
  std::vector<TemplateFile> files = TemplatesIn(user_folder);
  std::vector<TemplateFile> others = TemplatesIn(component_folder);
  std::erase_if(others, [&files](const TemplateFile& file) { return Has(files, file.name); });
  std::stable_partition(others.begin(), others.end(),
                        [](const TemplateFile& file) { return !IsSupplied(file.name); });
  files.insert(files.end(), others.begin(), others.end());
  return files;
}

}  // namespace kolvane::inspect
