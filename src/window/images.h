#pragma once

#include <QIcon>
#include <string_view>

namespace kolvane::window {

/// The icon of that name in the program's own set.
QIcon Icon(const char* name);

/// The icon that a number of the toolbars' image list stands for; an empty one for a number beyond the list.
QIcon ImageIcon(int number);

/// The number of an icon in the image list.
int ImageNumber(std::string_view name);

}  // namespace kolvane::window
