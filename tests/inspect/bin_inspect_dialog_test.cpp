#include "inspect/ui/bin_inspect_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <memory>

#include "base/runtime_error.h"
#include "base/temp_folder.h"
#include "inspect/dialog_fixture.h"
#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

using namespace std::string_literals;

TEST_F(BinInspectDialogTest, FitsTheUsualScreenWithALargeFont) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSize(14);
  QApplication::setFont(large);
  Open("A");
  constexpr QSize kScreen(1024, 768);
  constexpr QSize kFrame(20, 60);  // of the window
  EXPECT_LE(dialog_->width(), kScreen.width() - kFrame.width());
  EXPECT_LE(dialog_->height(), dialog_->screen()->availableSize().height() - kFrame.height());
  EXPECT_LE(dialog_->minimumSizeHint().width(), kScreen.width() - kFrame.width());
  EXPECT_LE(dialog_->minimumSizeHint().height(), kScreen.height() - kFrame.height());
  for (const auto* button : dialog_->findChildren<QAbstractButton*>())
    EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->text().toStdString();
  // The offscreen screen is narrower still: both parts have to give way.
  auto* values = Find<ValuePanel>("ValuePanel");
  EXPECT_TRUE(Dump()->width() >= Dump()->sizeHint().width() || values->width() <= values->WidthFor32Bits())
      << Dump()->width() << " and " << values->width();
  QApplication::setFont(before);
}

TEST_F(BinInspectDialogTest, HasExactTexts) {
  Open("A");
  EXPECT_EQ(dialog_->objectName(), "frmBinInspect");
  EXPECT_EQ(dialog_->windowTitle(), "Binärdaten analysieren");
  EXPECT_EQ(Find<QGroupBox>("Frame1")->title(), "Anzeigeformat");
  EXPECT_EQ(Find<QCheckBox>("chkMotorola")->text(), "Daten sind in Network Byte Order (Motorola)");
  QStringList captions;
  for (int index = 0; index < 6; ++index) captions << Option(index)->text();
  EXPECT_EQ(captions, (QStringList{"Byte", "Short integer (2-Byte)", "Long integer (4-Byte)",
                                   "Single precision float (4-Byte)", "Double precision float (8-Byte)",
                                   "Formatvorlage aus Datei"}));
  EXPECT_EQ(Find<QLabel>("NumDisplay")->font().family(), "Courier New");
  EXPECT_EQ(Templates()->font().family(), "Tahoma");
  EXPECT_EQ(Templates()->accessibleName(), "Formatvorlage");
}

TEST_F(BinInspectDialogTest, OpensOnTheFirstByteAsAByte) {
  Open("\x41\x42"s);
  EXPECT_TRUE(Option(0)->isChecked());
  EXPECT_EQ(Value(), "65");
  EXPECT_EQ(SelectedText(), "41");
  EXPECT_EQ(Dump()->View().caret, 5);
  EXPECT_TRUE(Dump()->hasFocus());
  auto* value = Find<QLabel>("NumDisplay");
  EXPECT_EQ(value->grab().toImage().pixelColor(value->rect().center() / 2), value->palette().base().color());
}

TEST_F(BinInspectDialogTest, AClickDecodesTheByteUnderIt) {
  Open(Ramp(64));
  ClickAt(2 * 62 + 16);
  EXPECT_EQ(Value(), "37");
  EXPECT_EQ(SelectedText(), "25");
  ClickAt(62 + 2);
  EXPECT_EQ(Value(), "16");
  ClickAt(50);
  EXPECT_EQ(Value(), "16");
}

TEST_F(BinInspectDialogTest, ANewFormatCountsFromTheNextClickOrKeyOn) {
  Open("\x01\x02\x03\x04"s);
  Option(1)->click();
  EXPECT_EQ(Value(), "1");
  QTest::keyClick(Dump(), Qt::Key_Shift);
  EXPECT_EQ(Value(), "513");
  EXPECT_EQ(SelectedText(), "0102");
  Find<QCheckBox>("chkMotorola")->click();
  EXPECT_EQ(Value(), "513");
  ClickAt(5);
  EXPECT_EQ(Value(), "258");
  QTest::keyClick(Dump(), Qt::Key_Right);
  EXPECT_EQ(Value(), "515");
}

