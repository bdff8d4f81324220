#pragma once

#include <string>

#include "device/connection_parameters.h"

namespace kolvane::device {

/// One line about the connection that `parameters` describe. COM2 is described by its index in the list of
/// rates where COM1 shows the rate; RS485, offline and unknown kinds have no description.
std::string ConnectionDescription(const ConnectionParameters& parameters);

}  // namespace kolvane::device
