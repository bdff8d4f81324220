#pragma once

#include <string>

#include "base/system.h"

namespace kolvane::headless::texts {

inline constexpr const char* kRunStopped = "Der Ablauf wurde abgebrochen.";

/// Follows the failure to connect.
inline std::string ModemSaid(const std::string& word) {
  return ", letzte Antwort des Modems: „" + word + "“";
}

inline std::string OutputNotWritten(int error) {
  return "Die Standardausgabe kann nicht geschrieben werden: " + base::SystemErrorText(error) + ".";
}

}  // namespace kolvane::headless::texts
