#include "help/message_topics.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>

#include "help/rtf_reader.h"

namespace kolvane::help {
namespace {

constexpr std::uint32_t kValues = 130;
constexpr std::uint32_t kPorts = 308;
constexpr std::uint32_t kConnection = 601;
constexpr std::uint32_t kStatuses = 602;
constexpr std::uint32_t kList = 603;
constexpr std::uint32_t kFiles = 604;
constexpr std::uint32_t kLog = 605;
constexpr std::uint32_t kInput = 606;
constexpr std::uint32_t kStart = 607;
constexpr std::uint32_t kBinary = 610;

constexpr int kExplained[] = {2,  3,  4,  10, 11, 12, 13, 14, 20,  21,  22,  23, 24,
                              30, 31, 40, 41, 50, 51, 60, 61, 901, 902, 903, 904};

// A text belongs to the first row whose `begin` it starts with and whose `part` it contains.
struct MessageRow {
  std::string_view begin;
  std::string_view part;
  std::uint32_t topic;
  std::string_view anchor;
};

constexpr MessageRow kMessageRows[] = {
    {"", "Die Portbibliothek „", kConnection, "bibliothek"},
    {"Fehler beim Verbindungsaufbau: ", "", kConnection, "aufbau"},
    {"Fehler beim Verbindungsabbau: ", "", kConnection, "abbau"},
    {"Ungültige Adresse", "", kConnection, "adresse"},
    {"Kein Geräteobjekt übergeben", "", kConnection, "host"},
    {"Das Geräteobjekt unterstützt diese Operation nicht", "", kConnection, "host"},
    {"Fehler in Befehlsliste ", "): Unbekannter $ Befehl", kList, "m1"},
    {"Fehler in Befehlsliste ", "): Sprungziel nicht gefunden", kList, "m2"},
    {"Fehler in Befehlsliste ", "): Logdatei bereits geöffnet", kList, "m3"},
    {"Fehler in Befehlsliste ", "): Keine Logdatei geöffnet", kList, "m4"},
    {"Fehler in Befehlsliste ", "): Ungültige Parameterposition", kList, "m5"},
    {"Fehler in Befehlsliste ", "Index außerhalb des gültigen Bereichs", kList, "m6"},
    {"Fehler in Befehlsliste ", "Überlauf", kList, "m7"},
    {"Fehler in Befehlsliste ", "Typen unverträglich", kList, "m8"},
    {"Fehler in Befehlsliste ", "“ kann nicht gesendet werden", kList, "m9"},
    {"Fehler in Befehlsliste ", "", kList, ""},
    {"Das Zeichen „", "“ kann nicht gesendet werden", kInput, "e6"},
    {"Das Zeichen „", "kann nicht gespeichert werden", kFiles, "d11"},
    {"Die Befehlsliste ist voll.", "", kList, "voll"},
    {"Die Befehlsliste „", "“ kann nicht gelesen werden: Die Datei enthält zu lange Zeilen", kFiles, "d2"},
    {"Die Befehlsliste „", "“ kann nicht gelesen werden: ", kFiles, "d1"},
    {"Die Befehlsliste „", "“ kann nicht geladen werden, ", kFiles, "d3"},
    {"Die Befehlsliste „", "“ kann nicht geschrieben werden: ", kFiles, "d4"},
    {"Die Datei „", "“ kann nicht geschrieben werden: ", kFiles, "d5"},
    {"Die Datei „", "TermCmdHelp.rtf“ kann nicht gelesen werden: ", kFiles, "d7"},
    {"Die Datei „", "“ kann nicht gelesen werden: ", kFiles, "d6"},
    {"Der Drucker nimmt den Auftrag nicht an", "", kFiles, "d9"},
    {"Nicht genügend Speicher", "", kFiles, "d10"},
    {"Die Logdatei „", "“ kann nicht geöffnet werden: ", kLog, "l1"},
    {"Die Logdatei „", "“ kann nicht geschrieben werden: ", kLog, "l2"},
    {"Die gespeicherte Einstellung ", "", kStart, "einstellung"},
    {"Die Einstellungen können nicht ", "", kStart, "speichern"},
    {"Fenstergrößen und Ordner können nicht ", "", kStart, "speichern"},
    {"Das Terminal ist bereits geöffnet", "", kStart, "offen"},
    {"Bitte markieren Sie einen Binärdatenblock", "", kBinary, "markieren"},
    {"Die Formatvorlage ergibt hier keine Felder", "", kBinary, "felder"},
    {"So viele Zeilen passen nicht in die Zwischenablage", "", kValues, "zuviel"},
    {"„", "“ ist keine Baudrate", kPorts, "meldungen"},
    // Without the name of a field before it, only the inspector reports an overflow.
    {"Überlauf", "", kBinary, "ueberlauf"},
    {"", "Typen unverträglich", kInput, "e1"},
    {"", "Überlauf", kInput, "e2"},
    {"", "Index außerhalb des gültigen Bereichs", kInput, "e3"},
    {"", "Ungültiges Argument", kInput, "e4"},
    {"", "Division durch Null", kInput, "e5"},
    {"", "Laufzeitfehler", kInput, "e5"},
};

bool IsExplained(int status) { return std::ranges::find(kExplained, status) != std::end(kExplained); }

bool IsOfTheReference(std::string_view text) {
  for (int fault = static_cast<int>(RtfFault::kNotRichText); fault <= static_cast<int>(RtfFault::kTooLarge);
       ++fault) {
    if (text.ends_with(": " + std::string(FaultText(static_cast<RtfFault>(fault))))) return true;
  }
  return false;
}

}  // namespace

int StatusIn(std::string_view text) {
  const std::size_t start = text.rfind("(-");
  if (start == std::string_view::npos || !text.ends_with(')')) return 0;
  int status = 0;
  const char* end = text.data() + text.size() - 1;
  const auto result = std::from_chars(text.data() + start + 2, end, status);
  return result.ec == std::errc() && result.ptr == end ? status : 0;
}

std::optional<HelpPlace> MessagePlace(std::string_view text) {
  if (IsOfTheReference(text)) return HelpPlace{kFiles, "d8"};
  const auto* row = std::ranges::find_if(kMessageRows, [text](const MessageRow& each) {
    return text.starts_with(each.begin) && text.find(each.part) != std::string_view::npos;
  });
  if (row == std::end(kMessageRows)) return std::nullopt;
  const int status = row->begin.starts_with("Fehler beim Verbindungs") ? StatusIn(text) : 0;
  if (IsExplained(status)) return HelpPlace{kStatuses, "s" + std::to_string(status)};
  return HelpPlace{row->topic, std::string(row->anchor)};
}

std::span<const int> ExplainedStatuses() { return kExplained; }

}  // namespace kolvane::help
