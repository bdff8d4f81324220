#include "component/state_file.h"

#include <utility>

#include "base/user_folder.h"

namespace kolvane::component {

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
  const auto folder = base::UserFolder("XDG_STATE_HOME", ".local/state");
  return folder.empty() ? std::string() : (folder / "state.ini").string();
}

}  // namespace kolvane::component
