#pragma once

#include <string>

#include "base/system.h"

namespace kolvane::headless::texts {

inline constexpr const char* kRunStopped = "Der Ablauf wurde abgebrochen.";

/// Appended to the failure to connect.
inline std::string ModemReplied(const std::string& word) {
  return ", letzte Antwort des Modems: „" + word + "“";
}

/// Appended to the failure to connect if there was no --connect.
inline std::string StoredConnectionTried(const std::string& port) {
  return "Versucht wurde die gespeicherte Verbindung: " + port + ". --connect nennt eine andere.";
}

/// During dialling.
inline std::string ModemRefused(const std::string& word) { return "Das Modem antwortet „" + word + "“."; }

inline std::string OutputNotWritten(int error) {
  return "Die Standardausgabe kann nicht geschrieben werden: " + base::SystemErrorText(error) + ".";
}

inline std::string TranscriptNotWritten(const std::string& file, int error) {
  return "Die Mitschrift „" + file + "“ kann nicht geschrieben werden: " + base::SystemErrorText(error) + ".";
}

}  // namespace kolvane::headless::texts
