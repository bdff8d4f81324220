#pragma once

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace kolvane::base {

inline std::string ReadBytes(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteBytes(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary) << bytes;
}

/// A temporary folder, deleted by the destructor.
class TempFolder {
 public:
  TempFolder() : path_((std::filesystem::temp_directory_path() / "kolvane-test-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) throw std::filesystem::filesystem_error("mkdtemp", {});
  }
  ~TempFolder() { std::filesystem::remove_all(path_); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string Path(const std::string& name) const { return path_ + "/" + name; }

  void Write(const std::string& name, const std::string& bytes) const { WriteBytes(Path(name), bytes); }
  /// The file's content; "(no file)" if there is none.
  std::string Read(const std::string& name) const {
    return std::filesystem::exists(Path(name)) ? ReadBytes(Path(name)) : "(no file)";
  }

  /// Names of all files in it, sorted.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::string path_;
};

}  // namespace kolvane::base