TEST_F(BinInspectDialogTest, EveryOptionDecodesInItsFormat) {
  Open("\0\0\0\0\0\0\xF0\x3F"s);
  const char* const values[] = {"0", "0", "0", "0", "1"};
  for (int index = 0; index < 5; ++index) {
    Option(index)->click();
    ClickAt(5);
    EXPECT_EQ(Value(), values[index]) << index;
    EXPECT_EQ(state_.format_code, index);
  }
}

TEST_F(BinInspectDialogTest, RightAtALinesEndReachesTheNextLine) {
  Open(Ramp(32));
  ClickAt(38);
  EXPECT_EQ(Value(), "15");
  QTest::keyClick(Dump(), Qt::Key_Right);
  EXPECT_EQ(Value(), "16");
  EXPECT_EQ(Dump()->View().caret, 67);
}

TEST_F(BinInspectDialogTest, WithoutTemplatesTheListIsEmpty) {
  Open("A");
  EXPECT_EQ(Templates()->count(), 0);
  EXPECT_EQ(Templates()->currentIndex(), -1);
  EXPECT_FALSE(Templates()->isEnabled());
  Option(5)->click();
  EXPECT_TRUE(Templates()->isEnabled());
  EXPECT_EQ(state_.format_code, 4);
  EXPECT_FALSE(Lines()->isVisible());
}

TEST_F(BinInspectDialogTest, WithTemplatesTheFirstIsUsedAndItsLinesAreHidden) {
  AddTemplate("a.BNS", "BYTECOUNT=2\r\nSumme;SHORT;0\r\n");
  Open("\x01\x02"s);
  EXPECT_EQ(state_.format_code, 5);
  EXPECT_EQ(Templates()->currentText(), "a.BNS");
  EXPECT_FALSE(Lines()->isVisible());
  EXPECT_EQ(Value(), "");
  EXPECT_EQ(SelectedText(), "");
  EXPECT_EQ(state_.buffer, ByteBuffer{});
  for (int index = 0; index < 6; ++index) EXPECT_FALSE(Option(index)->isChecked()) << index;
  ClickAt(5);
  EXPECT_EQ(LineTexts(), QStringList{"Summe=513"});
  EXPECT_EQ(SelectedText(), "0102");
  EXPECT_EQ(Value(), "");
}

TEST_F(BinInspectDialogTest, TheTwoHandlersShowTheLinesOfDifferentTemplates) {
  for (const char* name : {"a.BNS", "b.BNS", "c.BNS"}) AddTemplate(name, name + ";BYTE;0"s);
  Open("A");
  const auto shown_after = [this](auto&& step) {
    step();
    return Lines()->isVisible();
  };
  EXPECT_TRUE(shown_after([&] { Option(5)->click(); }));
  EXPECT_TRUE(shown_after([&] { Templates()->setCurrentIndex(1); }));
  EXPECT_EQ(state_.format_code, 6);
  EXPECT_FALSE(shown_after([&] { Option(5)->click(); }));
  EXPECT_FALSE(shown_after([&] { Templates()->setCurrentIndex(2); }));
  EXPECT_FALSE(shown_after([&] { Templates()->setCurrentIndex(0); }));
  EXPECT_EQ(state_.format_code, 5);
  EXPECT_TRUE(shown_after([&] { Option(5)->click(); }));
  EXPECT_FALSE(shown_after([&] { Option(2)->click(); }));
  EXPECT_FALSE(Templates()->isEnabled());
}

TEST_F(BinInspectDialogTest, TheDumpEndsAboveItsLowerNeighbourAtEverySize) {
  AddTemplate("a.BNS", "");
  Open("A");
  for (const QSize size : {QSize(900, 900), dialog_->minimumSizeHint(), QSize(700, 500)}) {
    dialog_->resize(size);
    Option(5)->click();
    // 100 twips.
    EXPECT_EQ(Dump()->height(), Lines()->y() - Dump()->y() - 7);
    EXPECT_GE(Lines()->height(), 40);
    EXPECT_LE(Lines()->geometry().bottom(), Find<QLabel>("NumDisplay")->y());
    Option(0)->click();
    EXPECT_EQ(Dump()->height(), Find<QLabel>("NumDisplay")->y() - Dump()->y());
    EXPECT_EQ(Dump()->width(), Find<QLabel>("NumDisplay")->width());
  }
}

TEST_F(BinInspectDialogTest, LinesAreWindows1252) {
  AddTemplate("a.BNS",
              "BYTECOUNT=1\r\nGr\xF6\xDF"
              "e;STRING*1;0");
  Open("\x80"s);
  Option(5)->click();
  ClickAt(5);
  EXPECT_EQ(LineTexts(), QStringList{"Größe=\"€\""});
}

