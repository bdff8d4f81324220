#pragma once

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>
#include <vector>

namespace kolvane::script {

/// The golden lists' names, without folder and suffix, sorted.
inline std::vector<std::string> ListNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(KOLVANE_TEST_LISTS)) {
    if (entry.path().extension() == ".CMD") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// A list's name in the form needed for a test's name.
inline std::string TestNameOf(std::string name) {
  std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
  return name;
}

}  // namespace kolvane::script
