#include "help/topics.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>

#include "help/rtf_reader.h"

namespace kolvane::help {
namespace {

struct WidgetRow {
  std::string_view name;
  std::uint32_t topic;
};

// A widget that is not listed has the topic of its parent.
constexpr WidgetRow kWidgetRows[] = {
    // windows
    {"frmTerminal", 10},
    {"TermWin", 11},
    {"CommandScript", 12},
    {"UnsavedBar", 402},
    {"FindBar", 105},
    {"FindingsList", 408},
    {"WatchPanel", 409},
    {"StatusBar1", 13},
    {"StatusBar2", 13},
    {"HelpWindow", 16},
    {"OpenDialog", 17},
    {"SaveDialog", 17},
    {"PrintDialog", 18},
    {"FontDialog", 19},
    {"ColorDialog", 20},
    {"CommentDialog", 21},
    {"MessageBox", 22},
    {"ProgressDialog", 23},
    // menus
    {"mnuFile", 100},
    {"mnuNewCommandFile", 402},
    {"mnuOpenCommandFile", 402},
    {"mnuSaveCommandFile", 402},
    {"mnuSaveCommandFileAs", 402},
    {"mnuOpenLog", 122},
    {"mnuCloseLog", 122},
    {"mnuSaveTerminal", 123},
    {"mnuOpenTextFile", 124},
    {"mnuPrintTermWindow", 18},
    {"mnuExit", 100},
    {"mnuCon", 101},
    {"mnuConfigureConnection", 300},
    {"mnuConnect", 120},
    {"mnuDisconnect", 120},
    {"mnuOptions", 102},
    {"mnuOption_0", 125},
    {"mnuOption_1", 126},
    {"mnuOption_2", 127},
    {"mnuExtras", 104},
    {"mnuValues", 130},
    {"ValuesWindow", 130},
    {"mnuFind", 105},
    {"mnuFindNext", 105},
    {"mnuFindPrevious", 105},
    {"mnuCheckList", 408},
    {"mnuBreakpoint", 409},
    {"mnuPlayFromRow", 409},
    {"mnuRunToRow", 409},
    {"mnuRecent", 402},
    {"mnuDuplicateRow", 401},
    {"mnuToggleComment", 401},
    {"mnuMoveUp", 401},
    {"mnuMoveDown", 401},
    {"mnuReadAnswer", 212},
    {"mnuListen", 212},
    {"mnuTimeStamps", 104},
    {"mnuLogTimeStamps", 104},
    {"mnuUtf8", 104},
    {"mnuCopyWithTimes", 104},
    {"mnuQueriesOnly", 211},
    {"mnuPorts", 308},
    {"PortsDialog", 308},
    {"mnuBlocks", 213},
    {"mnuReconnect", 214},
    {"mnuDeviceWords", 202},
    {"mnuPOP1", 103},
    {"mnuSaveAs", 123},
    {"mnuOpen", 124},
    {"mnuPrint", 18},
    {"mnuBackColor", 20},
    {"mnuFont", 19},
    {"mnuBinInspect", 500},
    {"mnuInsertComment", 21},
    // toolbars
    {"Toolbar1", 110},
    {"TB_SAVETERMWIN", 123},
    {"TB_PRINT", 18},
    {"TB_PORTCONFIGURE", 300},
    {"TB_CONNECT", 120},
    {"TB_FLUSH", 121},
    {"TB_OPENLOG", 122},
    {"TB_CLOSELOG", 122},
    {"TB_RECORDLOG", 122},
    {"TB_INSPECT", 500},
    {"TB_HELP", 16},
    {"Toolbar2", 111},
    {"Toolbar3", 112},
    {"TB_PLAY", 403},
    {"TB_SINGLESTEP", 404},
    {"TB_BREAK", 405},
    {"TB_STOP", 405},
    {"TB_RECORD", 406},
    {"TB_NEWSCRIPT", 402},
    {"TB_OPENSCRIPT", 402},
    {"TB_SAVESCRIPT", 402},
    {"TB_PRINTSCRIPT", 18},
    {"TB_CUT", 401},
    {"TB_COPY", 401},
    {"TB_PASTE", 401},
    {"TB_SPECIALCOMMANDS", 407},
    // command line and receiving
    {"cmbCommand", 200},
    {"cmdSend", 201},
    {"cmbReceiveMode", 203},
    {"BinChars", 206},
    {"cmbReceiveFormat", 207},
    {"RcvTermChar", 208},
    {"SendTermChar", 209},
    {"ReceiveTimo", 210},
    // connection dialog
    {"U_Port", 300},
    {"Port_0", 310},
    {"Port_1", 310},
    {"Port_2", 311},
    {"Port_3", 311},
    {"Port_4", 312},
    {"Port_5", 312},
    {"Port_6", 313},
    {"Port_7", 314},
    {"Port_8", 315},
    {"Port_9", 316},
    {"Baud", 301},
    {"Parity", 301},
    {"DataBits", 301},
    {"StopBits", 301},
    {"TIMO", 301},
    {"RCV", 301},
    {"Addr485", 301},
    {"Label1", 301},
    {"DialTIMO", 301},
    {"txtModemScript", 301},
    {"XOnLimit", 302},
    {"XOffLimit", 302},
    {"XonChar", 302},
    {"XoffChar", 302},
    {"DTRControl", 302},
    {"RTSControl", 302},
    {"ExtPar", 302},
    {"GPIBAddr", 303},
    {"GPIBTIMO", 303},
    {"EOSChar", 303},
    {"SendEOIOnWrite", 303},
    {"SendEOIWithEOS", 303},
    {"StopReadOnEOS", 303},
    {"RepeatAddressing", 303},
    {"PAPOMode", 304},
    {"LPTTimo", 304},
    {"IPAddrList", 305},
    {"txtIPPort", 305},
    {"TCPIPTimo", 305},
    {"USBAddrList", 307},
    {"USBTimo", 307},
    {"Command3", 307},
    {"lstScan", 307},
    // inspector
    {"frmBinInspect", 500},
    {"ValuePanel", 500},
    {"PositionLabel", 500},
    {"GoToEdit", 500},
    {"InspectFind", 500},
    {"cmdPreviousPage", 500},
    {"cmdNextPage", 500},
    {"cmdLoadFile", 500},
    {"cmdSaveBlock", 500},
    {"cmdCopyAs", 500},
    {"cmdResultList", 500},
    {"chkRepeat", 500},
    {"cmdSaveCsv", 500},
    {"txtBinData", 501},
    {"NumDisplay", 502},
    {"Frame1", 502},
    {"optFormat", 502},
    {"optFormat_5", 505},
    {"chkMotorola", 503},
    {"cmbSpecialFormat", 505},
    {"lstTemplate", 505},
};

std::optional<std::uint32_t> FindRow(std::string_view name) {
  const auto* row = std::ranges::find(kWidgetRows, name, &WidgetRow::name);
  return row == std::end(kWidgetRows) ? std::nullopt : std::optional(row->topic);
}

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
    {"Die geänderte Befehlsliste kann nicht ", "", kStart, "speichern"},
    {"Das Terminal ist bereits geöffnet", "", kStart, "offen"},
    {"Bitte markieren Sie einen Binärdatenblock", "", kBinary, "markieren"},
    {"Die Formatvorlage ergibt hier keine Felder", "", kBinary, "felder"},
    {"So viele Zeilen passen nicht in die Zwischenablage", "", kValues, "zuviel"},
    {"Der Block ist zu lang zum Kopieren", "", kBinary, "kopieren"},
    {"Der Block kann nicht kopiert werden: ", "", kBinary, "kopieren"},
    {"„", "“ ist keine Baudrate", kPorts, "meldungen"},
    {"„", "“ ist keine Nummer einer GPIB-Karte", kPorts, "meldungen"},
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

std::optional<std::uint32_t> WidgetTopic(std::string_view object_name) {
  if (const auto topic = FindRow(object_name)) return topic;
  const std::size_t index = object_name.rfind('_');
  const bool indexed = index != std::string_view::npos && index + 1 < object_name.size() &&
                       object_name.find_first_not_of("0123456789", index + 1) == std::string_view::npos;
  return indexed ? FindRow(object_name.substr(0, index)) : std::nullopt;
}

std::vector<std::uint32_t> AllWidgetTopics() {
  std::vector<std::uint32_t> topics;
  for (const WidgetRow& row : kWidgetRows) topics.push_back(row.topic);
  return topics;
}

HelpTarget TargetOfNames(std::span<const std::string> names) {
  for (const std::string& name : names) {
    if (const auto topic = WidgetTopic(name)) return {*topic, name};
  }
  return {};
}

int StatusIn(std::string_view text) {
  const std::size_t start = text.rfind("(-");
  if (start == std::string_view::npos || !text.ends_with(')')) return 0;
  int status = 0;
  const char* end = text.data() + text.size() - 1;
  const auto result = std::from_chars(text.data() + start + 2, end, status);
  return result.ec == std::errc() && result.ptr == end ? status : 0;
}

std::optional<HelpTarget> MessageTarget(std::string_view text) {
  if (IsOfTheReference(text)) return HelpTarget{kFiles, "d8"};
  const auto* row = std::ranges::find_if(kMessageRows, [text](const MessageRow& each) {
    return text.starts_with(each.begin) && text.find(each.part) != std::string_view::npos;
  });
  if (row == std::end(kMessageRows)) return std::nullopt;
  const int status = row->begin.starts_with("Fehler beim Verbindungs") ? StatusIn(text) : 0;
  if (IsExplained(status)) return HelpTarget{kStatuses, "s" + std::to_string(status)};
  return HelpTarget{row->topic, std::string(row->anchor)};
}

std::span<const int> ExplainedStatuses() { return kExplained; }

}  // namespace kolvane::help
