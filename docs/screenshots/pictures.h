#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "stage.h"

namespace kolvane::screenshots {

/// One function per picture, or for a few that belong together: it brings the stage into the state to show
/// and saves into `folder`. They run in this order, each with the state left by the one before.
using Picture = std::function<void(Stage& stage, const QString& folder)>;

std::vector<Picture> WindowPictures();
std::vector<Picture> DialogPictures();

}  // namespace kolvane::screenshots
