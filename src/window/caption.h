#pragma once

#include <QString>
#include <QWidget>
#include <string_view>

namespace kolvane::window {

/// The window's caption: the program, the file of the command list without its folder, and what is connected.
/// Either of the two may be empty. A list that is `modified` has the place of QWidget's mark after it.
QString Caption(std::string_view command_file, std::string_view connection, bool modified = false);

/// A window's caption without that mark, for paper.
QString CaptionWithoutMark(const QWidget& window);

}  // namespace kolvane::window
