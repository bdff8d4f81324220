#pragma once

#include <string>

namespace kolvane::base {

/// What an errno says, in German, without a full stop: "Der Datenträger ist voll". One that has no text here
/// is given by its number.
std::string SystemErrorText(int error);

}  // namespace kolvane::base
