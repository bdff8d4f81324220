#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "stage.h"

namespace kolvane::screenshots {

/// One function a picture, or a few that belong together: it brings the stage into the state it shows and
/// saves into `folder`. They run in this order, each on what the one before has left.
using Picture = std::function<void(Stage& stage, const QString& folder)>;

std::vector<Picture> WindowPictures();
std::vector<Picture> DialogPictures();

}  // namespace kolvane::screenshots
