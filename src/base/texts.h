#pragma once

#include <string>
#include <string_view>

#include "base/system.h"

/// The texts that several windows show. `error` is an errno.
namespace kolvane::base::texts {

inline constexpr std::string_view kProgram = "Kolvane Terminal";
inline constexpr std::string_view kNoMemory = "Nicht genügend Speicher";
inline constexpr std::string_view kNotPrinted = "Der Drucker nimmt den Auftrag nicht an";

inline std::string NotWritten(std::string_view file_name, int error) {
  return "Die Datei „" + std::string(file_name) +
         "“ kann nicht geschrieben werden: " + SystemErrorText(error);
}

inline std::string NotRead(std::string_view file_name, int error) {
  return "Die Datei „" + std::string(file_name) + "“ kann nicht gelesen werden: " + SystemErrorText(error);
}

}  // namespace kolvane::base::texts
