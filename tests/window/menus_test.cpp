// The captions and tool tips of the commands, to the letter.
#include <gtest/gtest.h>

#include <QLabel>
#include <QMenuBar>
#include <QPushButton>

#include "gui/mnemonics.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

class MenusTest : public WindowFixture {
 protected:
  /// "name caption" of each item, in order.
  QStringList Items(const char* menu) {
    QStringList items;
    for (const QAction* item : Find<QMenu>(menu)->actions()) {
      if (!item->isSeparator()) items << item->objectName() + ' ' + item->text().remove(u'&');
    }
    return items;
  }
};

TEST_F(MenusTest, AreOnTheBarInTheirOrder) {
  QStringList titles;
  for (const QAction* menu : window_.menuBar()->actions()) titles << menu->text().remove(u'&');
  EXPECT_EQ(titles, QStringList({"Datei", "Verbindung", "Optionen", "Extras"}));
  EXPECT_EQ(Find<QMenu>("mnuPOP1")->title(), "POP1");
}

TEST_F(MenusTest, OfFiles) {
  EXPECT_EQ(Items("mnuFile"),
            QStringList({"mnuNewCommandFile Neue Befehlsliste", "mnuOpenCommandFile Befehlsliste öffnen...",
                         "mnuSaveCommandFile Befehlsliste speichern",
                         "mnuSaveCommandFileAs Befehlsliste speichern als...",
                         "mnuOpenLog Logdatei öffnen...", "mnuCloseLog Logdatei schließen",
                         "mnuSaveTerminal Terminalfenster speichern...", "mnuOpenTextFile Textdatei laden...",
                         "mnuPrintTermWindow Terminalfenster drucken", "mnuExit Terminal beenden"}));
}

TEST_F(MenusTest, OfTheConnection) {
  EXPECT_EQ(Items("mnuCon"), QStringList({"mnuConfigureConnection Verbindung konfigurieren...",
                                          "mnuConnect Verbinden", "mnuDisconnect Verbindung trennen"}));
}

TEST_F(MenusTest, OfOptions) {
  EXPECT_EQ(Items("mnuOptions"),
            QStringList({"mnuOption_0 Befehle anzeigen", "mnuOption_1 Antwortzeiten anzeigen",
                         "mnuOption_2 Zeilenumbrüche in Antwort"}));
}

TEST_F(MenusTest, OfExtras) {
  EXPECT_EQ(Items("mnuExtras"), QStringList({"mnuFind Suchen...",
                                             "mnuFindNext Weitersuchen",
                                             "mnuFindPrevious Zurücksuchen",
                                             "mnuReadAnswer Antwort lesen",
                                             "mnuListen Mithören",
                                             "mnuQueriesOnly Nur auf Abfragen warten",
                                             "mnuBlocks Blockantworten (#) erkennen",
                                             "mnuDeviceWords DCL, RES und STP beachten",
                                             "mnuReconnect Nach Abbruch neu verbinden",
                                             "mnuTimeStamps Zeitstempel anzeigen",
                                             "mnuLogTimeStamps Zeitstempel ins Log",
                                             "mnuUtf8 Gerät spricht UTF-8",
                                             "mnuValues Messwerte...",
                                             "mnuCheckList Befehlsliste prüfen",
                                             "mnuBreakpoint Haltepunkt",
                                             "mnuPlayFromRow Ab dieser Zeile abspielen",
                                             "mnuRunToRow Bis hierher abspielen",
                                             "mnuDuplicateRow Zeile verdoppeln",
                                             "mnuToggleComment Auskommentieren",
                                             "mnuMoveUp Nach oben",
                                             "mnuMoveDown Nach unten",
                                             "mnuPorts Schnittstellen zuordnen...",
                                             "mnuCopyWithTimes Mit Zeiten kopieren",
                                             " Zuletzt verwendet"}));
}

TEST_F(MenusTest, ItemsAndButtonsAreInGroups) {
  EXPECT_EQ(Groups("mnuFile"),
            QStringList({"NewCommandFile OpenCommandFile SaveCommandFile SaveCommandFileAs ",
                         "OpenLog CloseLog ", "SaveTerminal OpenTextFile PrintTermWindow ", "Exit "}));
  EXPECT_EQ(Groups("mnuPOP1"),
            QStringList({"Copy Cut Paste Delete ", "SelectAll ClearAll ", "SaveAs Open Print ",
                         "BackColor Font ", "BinInspect InsertComment "}));
  EXPECT_EQ(Groups("Toolbar1"), QStringList({"SAVETERMWIN PRINT ", "PORTCONFIGURE CONNECT FLUSH ",
                                             "OPENLOG CLOSELOG RECORDLOG ", "INSPECT ", "HELP "}));
  EXPECT_EQ(Groups("Toolbar3"),
            QStringList({"PLAY SINGLESTEP BREAK STOP RECORD ", "NEWSCRIPT OPENSCRIPT SAVESCRIPT PRINTSCRIPT ",
                         "CUT COPY PASTE ", "SPECIALCOMMANDS "}));
}

