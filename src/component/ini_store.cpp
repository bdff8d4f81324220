#include "component/ini_store.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "base/system.h"
#include "component/ini_text.h"

namespace kolvane::component {
namespace {

namespace fs = std::filesystem;

// Empty if the user has no configuration folder.
fs::path UserFile() {
  const fs::path folder = base::UserConfigFolder();
  return folder.empty() ? fs::path() : folder / "Kolvane.ini";
}

// A missing file counts as empty.
int ReadBytes(const std::string& path, std::string& bytes) {
  const int error = base::ReadFile(path, bytes);
  return error == ENOENT ? 0 : error;
}

// The folder of the file itself, even if the path is a link to it.
std::string FolderOf(const std::string& path, std::error_code& error) {
  const fs::path full = fs::absolute(path, error);
  return error ? std::string() : fs::weakly_canonical(full, error).parent_path().string();
}

class IniStore final : public SettingsStore {
 public:
  explicit IniStore(const std::string& path) : IniStore(path, Content(path)) {}

  std::string File() const override { return path_; }

  std::optional<std::string> Find(const std::string& section, const std::string& key) const override {
    const auto written = written_.find({section, key});
    return written != written_.end() ? written->second : text_.Find(section, key);
  }

  void Write(const std::string& section, const std::string& key, const std::string& value) override {
    written_[{section, key}] = value;
  }

  std::optional<SaveFailure> Flush() override {
    const int error = read_error_ != 0 ? read_error_ : MergeIntoFile();
    if (error != 0) return SaveFailure{path_, error};
    return std::nullopt;
  }

 private:
  struct Content {
    explicit Content(const std::string& path) : error(ReadBytes(path, bytes)) {}
    std::string bytes;
    int error;
  };

  IniStore(std::string path, Content content)
      : path_(std::move(path)), read_error_(content.error), text_(std::move(content.bytes)) {}

  int MergeIntoFile() const {
    if (path_.empty()) return ENOENT;
    std::error_code error;
    const std::string folder = FolderOf(path_, error);
    if (!error) fs::create_directories(folder, error);
    if (error) return error.value();
    // Without the lock the file would be intact too, but keys just added by another process could be lost.
    const base::FolderLock lock(folder);
    std::string bytes;
    if (const int unread = ReadBytes(path_, bytes)) return unread;
    const std::string merged = WithIniEntries(bytes, written_);
    return merged == bytes ? 0 : base::ReplaceFile(path_, merged);
  }

  const std::string path_;
  const int read_error_;
  const IniText text_;
  IniEntries written_;
};

}  // namespace

std::unique_ptr<SettingsStore> OpenIniStore(const std::string& path) {
  return std::make_unique<IniStore>(path.empty() ? UserFile().string() : path);
}

StateFile::StateFile(const std::string& path) : store_(path.empty() ? nullptr : OpenIniStore(path)) {}

std::string StateFile::Read(const std::string& section, const std::string& key) const {
  return store_ == nullptr ? std::string() : store_->Read(section, key, "");
}

void StateFile::Write(const std::string& section, const std::string& key, const std::string& text) {
  if (store_ == nullptr || store_->Read(section, key, "") == text) return;
  store_->Write(section, key, text);
  changed_ = true;
}

std::optional<SaveFailure> StateFile::Save() {
  if (!std::exchange(changed_, false)) return std::nullopt;
  return store_->Flush();
}

std::string UserStateFile() {
  const auto folder = base::UserStateFolder();
  return folder.empty() ? std::string() : (folder / "state.ini").string();
}

}  // namespace kolvane::component
