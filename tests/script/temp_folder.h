#pragma once

#include "base/temp_folder.h"

namespace kolvane::script {

using base::ReadBytes;
using base::TempFolder;
using base::WriteBytes;

}  // namespace kolvane::script
