#pragma once

#include <QString>

/// The texts of the help window.
namespace kolvane::help::texts {

inline QString WindowTitle(const QString& page) {
  return QStringLiteral("%1 – Hilfe zum Kolvane Terminal").arg(page);
}
inline QString Hits(qsizetype count) {
  if (count == 0) return QStringLiteral("Nichts gefunden");
  return count == 1 ? QStringLiteral("1 Seite") : QStringLiteral("%1 Seiten").arg(count);
}
inline QString OutsideAddress(const QString& address) {
  return QStringLiteral("Adresse außerhalb der Hilfe: %1").arg(address);
}

inline constexpr char kToolbar[] = "Hilfe";
inline constexpr char kBack[] = "Zurück";
inline constexpr char kForward[] = "Vor";
inline constexpr char kHome[] = "Startseite";
inline constexpr char kPrint[] = "Drucken…";
inline constexpr char kLarger[] = "Schrift größer";
inline constexpr char kSmaller[] = "Schrift kleiner";
inline constexpr char kNormal[] = "Schrift in normaler Größe";
inline constexpr char kFind[] = "Suchen";
inline constexpr char kFindNext[] = "Weitersuchen";
inline constexpr char kFindPrevious[] = "Zurücksuchen";
inline constexpr char kClose[] = "Schließen";
inline constexpr char kContents[] = "Inhalt";
inline constexpr char kSearch[] = "Suche";
inline constexpr char kSearchHint[] = "Wörter, die auf der Seite stehen";
inline constexpr char kResults[] = "Gefundene Seiten";
inline constexpr char kPage[] = "Hilfeseite";
inline constexpr char kUnreadable[] =
    "Diese Seite kann nicht angezeigt werden, die Hilfedatei ist beschädigt.";

}  // namespace kolvane::help::texts
