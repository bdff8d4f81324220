#include "component/extras_file.h"

#include "base/system.h"

namespace kolvane::component {
namespace {

constexpr char kSection[] = "EXTRAS";

const char* TextOf(bool value) { return value ? "1" : "0"; }

}  // namespace

std::string UserExtrasFile() {
  const auto folder = base::UserFolder("XDG_CONFIG_HOME", ".config");
  return folder.empty() ? std::string() : (folder / "Extras.ini").string();
}

terminal::Extras ExtrasFile::Load() const {
  terminal::Extras extras;
  for (const terminal::ExtrasFlag& flag : terminal::kExtrasFlags) {
    const std::string text = file_.Read(kSection, std::string(flag.name));
    if (text == TextOf(false) || text == TextOf(true)) extras.*flag.value = text == TextOf(true);
  }
  return extras;
}

std::optional<SaveFailure> ExtrasFile::Save(const terminal::Extras& extras) {
  const terminal::Extras before = Load();
  for (const terminal::ExtrasFlag& flag : terminal::kExtrasFlags) {
    const bool value = extras.*flag.value;
    if (value != before.*flag.value) file_.Write(kSection, std::string(flag.name), TextOf(value));
  }
  return file_.Save();
}

}  // namespace kolvane::component