TEST_F(BinInspectDialogTest, AMissingTemplateGivesNoLines) {
  AddTemplate("a.BNS", "x;BYTE;0");
  Open("A");
  Option(5)->click();
  ClickAt(5);
  EXPECT_EQ(LineTexts(), QStringList{"x=0"});
  std::filesystem::remove(folder_.Path("a.BNS"));
  ClickAt(5);
  EXPECT_EQ(LineTexts(), QStringList{});
  EXPECT_EQ(SelectedText(), "");
}

TEST_F(BinInspectDialogTest, TheValueIsCopied) {
  Open("A");
  QTest::keyClick(Dump(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "65");
}

TEST_F(BinInspectDialogTest, WithoutAValueTheClipboardKeepsWhatItHolds) {
  AddTemplate("a.BNS", "x;BYTE;0");
  Open("A");
  ASSERT_EQ(Value(), "");
  QApplication::clipboard()->setText("kept");
  QTest::keyClick(Dump(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "kept");
}

TEST_F(BinInspectDialogTest, ALongTextIsSearchedWhole) {
  Open("ABC");
  QApplication::clipboard()->setText(QString(40'000, 'A'));
  auto* field = Find<QLineEdit>("InspectFind");
  field->paste();
  EXPECT_EQ(field->text().size(), 40'000);
}

TEST_F(BinInspectDialogTest, TheSelectedDigitsAreCopiedByMenu) {
  Open("AB");
  Option(1)->click();
  ClickAt(5);
  Dump()->actions().at(0)->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), "4142");
}

TEST_F(BinInspectDialogTest, LinesAreCopiedWhileTheyAreShown) {
  AddTemplate("a.BNS", "x;BYTE;0\r\ny;BYTE;0\r\nz;BYTE;0");
  Open("A");
  Option(5)->click();
  ClickAt(5);
  QTest::keyClick(Dump(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "x=0\ny=0\nz=0");
  Lines()->item(1)->setSelected(true);
  QTest::keyClick(Lines(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "y=0");
}

TEST_F(BinInspectDialogTest, TheKeyboardIsEnough) {
  Open("\x01\x02"s);
  QTest::keyClick(Dump(), Qt::Key_Tab);
  EXPECT_TRUE(Option(0)->hasFocus());
  QTest::keyClick(Option(0), Qt::Key_Down);
  EXPECT_TRUE(Option(1)->isChecked());
  QTest::keyClick(Option(1), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(Dump()->hasFocus());
  EXPECT_EQ(state_.format_code, 1);
  QTest::keyRelease(Dump(), Qt::Key_Backtab);
  EXPECT_EQ(Value(), "513");
  QTest::keyClick(Dump(), Qt::Key_Return);
  EXPECT_TRUE(dialog_->isVisible());
  QTest::keyClick(Dump(), Qt::Key_Escape);
  EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(BinInspectDialogTest, FormatAndByteOrderAreKeptForTheNextDialog) {
  Open("\x01\x02"s);
  Option(1)->click();
  Find<QCheckBox>("chkMotorola")->click();
  Open("\x01\x02"s);
  EXPECT_TRUE(Option(1)->isChecked());
  EXPECT_TRUE(Find<QCheckBox>("chkMotorola")->isChecked());
  EXPECT_EQ(Value(), "258");
}

TEST_F(BinInspectDialogTest, AFormatWithAMissingTemplateBecomesTheByte) {
  AddTemplate("a.BNS", "");
  Open("A");
  std::filesystem::remove(folder_.Path("a.BNS"));
  Open("A");
  EXPECT_TRUE(Option(0)->isChecked());
  EXPECT_EQ(Value(), "65");
}

TEST_F(BinInspectDialogTest, TooManyBytesAreAnOverflow) {
  Open("A");
  EXPECT_THROW(dialog_->Initialize(Marked(Ramp(32768))), base::RuntimeError);
  EXPECT_NO_THROW(dialog_->Initialize(Marked(Ramp(32752))));
}

TEST_F(BinInspectDialogTest, TwoRecordsDoNotInfluenceEachOther) {
  InspectorState other;
  Open("\x05"s);
  Option(1)->click();
  ClickAt(5);
  EXPECT_EQ(other.format_code, 0);
  EXPECT_EQ(other.buffer, ByteBuffer{});
}

}  // namespace
}  // namespace kolvane::inspect
