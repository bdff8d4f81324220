// The parts of the inspector besides dump, format and value.
#include <QAbstractButton>
#include <QFile>
#include <QFileSystemWatcher>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <filesystem>

#include "gui/fake_folder_memory.h"
#include "gui/mnemonics.h"
#include "inspect/tools_fixture.h"

namespace kolvane::inspect {
namespace {

using namespace std::string_literals;

TEST_F(InspectToolsTest, ThePanelShowsEachTypeAtTheStartAndAfterEachMove) {
  Open("\x01\x02\x03\x04"s);
  EXPECT_EQ(Cell("16 Bit ohne Vorzeichen", 1), "513");
  EXPECT_EQ(Cell("16 Bit ohne Vorzeichen", 2), "258");
  EXPECT_EQ(Cell("64 Bit mit Vorzeichen", 1), "");
  EXPECT_NE(Find<QTableWidget>("ValuePanel")->item(0, 1)->textAlignment() & Qt::AlignRight, 0);
  QTest::keyClick(Dump(), Qt::Key_Right);
  EXPECT_EQ(Cell("8 Bit ohne Vorzeichen", 1), "2");
  EXPECT_EQ(PositionText(), "Position 1 (&H1), 1 Byte markiert, Block 4 Bytes");
}

TEST_F(InspectToolsTest, WithTemplatesTheFirstClickShowsValues) {
  AddTemplate("a.BNS", "BYTECOUNT=2\r\nSumme;SHORT;0\r\n");
  Open("\x01\x02"s);
  EXPECT_EQ(Cell("8 Bit ohne Vorzeichen", 1), "1");
  ClickAt(7);
  EXPECT_EQ(Cell("8 Bit ohne Vorzeichen", 1), "2");
}

TEST_F(InspectToolsTest, ARecordBeyondTheBlockMarksOnlyItsBytes) {
  AddTemplate("a.BNS", "BYTECOUNT=20\r\na;BYTE;0\r\n");
  Open(Ramp(17));
  Type("GoToEdit", "5");
  EXPECT_EQ(PositionText(), "Position 5 (&H5), 12 Bytes markiert, Block 17 Bytes");
}

TEST_F(InspectToolsTest, AClickMeansTheByteUnderThePointer) {
  Open(Ramp(64));
  for (const std::size_t byte : {0u, 3u, 4u, 15u, 16u, 37u}) {
    for (const double share : {0.1, 0.6, 1.1, 1.7}) {
      QTest::mouseClick(Dump()->viewport(), Qt::LeftButton, {}, PointOf(PositionOfByte(byte), share));
      EXPECT_EQ(Caret(), byte) << byte << ' ' << share;
      EXPECT_EQ(Value(), QString::number(byte));
    }
  }
}

TEST_F(InspectToolsTest, GoesToAPositionOrReportsWhyNot) {
  Open(Ramp(64));
  Type("GoToEdit", "&H11");
  EXPECT_EQ(Caret(), 17u);
  EXPECT_EQ(Value(), "17");
  Type("GoToEdit", "-2");
  EXPECT_EQ(Caret(), 15u);
  Type("GoToEdit", "64");
  EXPECT_EQ(PositionText(), "Position 64 liegt außerhalb: Block 64 Bytes");
  Type("GoToEdit", "abc");
  EXPECT_EQ(PositionText(), "„abc“ ist keine Position");
  EXPECT_EQ(Caret(), 15u);
  EXPECT_EQ(Value(), "15");
}

TEST_F(InspectToolsTest, SearchesBytesAndTextsAcrossTheEnd) {
  Open("RIFF....WAVERIFF"s);
  Type("InspectFind", "RIFF");
  EXPECT_EQ(Caret(), 12u);
  EXPECT_EQ(PositionText(), "Position 12 (&HC), 4 Bytes markiert, Block 16 Bytes");
  Type("InspectFind", "RIFF");
  EXPECT_EQ(Caret(), 0u);
  Type("InspectFind", "57 41");
  EXPECT_EQ(Caret(), 8u);
  Type("InspectFind", "00");
  EXPECT_EQ(PositionText(), "„00“ nicht gefunden");
  EXPECT_EQ(Caret(), 8u);
}

TEST_F(InspectToolsTest, MovingTheCaretEndsTheMarkOfWhatWasFound) {
  Open("RIFF....WAVE"s);
  Type("InspectFind", "WAVE");
  Type("GoToEdit", "2");
  EXPECT_EQ(PositionText(), "Position 2 (&H2), 1 Byte markiert, Block 12 Bytes");
  EXPECT_EQ(Copied("CopyAsText"), "RIFF....WAVE");
  Type("InspectFind", "WAVE");
  QTest::keyClick(Dump(), Qt::Key_Right);
  EXPECT_EQ(PositionText(), "Position 9 (&H9), 1 Byte markiert, Block 12 Bytes");
}

TEST_F(InspectToolsTest, PageKeysMoveTheViewAndNotTheCaret) {
  Open(Ramp(2000));
  dialog_->resize(900, 500);
  ClickAt(5);
  QTest::keyClick(Dump(), Qt::Key_PageDown);
  const int top = Dump()->verticalScrollBar()->value();
  EXPECT_GT(top, 5);
  EXPECT_EQ(Dump()->View().caret, 5);
  QTest::keyClick(Dump(), Qt::Key_PageUp);
  EXPECT_EQ(Dump()->verticalScrollBar()->value(), 0);
  QTest::keyClick(Dump(), Qt::Key_PageDown);
  QTest::keyClick(Dump(), Qt::Key_Right);
  EXPECT_LT(Dump()->verticalScrollBar()->value(), top);
}

TEST_F(InspectToolsTest, CopiesTheWholeBlockOrTheSelection) {
  Open("ABCDEF");
  Option(1)->click();
  ClickAt(5);
  EXPECT_EQ(Copied("CopyAsHex"), "41 42 43 44 45 46");
  EXPECT_EQ(Copied("CopyAsBase64"), "QUJDREVG");
  QTest::mousePress(Dump()->viewport(), Qt::LeftButton, {}, PointOf(PositionOfByte(1), 0.5));
  QTest::mouseMove(Dump()->viewport(), PointOf(PositionOfByte(3), 1.5));
  QTest::mouseRelease(Dump()->viewport(), Qt::LeftButton, {}, PointOf(PositionOfByte(3), 1.5));
  EXPECT_EQ(Copied("CopyAsText"), "BCD");
  EXPECT_EQ(Caret(), 1u);
  EXPECT_EQ(SelectedText(), "4243");
  EXPECT_EQ(PositionText(), "Position 1 (&H1), 3 Bytes markiert, Block 6 Bytes");
  ClickAt(5);
  for (const int end : {12, 13}) {
    QTextCursor cursor = Dump()->textCursor();
    cursor.setPosition(7);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    Dump()->setTextCursor(cursor);
    EXPECT_EQ(Copied("CopyAsText"), "BCD") << "one digit of a byte selects it";
  }
}

TEST_F(InspectToolsTest, TheValuePanelHasRoomForItsLongestNumbers) {
  for (const std::string& bytes : {std::string(8, '\x81'), std::string(8, '\xff')}) {
    Open(bytes);
    auto* panel = Find<QTableWidget>("ValuePanel");
    panel->resize(panel->sizeHint());
    for (int row = 0; row < panel->rowCount(); ++row) {
      for (int column = 0; column < panel->columnCount(); ++column) {
        const QModelIndex cell = panel->model()->index(row, column);
        EXPECT_LE(panel->sizeHintForIndex(cell).width(), panel->columnWidth(column)) << row << ' ' << column;
      }
    }
  }
}

TEST_F(InspectToolsTest, CaptionsOfANarrowValuePanelShowTheirStart) {
  Open("AB");
  auto* panel = Find<QTableWidget>("ValuePanel");
  auto* header = panel->horizontalHeader();
  const int caption_width = header->fontMetrics().horizontalAdvance(panel->horizontalHeaderItem(2)->text());
  panel->resize(panel->columnWidth(0) + 3 * caption_width / 2, panel->height());
  for (int column = 1; column < panel->columnCount(); ++column) {
    const QString caption = panel->horizontalHeaderItem(column)->text();
    EXPECT_EQ(panel->horizontalHeaderItem(column)->toolTip(), caption);
    ASSERT_LT(header->sectionSize(column), header->fontMetrics().horizontalAdvance(caption));
    const auto start = [header, column, panel](const QString& text) {
      panel->horizontalHeaderItem(column)->setText(text);
      const int left = header->sectionViewportPosition(column);
      return header->grab(QRect(left, 0, header->sectionSize(column) / 2, header->height())).toImage();
    };
    EXPECT_EQ(start(caption), start(caption.left(caption.size() - 1)));
  }
}

TEST_F(InspectToolsTest, TheValuePanelCopiesWhatIsSelectedInIt) {
  Open("AB");
  auto* panel = Find<QTableWidget>("ValuePanel");
  panel->setFocus();
  panel->setCurrentCell(2, 2);
  QTest::keyClick(panel, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(panel->item(2, 2)->text()));
  EXPECT_NE(QGuiApplication::clipboard()->text(), Value());
}

TEST_F(InspectToolsTest, ThirdTemplatesAreReadOnDemand) {
  for (const char* name : {"a.BNS", "b.BNS", "c.BNS"})
    AddTemplate(name, "BYTECOUNT=2\r\n" + std::string(name, 1) + ";BYTE;1");
  Open("AB");
  Templates()->setCurrentIndex(2);
  EXPECT_FALSE(Lines()->isVisible());
  Click("cmdResultList");
  EXPECT_TRUE(Lines()->isVisible());
  EXPECT_EQ(LineTexts(), QStringList{"c=66"});
  Click("cmdResultList");
  EXPECT_FALSE(Lines()->isVisible());
  Option(5)->click();
  EXPECT_FALSE(Find<QPushButton>("cmdResultList")->isChecked());
  Templates()->setCurrentIndex(1);
  EXPECT_TRUE(Find<QPushButton>("cmdResultList")->isChecked());
}

TEST_F(InspectToolsTest, FieldsAreColoredAndALineShowsItsBytes) {
  AddTemplate("a.BNS", "BYTECOUNT=4\r\na;BYTE;0\r\nb;SHORT;2");
  Open("ABCDEF");
  Click("cmdResultList");
  EXPECT_EQ(Dump()->extraSelections().size(), 4);
  EXPECT_EQ(Dump()->extraSelections().at(2).cursor.selectedText(), "4344");
  EXPECT_EQ(Dump()->extraSelections().at(3).cursor.selectedText(), "CD");
  EXPECT_EQ(Lines()->item(1)->background().color(),
            Dump()->extraSelections().at(2).format.background().color());
  QTest::mouseClick(Lines()->viewport(), Qt::LeftButton, {},
                    Lines()->visualItemRect(Lines()->item(1)).center());
  EXPECT_EQ(Dump()->highlight(), (ByteRange{2, 2}));
  EXPECT_EQ(Caret(), 0u);
  EXPECT_EQ(Copied("CopyAsText"), "CD");
  QTest::keyClick(Lines(), Qt::Key_Up);
  EXPECT_EQ(Dump()->highlight(), (ByteRange{0, 1}));
  Option(0)->click();
  ClickAt(5);
  EXPECT_TRUE(Dump()->extraSelections().isEmpty());
}

TEST_F(InspectToolsTest, EachLetterWithAltLeadsToOneFieldOrButton) {
  Open("A");
  QStringList texts;
  for (const QAbstractButton* button : dialog_->findChildren<QAbstractButton*>()) texts << button->text();
  for (const QLabel* label : dialog_->findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) texts << label->text();
  }
  EXPECT_TRUE(texts.contains("Sch&ließen"));
  gui::ExpectUniqueMnemonics(texts);
}

TEST_F(InspectToolsTest, ATemplateIsRepeatedAndSavedAsCsv) {
  AddTemplate("a.BNS", "BYTECOUNT=2\r\na;BYTE;0\r\nb;BYTE;1");
  Open("ABCDE");
  Click("cmdResultList");
  Answer("SaveDialog", folder_.Path("one.csv"));
  Click("cmdSaveCsv");
  EXPECT_EQ(base::ReadBytes(folder_.Path("one.csv")), "a,b\n65,66\n");
  Find<QCheckBox>("chkRepeat")->click();
  EXPECT_EQ(LineTexts(), (QStringList{"1: a=65", "1: b=66", "2: a=67", "2: b=68", "3: a=69"}));
  QTest::mouseClick(Lines()->viewport(), Qt::LeftButton, {},
                    Lines()->visualItemRect(Lines()->item(3)).center());
  EXPECT_EQ(Dump()->highlight(), (ByteRange{3, 1})) << "field b of the second record";
  Answer("SaveDialog", folder_.Path("all.csv"));
  Click("cmdSaveCsv");
  EXPECT_EQ(base::ReadBytes(folder_.Path("all.csv")), "a,b\n65,66\n67,68\n69,\n");
}

TEST_F(InspectToolsTest, FileDialogsStartInTheFoldersUsedLast) {
  AddTemplate("a.BNS", "BYTECOUNT=2\r\na;BYTE;0\r\nb;BYTE;1");
  for (const char* kind : {"blocks", "records"}) std::filesystem::create_directory(folder_.Path(kind));
  Open("AB");
  gui::FakeFolderMemory memory(dialog_.get());
  Answer("SaveDialog", folder_.Path("blocks/a.bin"));
  Click("cmdSaveBlock");
  EXPECT_EQ(memory.folders["Block"], folder_.Path("blocks"));
  Answer("SaveDialog", folder_.Path("records/a.csv"));
  Click("cmdSaveCsv");
  EXPECT_EQ(memory.folders["Records"], folder_.Path("records"));
  base::WriteBytes(folder_.Path("blocks/a.bin"), "ABCDE");
  Answer("OpenDialog", "a.bin");
  Click("cmdLoadFile");
  EXPECT_TRUE(PositionText().endsWith("Block 5 Bytes")) << PositionText().toStdString();
}

TEST_F(InspectToolsTest, ATemplateIsRepeatedWithinThePage) {
  AddTemplate("a.BNS", "BYTECOUNT=200\r\na;BYTE;0");
  base::WriteBytes(folder_.Path("data"), std::string(kMaxDumpBytes + 400, 'A'));
  Open("A");
  Answer("OpenDialog", folder_.Path("data"));
  Click("cmdLoadFile");
  Click("cmdResultList");
  Find<QCheckBox>("chkRepeat")->click();
  EXPECT_EQ(LineTexts().size(), 164) << "as many as begin in it";
}

TEST_F(InspectToolsTest, AnEditedTemplateRunsAgain) {
  AddTemplate("a.BNS", "BYTECOUNT=1\r\na;BYTE;0");
  Open("AB");
  Click("cmdResultList");
  EXPECT_EQ(LineTexts(), QStringList{"a=65"});
  AddTemplate("a.BNS", "BYTECOUNT=1\r\nnew;BYTE;0");
  EXPECT_TRUE(QTest::qWaitFor([&] { return LineTexts() == QStringList{"new=65"}; }));
}

// As editors do that keep the old file under another name.
TEST_F(InspectToolsTest, ATemplateThatIsGoneForAWhileRunsAgain) {
  AddTemplate("a.BNS", "BYTECOUNT=1\r\na;BYTE;0");
  Open("AB");
  Click("cmdResultList");
  const QString file = QString::fromStdString(folder_.Path("a.BNS"));
  QFileSystemWatcher watcher({file});
  QSignalSpy gone(&watcher, &QFileSystemWatcher::fileChanged);
  ASSERT_TRUE(QFile::rename(file, file + '~'));
  ASSERT_TRUE(gone.wait());
  QCoreApplication::processEvents();
  EXPECT_EQ(LineTexts(), QStringList{"a=65"});
  AddTemplate("a.BNS", "BYTECOUNT=1\r\nnew;BYTE;0");
  EXPECT_TRUE(QTest::qWaitFor([&] { return LineTexts() == QStringList{"new=65"}; }));
}

TEST_F(InspectToolsTest, LinesThatFailedAreReported) {
  AddTemplate("a.BNS", "BYTECOUNT=1\r\na;BYTE;0\r\nb;FLAOT;0");
  Open("AB");
  EXPECT_FALSE(Find<QLabel>("TemplateProblems")->isVisible());
  Click("cmdResultList");
  EXPECT_EQ(Find<QLabel>("TemplateProblems")->text(), "Zeile 3: Typ „FLAOT“ unbekannt");
  EXPECT_TRUE(Find<QLabel>("TemplateProblems")->isVisible());
}

}  // namespace
}  // namespace kolvane::inspect
