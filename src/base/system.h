#pragma once

#include <filesystem>
#include <string>

namespace kolvane::base {

/// What an errno says, in German, without a full stop: "Der Datenträger ist voll". One that has no text here
/// is given by its number.
std::string SystemErrorText(int error);

/// The folder "Kolvane" of the user's own in the one that the environment variable `variable` names
/// (XDG_CONFIG_HOME, say), or in `below_home` of the home folder where that is not set. A relative path does
/// not count; empty where the user has no place for it. It need not be there.
std::filesystem::path UserFolder(const char* variable, const char* below_home);

/// The one for the user's own data: $XDG_DATA_HOME/Kolvane, default ~/.local/share/Kolvane.
inline std::filesystem::path UserDataFolder() { return UserFolder("XDG_DATA_HOME", ".local/share"); }

}  // namespace kolvane::base
