#pragma once

#include <cstdint>
#include <string>

#include "base/system.h"
#include "component/ini_store.h"
#include "component/ini_value.h"
#include "kolvane/Variant.h"

namespace kolvane::component::texts {

inline constexpr const char* kAlreadyOpen = "Das Terminal ist bereits geöffnet";

/// `file` is empty for a store without a file.
inline std::string NotLoaded(const std::string& section, const std::string& key, const std::string& value,
                             const std::string& reason, const std::string& file) {
  return "Die gespeicherte Einstellung [" + section + "] " + key + "=" + ShownIniValue(value) +
         " kann nicht gelesen werden: " + reason + (file.empty() ? "" : " (Datei „" + file + "“)");
}

inline constexpr const char* kInfoKind = "GetDeviceInfo, Schnittstelle";
inline constexpr const char* kInfoAddress = "GetDeviceInfo, Adresse";

inline std::string PropertyName(std::int16_t number) {
  return "GetDeviceProperty, Eigenschaft " + std::to_string(number);
}

inline std::string NotConverted(const std::string& reason, const std::string& name, const Variant& value) {
  const std::string shown = value.empty() ? "kein Wert" : "„" + ShownIniValue(value.ToText()) + "“";
  return reason + " (" + name + ": " + shown + ")";
}

inline std::string NotSaved(const SaveFailure& failure) {
  return "Die Einstellungen können nicht in der Datei „" + failure.file +
         "“ gespeichert werden: " + base::SystemErrorText(failure.error);
}

inline std::string StateNotSaved(const SaveFailure& failure) {
  return "Fenstergrößen und Ordner können nicht in der Datei „" + failure.file +
         "“ gespeichert werden: " + base::SystemErrorText(failure.error);
}

}  // namespace kolvane::component::texts
