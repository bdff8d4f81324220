#pragma once

#include <string>

namespace kolvane::device {

/// Where the histories and the modem script are kept: the component's folder, or the user's own
/// ($XDG_DATA_HOME/Kolvane, default ~/.local/share/Kolvane) where this user cannot write to the component's
/// or it is not there. The user's own is made, and each file that it lacks is copied from the component's;
/// where it cannot be made the component's is left, to be read at least.
std::string HistoryFolder(const std::string& component_folder);

/// The folder that holds the modem script which would stand in HistoryFolder. Makes and copies nothing; an
/// empty folder stays so.
std::string ModemScriptFolder(const std::string& component_folder);

}  // namespace kolvane::device
