#include "help/topics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "help/help_file.h"

namespace kolvane::help {
namespace {

// Number to page, from help/topics.txt.
std::map<std::uint32_t, std::string> ListedTopics() {
  std::map<std::uint32_t, std::string> topics;
  std::ifstream file(KOLVANE_HELP_FOLDER "/topics.txt");
  for (std::string line; std::getline(file, line);) {
    std::istringstream fields(line);
    std::string number, level, page;
    if (line.starts_with('#') || !std::getline(fields, number, '\t')) continue;
    std::getline(fields, level, '\t');
    std::getline(fields, page, '\t');
    topics.emplace(static_cast<std::uint32_t>(std::stoul(number)), page);
  }
  return topics;
}

TEST(WidgetTopics, AreAllListed) {
  const auto topics = ListedTopics();
  for (const std::uint32_t topic : AllWidgetTopics()) EXPECT_TRUE(topics.contains(topic)) << topic;
  EXPECT_TRUE(topics.contains(kStartTopic));
}

TEST(WidgetTopics, HavePagesInTheCompiledFile) {
  const auto file = HelpFile::Open(KOLVANE_COMPILED_HELP);
  ASSERT_NE(file, nullptr);
  const auto topics = ListedTopics();
  ASSERT_FALSE(topics.empty());
  for (const auto& [topic, page] : topics) {
    EXPECT_EQ(file->TopicPage(topic), page);
    EXPECT_FALSE(file->Page(page).empty()) << page;
  }
  EXPECT_EQ(file->contents().size(), topics.size());
}

// The page that F1 opens on each widget, action and menu that has one of its own.
constexpr std::pair<const char*, const char*> kWidgetsOfPages[] = {
    {"hauptfenster.html", "frmTerminal"},
    {"ausgabefenster.html", "TermWin"},
    {"befehlsliste.html", "CommandScript"},
    {"befehlsliste-dateien.html",
     "UnsavedBar mnuNewCommandFile mnuOpenCommandFile mnuSaveCommandFile mnuSaveCommandFileAs "
     "mnuRecent TB_NEWSCRIPT TB_OPENSCRIPT TB_SAVESCRIPT"},
    {"suchen.html", "FindBar mnuFind mnuFindNext mnuFindPrevious"},
    {"befehlsliste-pruefen.html", "FindingsList mnuCheckList"},
    {"haltepunkte.html", "WatchPanel mnuBreakpoint mnuPlayFromRow mnuRunToRow"},
    {"statusleisten.html", "StatusBar1 StatusBar2"},
    {"hilfefenster.html", "HelpWindow TB_HELP"},
    {"dateidialoge.html", "OpenDialog SaveDialog"},
    {"drucken.html", "PrintDialog mnuPrintTermWindow mnuPrint TB_PRINT TB_PRINTSCRIPT"},
    {"schriftart.html", "FontDialog mnuFont"},
    {"farbe.html", "ColorDialog mnuBackColor"},
    {"kommentar.html", "CommentDialog mnuInsertComment"},
    {"meldungsfenster.html", "MessageBox"},
    {"fortschritt.html", "ProgressDialog"},
    {"menue-datei.html", "mnuFile mnuExit"},
    {"log.html", "mnuOpenLog mnuCloseLog TB_OPENLOG TB_CLOSELOG TB_RECORDLOG"},
    {"terminal-speichern.html", "mnuSaveTerminal mnuSaveAs TB_SAVETERMWIN"},
    {"textdatei-laden.html", "mnuOpenTextFile mnuOpen"},
    {"menue-verbindung.html", "mnuCon"},
    {"verbindung-konfigurieren.html", "mnuConfigureConnection TB_PORTCONFIGURE U_Port"},
    {"verbinden.html", "mnuConnect mnuDisconnect TB_CONNECT"},
    {"menue-optionen.html", "mnuOptions"},
    {"option-befehle.html", "mnuOption_0"},
    {"option-antwortzeiten.html", "mnuOption_1"},
    {"option-zeilenumbrueche.html", "mnuOption_2"},
    {"menue-extras.html", "mnuExtras mnuTimeStamps mnuLogTimeStamps mnuUtf8 mnuCopyWithTimes"},
    {"messwerte.html", "mnuValues ValuesWindow"},
    {"befehlsliste-bearbeiten.html",
     "mnuDuplicateRow mnuToggleComment mnuMoveUp mnuMoveDown TB_CUT TB_COPY TB_PASTE"},
    {"antwort-lesen.html", "mnuReadAnswer mnuListen"},
    {"abfragen.html", "mnuQueriesOnly"},
    {"schnittstellen-zuordnen.html", "mnuPorts PortsDialog"},
    {"bloecke.html", "mnuBlocks"},
    {"verbindung-verloren.html", "mnuReconnect"},
    {"sonderbefehle.html", "mnuDeviceWords"},
    {"kontextmenue.html", "mnuPOP1"},
    {"binaerdaten-analysieren.html",
     "mnuBinInspect TB_INSPECT frmBinInspect ValuePanel PositionLabel GoToEdit InspectFind "
     "cmdPreviousPage cmdNextPage cmdLoadFile cmdSaveBlock cmdCopyAs cmdResultList chkRepeat "
     "cmdSaveCsv"},
    {"werkzeugleiste-terminal.html", "Toolbar1"},
    {"puffer-leeren.html", "TB_FLUSH"},
    {"werkzeugleiste-senden.html", "Toolbar2"},
    {"werkzeugleiste-befehlsliste.html", "Toolbar3"},
    {"befehlsliste-abspielen.html", "TB_PLAY"},
    {"einzelschritt.html", "TB_SINGLESTEP"},
    {"anhalten.html", "TB_BREAK TB_STOP"},
    {"aufzeichnen.html", "TB_RECORD"},
    {"dollar-befehle.html", "TB_SPECIALCOMMANDS"},
    {"befehlszeile.html", "cmbCommand"},
    {"senden.html", "cmdSend"},
    {"empfang-bis.html", "cmbReceiveMode"},
    {"empfang-anzahl.html", "BinChars"},
    {"format.html", "cmbReceiveFormat"},
    {"endezeichen-empfang.html", "RcvTermChar"},
    {"endezeichen-senden.html", "SendTermChar"},
    {"timeout.html", "ReceiveTimo"},
    {"port-com.html", "Port_0 Port_1"},
    {"port-rs485.html", "Port_2 Port_3"},
    {"port-lpt.html", "Port_4 Port_5"},
    {"port-gpib.html", "Port_6"},
    {"port-offline.html", "Port_7"},
    {"port-tcpip.html", "Port_8"},
    {"port-usb.html", "Port_9"},
    {"seite-rs232.html", "Baud Parity DataBits StopBits TIMO RCV Addr485 Label1 DialTIMO txtModemScript"},
    {"seite-rs232-erweitert.html", "XOnLimit XOffLimit XonChar XoffChar DTRControl RTSControl ExtPar"},
    {"seite-gpib.html",
     "GPIBAddr GPIBTIMO EOSChar SendEOIOnWrite SendEOIWithEOS StopReadOnEOS RepeatAddressing"},
    {"seite-druckerport.html", "PAPOMode LPTTimo"},
    {"seite-tcpip.html", "IPAddrList txtIPPort TCPIPTimo"},
    {"seite-usb.html", "USBAddrList USBTimo Command3 lstScan"},
    {"hexdump.html", "txtBinData"},
    {"anzeigeformat.html", "NumDisplay Frame1 optFormat"},
    {"formatvorlagen.html", "optFormat_5 cmbSpecialFormat lstTemplate"},
    {"byte-reihenfolge.html", "chkMotorola"},
};

TEST(WidgetTopics, LeadToThePageOfTheirSubject) {
  const auto topics = ListedTopics();
  std::size_t count = 0;
  for (const auto& [page, names] : kWidgetsOfPages) {
    std::istringstream words(names);
    for (std::string name; words >> name; ++count)
      EXPECT_EQ(topics.at(WidgetTopic(name).value_or(kStartTopic)), page) << name;
  }
  EXPECT_EQ(count, AllWidgetTopics().size());
}

TEST(WidgetTopics, ApplyToMembersOfAControlArray) {
  EXPECT_EQ(WidgetTopic("Port_0"), 310u);
  EXPECT_EQ(WidgetTopic("Port_9"), 316u);
  EXPECT_EQ(WidgetTopic("optFormat_4"), WidgetTopic("optFormat_0"));
  EXPECT_EQ(WidgetTopic("ExtPar_12"), WidgetTopic("ExtPar_0"));
}

TEST(WidgetTopics, AreMissingForNamesThatNoWindowHas) {
  for (const char* name :
       {"", "_1", "nirgends", "nirgends_1", "optFormat_", "optFormat_x", "qt_spinbox_lineedit"})
    EXPECT_EQ(WidgetTopic(name), std::nullopt) << name;
}

TEST(WidgetTopics, AreThoseOfTheInnermostNameThatHasOne) {
  const auto target = [](std::vector<std::string> names) { return TargetOfNames(names); };
  EXPECT_EQ(target({}), (HelpTarget{kStartTopic, ""}));
  EXPECT_EQ(target({"", "x"}), (HelpTarget{kStartTopic, ""}));
  EXPECT_EQ(target({"", "x", "Baud", "U_Port"}), (HelpTarget{301, "Baud"}));
  EXPECT_EQ(target({"optFormat_3", "Frame1"}), (HelpTarget{502, "optFormat_3"}));
  EXPECT_EQ(target({"optFormat_5", "Frame1"}), (HelpTarget{505, "optFormat_5"}));
}

// Words that a user searches for who does not know those of the page.
TEST(HelpSearch, FindsSynonyms) {
  const auto file = HelpFile::Open(KOLVANE_COMPILED_HELP);
  ASSERT_NE(file, nullptr);
  const std::pair<const char*, const char*> words[] = {{"Offset", "hexdump.html"},
                                                       {"Endian", "byte-reihenfolge.html"},
                                                       {"Skript", "befehlsliste-grundlagen.html"},
                                                       {"Makro", "befehlsliste-grundlagen.html"},
                                                       {"Label", "befehl-goto.html"},
                                                       {"Zeitstempel", "option-antwortzeiten.html"},
                                                       {"Ueberlauf", "meldungen-eingaben.html"},
                                                       {"groesser", "befehl-ifgreater.html"},
                                                       {"schleife", "befehl-repeat.html"},
                                                       {"baudrate", "seite-rs232.html"},
                                                       {"57600", "schnittstellen-zuordnen.html"},
                                                       {"Geschwindigkeit", "seite-rs232.html"},
                                                       {"Hostname", "port-tcpip.html"},
                                                       {"Permission denied", "port-com.html"},
                                                       {"Enter", "befehlszeile.html"},
                                                       {"Line Feed", "endezeichen-empfang.html"},
                                                       {"Reset", "sonderbefehle.html"},
                                                       {"Zoom", "ausgabefenster.html"},
                                                       {"Schrift vergrößern", "hilfefenster.html"},
                                                       {"rückgängig", "ausgabefenster.html"},
                                                       {"Clipboard", "kontextmenue.html"},
                                                       {"Vervollständigung", "befehlsliste-bearbeiten.html"},
                                                       {"periodisch", "befehl-repeat.html"},
                                                       {"Standardwert", "einstellungen.html"},
                                                       {"Esc", "warten.html"},
                                                       {"LF", "endezeichen-empfang.html"},
                                                       {"RTS", "seite-rs232-erweitert.html"},
                                                       {"RES", "sonderbefehle.html"},
                                                       {"if", "befehl-iferr.html"}};
  constexpr std::size_t kInSight = 4;
  for (const auto& [word, page] : words) {
    std::vector<SearchHit> hits = file->Search(word);
    hits.resize(std::min(hits.size(), kInSight));
    EXPECT_TRUE(std::ranges::any_of(hits, [page = page](const SearchHit& hit) { return hit.page == page; }))
        << word << ": " << (hits.empty() ? "nothing" : hits.front().page);
  }
}

}  // namespace
}  // namespace kolvane::help
