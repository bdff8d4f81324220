#pragma once

#include <string>
#include <string_view>

#include "base/texts.h"

/// The window's own texts.
namespace kolvane::window::texts {

using base::texts::kNoMemory;
using base::texts::kNotPrinted;
using base::texts::kProgram;
using base::texts::NotRead;
using base::texts::NotWritten;

inline constexpr std::string_view kConfigureTip = "Verbindung konfigurieren";
inline constexpr std::string_view kConfigureTipConnected =
    "Verbindung konfigurieren: nur möglich, solange keine Verbindung besteht";
inline constexpr std::string_view kLoading = "Textdatei wird geladen …";
inline constexpr std::string_view kPrinting = "Text wird gedruckt …";
inline constexpr std::string_view kEndRun = "Befehlsliste beenden";

inline constexpr std::string_view kFindInPane = "Suchen in der Ausgabe:";
inline constexpr std::string_view kFindInList = "Suchen in der Befehlsliste:";

/// The text of the empty pane; `connection` describes the one that can still be chosen, empty if none can.
inline std::string GettingStarted(std::string_view connection) {
  const std::string choose =
      "Menü „Verbindung“, „Verbindung konfigurieren...“: Hier wählen Sie die "
      "Schnittstelle. Eingestellt ist „" +
      std::string(connection) + "“.\n\n";
  const std::string send = std::string("Unten einen Befehl eingeben: Die Eingabetaste ") +
                           (connection.empty() ? "sendet ihn" : "verbindet und sendet ihn") +
                           ", die Antwort erscheint hier.\n\n";
  return (connection.empty() ? "" : choose) + send + "F1 zeigt zu jedem Feld die Hilfe.";
}

}  // namespace kolvane::window::texts
