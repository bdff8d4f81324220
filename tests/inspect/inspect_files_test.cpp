// Blocks that are files, of several pages or long.
#include <QProgressDialog>
#include <filesystem>

#include "base/small_files.h"
#include "inspect/tools_fixture.h"

namespace kolvane::inspect {
namespace {

using namespace std::string_literals;

class InspectFilesTest : public InspectToolsTest {};

TEST_F(InspectFilesTest, AFileIsLoadedPageByPage) {
  const std::string bytes = Ramp(kMaxDumpBytes) + "second page";
  base::WriteBytes(folder_.Path("data"), bytes);
  Open("A");
  EXPECT_FALSE(Find<QPushButton>("cmdNextPage")->isVisible());
  Answer("OpenDialog", folder_.Path("data"));
  Click("cmdLoadFile");
  EXPECT_EQ(BytesOf(Dump()->View().text), Ramp(kMaxDumpBytes));
  EXPECT_EQ(Value(), "0");
  EXPECT_FALSE(Find<QPushButton>("cmdPreviousPage")->isEnabled());
  Click("cmdNextPage");
  EXPECT_EQ(BytesOf(Dump()->View().text), "second page");
  EXPECT_EQ(PositionText(), "Position 32752 (&H7FF0), 1 Byte markiert, Block 32763 Bytes, Seite 2 von 2");
  EXPECT_FALSE(Find<QPushButton>("cmdNextPage")->isEnabled());
  Type("GoToEdit", "3");
  EXPECT_EQ(Value(), "3");
  Type("InspectFind", "page");
  EXPECT_EQ(Caret(), 7u);
  Answer("SaveDialog", folder_.Path("copy"));
  Click("cmdSaveBlock");
  EXPECT_EQ(base::ReadBytes(folder_.Path("copy")), bytes);
}

TEST_F(InspectFilesTest, ValuesAndHitsContinueOnTheNextPage) {
  base::WriteBytes(folder_.Path("data"), std::string(kMaxDumpBytes - 2, '\0') + "ABCDEFGH");
  Open("A");
  Drop(folder_.Path("data"));
  Type("InspectFind", "\"ABCD\"");
  EXPECT_EQ(PositionText(), "Position 32750 (&H7FEE), 4 Bytes markiert, Block 32758 Bytes, Seite 1 von 2");
  EXPECT_EQ(Copied("CopyAsText"), "ABCD");
  EXPECT_EQ(Cell("Zeichen", 1), "ABCDEFGH");
  EXPECT_EQ(Cell("32 Bit ohne Vorzeichen", 2), "1094861636");
}

TEST_F(InspectFilesTest, CopyingWithoutAMarkTakesAllPages) {
  const std::string bytes = std::string(kMaxDumpBytes, 'A') + "BC";
  base::WriteBytes(folder_.Path("data"), bytes);
  Open("D");
  Drop(folder_.Path("data"));
  EXPECT_EQ(Copied("CopyAsText").toStdString(), bytes);
  Type("GoToEdit", std::to_string(kMaxDumpBytes).c_str());
  EXPECT_EQ(Copied("CopyAsText").toStdString(), bytes);
}

TEST_F(InspectFilesTest, CopyingTakesAtMostSixteenMegabytes) {
  constexpr std::uintmax_t kMost = 16u << 20;
  QApplication::clipboard()->setText("before");
  base::WriteBytes(folder_.Path("data"), "");
  std::filesystem::resize_file(folder_.Path("data"), kMost + 1);
  Open("D");
  Drop(folder_.Path("data"));
  EXPECT_EQ(Copied("CopyAsBase64"), "before");
  EXPECT_EQ(
      PositionText(),
      "Der Block ist zu lang zum Kopieren, möglich sind 16 MB. „Block speichern...“ schreibt ihn ganz.");
  std::filesystem::resize_file(folder_.Path("data"), kMost);
  Drop(folder_.Path("data"));
  Find<QAction>("CopyAsBase64")->trigger();
  EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::clipboard()->text() != "before"; }, 60'000));
  EXPECT_EQ(QApplication::clipboard()->text().size(), (kMost + 2) / 3 * 4);
}

/// A file of a gigabyte of zeros, for work that takes several slices.
class LongInspectTest : public InspectFilesTest {
 protected:
  LongInspectTest() {
    base::WriteBytes(folder_.Path("data"), "");
    std::filesystem::resize_file(folder_.Path("data"), std::uintmax_t{1} << 30);
  }
  QProgressDialog* Progress() { return dialog_->findChild<QProgressDialog*>("ProgressDialog"); }
  bool Ended() {
    return QTest::qWaitFor([this] { return Progress() == nullptr; }, 60'000);
  }
};

TEST_F(LongInspectTest, ASearchCanBeCancelled) {
  Open("A");
  Drop(folder_.Path("data"));
  const QString before = PositionText();
  Type("InspectFind", "X");
  ASSERT_NE(Progress(), nullptr);
  EXPECT_EQ(Progress()->labelText(), "Bytes werden gesucht …");
  Progress()->cancel();
  EXPECT_TRUE(Ended());
  EXPECT_EQ(PositionText(), before);
}

TEST_F(LongInspectTest, ASearchEndsWithAnotherOneOrAnotherFile) {
  base::WriteBytes(folder_.Path("short"), "AX");
  Open("A");
  Drop(folder_.Path("data"));
  Type("InspectFind", "X");
  Type("InspectFind", "Y");
  EXPECT_EQ(dialog_->findChildren<QProgressDialog*>().size(), 1);
  Drop(folder_.Path("short"));
  const QString before = PositionText();
  Progress()->cancel();
  EXPECT_TRUE(Ended());
  EXPECT_EQ(PositionText(), before);
  Type("InspectFind", "X");
  EXPECT_EQ(Caret(), 1u);
}

TEST_F(LongInspectTest, AllRecordsOfALongBlockAreSaved) {
  constexpr int kRecords = 100'000;
  AddTemplate("a.BNS", "BYTECOUNT=2\r\na;BYTE;0");
  std::filesystem::resize_file(folder_.Path("data"), 2 * kRecords);
  Open("A");
  Drop(folder_.Path("data"));
  Find<QCheckBox>("chkRepeat")->setChecked(true);
  Answer("SaveDialog", folder_.Path("all.csv"));
  Click("cmdSaveCsv");
  EXPECT_TRUE(Ended());
  std::string expected = "a\n";
  for (int record = 0; record < kRecords; ++record) expected += "0\n";
  EXPECT_EQ(base::ReadBytes(folder_.Path("all.csv")), expected);
}

TEST_F(LongInspectTest, ACancelledFileIsNotWritten) {
  AddTemplate("a.BNS", "BYTECOUNT=1\r\na;BYTE;0");
  Open("A");
  Drop(folder_.Path("data"));
  Find<QCheckBox>("chkRepeat")->setChecked(true);
  for (const char* button : {"cmdSaveBlock", "cmdSaveCsv"}) {
    Answer("SaveDialog", folder_.Path("copy.csv"));
    Click(button);
    ASSERT_NE(Progress(), nullptr) << button;
    Progress()->cancel();
    EXPECT_TRUE(Ended());
    EXPECT_FALSE(std::filesystem::exists(folder_.Path("copy.csv"))) << button;
  }
}

TEST_F(LongInspectTest, AFullDiskLeavesNoFile) {
  AddTemplate("a.BNS", "BYTECOUNT=1\r\na;BYTE;0");
  Open("A");
  Drop(folder_.Path("data"));
  Find<QCheckBox>("chkRepeat")->setChecked(true);
  const base::SmallFiles small(1 << 20);
  for (const char* button : {"cmdSaveBlock", "cmdSaveCsv"}) {
    Answer("SaveDialog", folder_.Path("copy.csv"));
    Click(button);
    EXPECT_TRUE(Ended());
    EXPECT_EQ(PositionText(), "Die Datei „" + QString::fromStdString(folder_.Path("copy.csv")) +
                                  "“ kann nicht geschrieben werden: Die Datei würde zu groß");
    EXPECT_FALSE(std::filesystem::exists(folder_.Path("copy.csv"))) << button;
  }
}

TEST_F(InspectFilesTest, APositionOnAnotherPageRunsTheTemplate) {
  AddTemplate("a.BNS", "BYTECOUNT=1\r\na;BYTE;0");
  base::WriteBytes(folder_.Path("data"), std::string(kMaxDumpBytes, 'A') + "BC");
  Open("D");
  Drop(folder_.Path("data"));
  EXPECT_EQ(LineTexts(), QStringList()) << "a new block";
  Type("GoToEdit", QString::number(kMaxDumpBytes + 1));
  EXPECT_EQ(LineTexts(), QStringList{"a=67"});
}

TEST_F(InspectFilesTest, AnotherBlockHasNothingSelected) {
  base::WriteBytes(folder_.Path("data"), "UVWXYZ");
  Open("ABCDEF");
  Option(1)->click();
  QTest::mousePress(Dump()->viewport(), Qt::LeftButton, {}, PointOf(PositionOfByte(1), 0.5));
  QTest::mouseMove(Dump()->viewport(), PointOf(PositionOfByte(3), 1.5));
  QTest::mouseRelease(Dump()->viewport(), Qt::LeftButton, {}, PointOf(PositionOfByte(3), 1.5));
  ASSERT_EQ(Copied("CopyAsText"), "BCD");
  Drop(folder_.Path("data"));
  EXPECT_EQ(Copied("CopyAsText"), "UVWXYZ");
}

TEST_F(InspectFilesTest, ADroppedFileIsLoadedAndAFailureIsReported) {
  base::WriteBytes(folder_.Path("data"), "XYZ");
  Open("A");
  Drop(folder_.Path("data"));
  EXPECT_EQ(Value(), "88");
  std::filesystem::remove(folder_.Path("data"));
  Drop(folder_.Path("data"));
  EXPECT_TRUE(PositionText().startsWith("Die Datei „")) << PositionText().toStdString();
  EXPECT_EQ(Value(), "88");
}

}  // namespace
}  // namespace kolvane::inspect
