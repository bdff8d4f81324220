#include <gtest/gtest.h>

#include "inspect/ui/bin_inspect_dialog.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

using inspect::BinInspectDialog;

class InspectCommandTest : public WindowFixture {
 protected:
  void ShowMarked(const std::string& line) {
    AddLine(line);
    Pane()->Select(Pane()->text().Length() - line.size(), Pane()->text().Length());
  }

  QString DumpAfter(const char* command) {
    QString dump;
    OnDialog<BinInspectDialog>([&dump](BinInspectDialog& dialog) {
      EXPECT_TRUE(dialog.isModal());
      dump = dialog.findChild<QPlainTextEdit*>("txtBinData")->toPlainText();
      dialog.reject();
    });
    Press(command);
    return dump;
  }
};

TEST_F(InspectCommandTest, WithoutASelectionTheUserIsAskedForOne) {
  AddLine("<41><42>");
  AnswerBoxes();
  Press("TB_INSPECT");
  Press("mnuBinInspect");
  const QString text = "Bitte markieren Sie einen Binärdatenblock, den Sie analysieren möchten.";
  EXPECT_EQ(boxes_.texts(), (QStringList{text, text}));
}

TEST_F(InspectCommandTest, ButtonAndMenuShowTheSelection) {
  ShowMarked("<41><42><43>");
  const QString dump = "0000 414243                                 ABC.............\n";
  EXPECT_EQ(DumpAfter("TB_INSPECT"), dump);
  EXPECT_EQ(DumpAfter("mnuBinInspect"), dump);
  EXPECT_EQ(dialogs_, 2);
}

TEST_F(InspectCommandTest, LineEndsOfThePaneCountAsTwoCharacters) {
  AddLine("<41>");
  AddLine("<42>");
  Pane()->Select(0, Pane()->text().Length());
  EXPECT_EQ(DumpAfter("TB_INSPECT"), "0000 \n41\n42                               .A.B............\n");
}

TEST_F(InspectCommandTest, CharactersAreThoseOfTheCodePage) {
  ShowMarked("ä€<41>");
  EXPECT_EQ(DumpAfter("TB_INSPECT").left(9), "0000 ä€41");
}

TEST_F(InspectCommandTest, TooLargeASelectionShowsAMessageAndNoDialog) {
  std::string block;
  for (int i = 0; i < 32768; ++i) block += "<41>";
  ShowMarked(block);
  AnswerBoxes();
  Press("TB_INSPECT");
  EXPECT_EQ(boxes_.texts(), QStringList{"Überlauf"});
}

TEST_F(InspectCommandTest, TheChosenFormatStaysForTheNextBlock) {
  ShowMarked("<01><02>");
  OnDialog<BinInspectDialog>([](BinInspectDialog& dialog) {
    dialog.findChild<QRadioButton*>("optFormat_1")->click();
    dialog.reject();
  });
  Press("TB_INSPECT");
  OnDialog<BinInspectDialog>([](BinInspectDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("NumDisplay")->text(), "513");
    dialog.reject();
  });
  Press("TB_INSPECT");
  EXPECT_EQ(dialogs_, 2);
}

}  // namespace
}  // namespace kolvane::window
