#pragma once

#include <QString>
#include <string_view>

namespace kolvane::window {

/// The window's caption: the program, the file of the command list without its folder, and what is connected.
/// Either of the two may be empty.
QString Caption(std::string_view command_file, std::string_view connection);

}  // namespace kolvane::window
