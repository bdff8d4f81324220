// The reference of the $ commands in the pane.

#include <gtest/gtest.h>

#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

class ReferenceTest : public GridFixture {};

TEST_F(ReferenceTest, ShowsTheReferenceOfTheSpecialCommands) {
  base::WriteBytes(folder_.Path("TermCmdHelp.rtf"),
                   "{\\rtf1{\\colortbl;\\red0\\green0\\blue255;}\\par\\cf1 $STOP\\cf0  h\\'e4lt an\\par}");
  AddLine("alt");
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(PaneText(), "\n$STOP hält an");
  EXPECT_EQ(Pane()->text().caret(), 0u);
  EXPECT_EQ(Pane()->text().store().ColorAt(1), 0xFF0000);
  EXPECT_EQ(Pane()->text().store().ColorAt(6), base::kNoColor);
  AddLine("neu");
  EXPECT_EQ(PaneText(), "\n$STOP hält an\nneu");
}

TEST_F(ReferenceTest, TheReferenceIsBoldLikeItsFile) {
  base::WriteBytes(folder_.Path("TermCmdHelp.rtf"),
                   "{\\rtf1{\\colortbl;\\red0\\green0\\blue255;}\\b Titel\\par\\cf1 $STOP\\b0 x\\par}");
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(PaneText(), "Titel\n$STOPx");
  EXPECT_EQ(Pane()->text().store().ColorAt(0), base::kBold);
  EXPECT_EQ(Pane()->text().store().ColorAt(6), base::kBold | 0xFF0000);
  EXPECT_EQ(Pane()->text().store().ColorAt(11), 0xFF0000);
}

TEST_F(ReferenceTest, ASecondPressRestoresTheSession) {
  base::WriteBytes(folder_.Path("TermCmdHelp.rtf"), "{\\rtf1 $STOP\\par}");
  AddLine("vorher");
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(PaneText(), "$STOP");
  Press("mnuOption_1");
  library_.replies = {{"1\r\n"}};
  Find<QComboBox>("cmbCommand")->setCurrentText("A?");
  QTest::keyClick(Find<QComboBox>("cmbCommand"), Qt::Key_Return);
  EXPECT_TRUE(PaneText().startsWith("$STOP\n"));
  Press("TB_SPECIALCOMMANDS");
  const QStringList lines = PaneText().split('\n');
  ASSERT_EQ(lines.size(), 5) << PaneText().toStdString();
  EXPECT_EQ(lines[1], "vorher");
  EXPECT_EQ(lines[2], "A?");
  EXPECT_TRUE(lines[3].startsWith("1(dt = "));
  EXPECT_EQ(Pane()->text().store().ColorAt(static_cast<std::size_t>(PaneText().indexOf("A?"))),
            base::kCommandColor);
  EXPECT_EQ(Pane()->text().caret(), Pane()->text().Length() - 1);
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(PaneText(), "$STOP");
}

TEST_F(ReferenceTest, ATextThatReplacedTheReferenceStays) {
  base::WriteBytes(folder_.Path("TermCmdHelp.rtf"), "{\\rtf1 $STOP\\par}");
  for (const bool clears : {true, false}) {
    AddLine("alt");
    Press("TB_SPECIALCOMMANDS");
    if (clears) {
      Press("mnuClearAll");
    } else {
      base::WriteBytes(folder_.Path("a.TXT"), "geladen");
      ChooseFile(folder_.Path("a.TXT"));
      Press("mnuOpenTextFile");
    }
    EXPECT_EQ(PaneText(), clears ? "" : "geladen");
    Press("TB_SPECIALCOMMANDS");
    EXPECT_EQ(PaneText(), "$STOP");
    Press("TB_SPECIALCOMMANDS");
    EXPECT_EQ(PaneText(), clears ? "" : "geladen");
  }
}

TEST_F(ReferenceTest, ADamagedReferenceIsShownUpToTheFaultAndReported) {
  base::WriteBytes(folder_.Path("TermCmdHelp.rtf"), "{\\rtf1 $STOP");
  AnswerBoxes();
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(PaneText(), "$STOP");
  base::WriteBytes(folder_.Path("TermCmdHelp.rtf"), "$GOTO");
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(PaneText(), "");
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(PaneText(), "");
  const QString file = QString::fromStdString(folder_.Path("TermCmdHelp.rtf"));
  EXPECT_EQ(boxes_.texts(),
            (QStringList{file + ": Die Datei ist unvollständig", file + ": Die Datei ist keine RTF-Datei"}));
}

TEST_F(ReferenceTest, AMissingReferenceIsAMessage) {
  AnswerBoxes();
  AddLine("bleibt");
  Press("TB_SPECIALCOMMANDS");
  EXPECT_TRUE(PaneText().endsWith("bleibt"));
  EXPECT_EQ(boxes_.texts(),
            QStringList{"Die Datei „" + QString::fromStdString(folder_.Path("TermCmdHelp.rtf")) +
                        "“ kann nicht gelesen werden: Datei oder Ordner nicht gefunden"});
}

TEST_F(ReferenceTest, TheCaseOfTheReferencesFileDoesNotMatter) {
  base::WriteBytes(folder_.Path("TERMCMDHELP.RTF"), "{\\rtf1 $STOP\\par}");
  Press("TB_SPECIALCOMMANDS");
  EXPECT_TRUE(PaneText().contains("$STOP"));
}

}  // namespace
}  // namespace kolvane::window
