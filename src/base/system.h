#pragma once

#include <filesystem>
#include <string>

namespace kolvane::base {

/// The German text of an errno, without a full stop: "Der Datenträger ist voll". An errno without a text here
/// is given by its number.
std::string SystemErrorText(int error);

/// The user's folder "Kolvane" in the folder named by the environment variable `variable` (XDG_CONFIG_HOME,
/// for example), or in `below_home` of the home folder if that is not set. A relative path is ignored; empty
/// if there is no home folder either. The folder need not exist.
std::filesystem::path UserFolder(const char* variable, const char* below_home);

/// The user's configuration folder: $XDG_CONFIG_HOME/Kolvane, default ~/.config/Kolvane.
inline std::filesystem::path UserConfigFolder() { return UserFolder("XDG_CONFIG_HOME", ".config"); }
/// The user's data folder: $XDG_DATA_HOME/Kolvane, default ~/.local/share/Kolvane.
inline std::filesystem::path UserDataFolder() { return UserFolder("XDG_DATA_HOME", ".local/share"); }
/// The user's state folder: $XDG_STATE_HOME/Kolvane, default ~/.local/state/Kolvane.
inline std::filesystem::path UserStateFolder() { return UserFolder("XDG_STATE_HOME", ".local/state"); }

}  // namespace kolvane::base
