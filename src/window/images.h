#pragma once

#include <QIcon>

namespace kolvane::window {

/// Images that a button changes with its state, by their number in the image list.
namespace image {
inline constexpr int kRecordOff = 14;
inline constexpr int kRecordOn = 16;
inline constexpr int kConnected = 20;
inline constexpr int kNotConnected = 21;
inline constexpr int kLogRecording = 25;
inline constexpr int kLogNotRecording = 28;
}  // namespace image

/// The icon of that name in the program's own set.
QIcon Icon(const char* name);

/// The icon that an image number stands for; an empty one for a number that no button uses.
QIcon ImageIcon(int number);

}  // namespace kolvane::window