// A letter used twice only moves between the two items and chooses neither.
TEST_F(MenusTest, EachLetterOfAMenuChoosesOneItem) {
  for (const char* menu : {"mnuFile", "mnuCon", "mnuOptions", "mnuExtras", "mnuPOP1"}) {
    QStringList texts;
    for (const QAction* item : Find<QMenu>(menu)->actions()) {
      if (!item->isSeparator()) texts << item->text();
    }
    gui::ExpectUniqueMnemonics(texts);
  }
}

TEST_F(MenusTest, EachLetterWithAltLeadsToOneMenuFieldOrButton) {
  QStringList texts;
  for (const QAction* menu : window_.menuBar()->actions()) texts << menu->text();
  for (const QLabel* label : window_.findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) texts << label->text();
  }
  for (const QPushButton* button : window_.findChildren<QPushButton*>()) texts << button->text();
  gui::ExpectUniqueMnemonics(texts);
}

TEST_F(MenusTest, OfPaneAndGrid) {
  EXPECT_EQ(Items("mnuPOP1"),
            QStringList({"mnuCopy Kopieren", "mnuCut Ausschneiden", "mnuPaste Einfügen", "mnuDelete Löschen",
                         "mnuSelectAll Alles markieren", "mnuClearAll Alles löschen", "mnuSaveAs Speichern",
                         "mnuOpen Öffnen...", "mnuPrint Drucken", "mnuBackColor Hintergrundfarbe...",
                         "mnuFont Schriftart...", "mnuBinInspect Binärdaten analysieren...",
                         "mnuInsertComment Kommentar einfügen"}));
}

TEST_F(MenusTest, EachOptionTogglesItsSetting) {
  const terminal::Options& options = terminal_.options;
  EXPECT_TRUE(options.show_commands && !options.show_response_times && !options.line_breaks);
  for (const char* item : {"mnuOption_0", "mnuOption_1", "mnuOption_2"}) Press(item);
  EXPECT_TRUE(!options.show_commands && options.show_response_times && options.line_breaks);
  for (const char* item : {"mnuOption_0", "mnuOption_1", "mnuOption_2"}) Press(item);
  EXPECT_TRUE(options.show_commands && !options.show_response_times && !options.line_breaks);
}

TEST_F(MenusTest, ASettingFollowsItsCheckMarkHoweverThatChanges) {
  const terminal::Options& options = terminal_.options;
  Find<QAction>("mnuOption_0")->setChecked(false);
  EXPECT_FALSE(options.show_commands);
  Find<QAction>("mnuOption_1")->setChecked(true);
  EXPECT_TRUE(options.show_response_times);
  Find<QAction>("mnuOption_0")->setChecked(true);
  EXPECT_TRUE(options.show_commands);
}

TEST_F(MenusTest, TheToolbarsButtonsStartWithTheirToolTips) {
  QStringList buttons;
  for (const QAction* button : Find<QToolBar>("Toolbar1")->actions()) {
    if (!button->isSeparator()) buttons << button->objectName() + ' ' + button->toolTip();
  }
  EXPECT_EQ(buttons,
            QStringList({"TB_SAVETERMWIN Save terminal window to file", "TB_PRINT Print terminal window",
                         "TB_PORTCONFIGURE Verbindung konfigurieren", "TB_CONNECT Verbindung aufbauen",
                         "TB_FLUSH Eingangspuffer flushen", "TB_OPENLOG Logdatei öffnen",
                         "TB_CLOSELOG Logdatei schließen", "TB_RECORDLOG Log aktivieren",
                         "TB_INSPECT Binärdaten analysieren", "TB_HELP Hilfe anzeigen"}));
}

TEST_F(MenusTest, EachButtonKeepsItsStateInTagAndImage) {
  QList<int> images;
  for (const char* bar : {"Toolbar1", "Toolbar3"}) {
    for (const QAction* button : Find<QToolBar>(bar)->actions()) {
      if (button->isSeparator()) continue;
      EXPECT_EQ(button->property("Tag"), QVariant(QStringLiteral("0"))) << button->objectName().toStdString();
      const QVariant image = button->property("Image");
      EXPECT_EQ(image.typeId(), QMetaType::Int) << button->objectName().toStdString();
      EXPECT_FALSE(images.contains(image.toInt())) << button->objectName().toStdString();
      EXPECT_FALSE(button->icon().isNull()) << button->objectName().toStdString();
      images << image.toInt();
    }
  }
}

}  // namespace
}  // namespace kolvane::window
