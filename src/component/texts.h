#pragma once

#include <string>

#include "base/system_error_text.h"
#include "component/ini_value.h"
#include "component/settings_store.h"

namespace kolvane::component::texts {

inline constexpr const char* kAlreadyOpen = "Das Terminal ist bereits geöffnet";
inline constexpr const char* kRunStopped = "Der Ablauf wurde abgebrochen.";

inline std::string NotLoaded(const std::string& section, const std::string& key, const std::string& value,
                             const std::string& reason) {
  return "Die gespeicherte Einstellung [" + section + "] " + key + "=" + ShownIniValue(value) +
         " kann nicht gelesen werden: " + reason;
}

inline std::string NotSaved(const SaveFailure& failure) {
  return "Die Einstellungen können nicht in der Datei „" + failure.file +
         "“ gespeichert werden: " + base::SystemErrorText(failure.error);
}

inline std::string OutputNotWritten(int error) {
  return "Die Standardausgabe kann nicht geschrieben werden: " + base::SystemErrorText(error) + ".";
}

}  // namespace kolvane::component::texts
