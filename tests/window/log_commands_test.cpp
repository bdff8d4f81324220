#include <QLabel>

#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

class LogCommandsTest : public WindowFixture {
 protected:
  void OpenLog(const std::string& name) {
    ChooseFile(name);
    Press("TB_OPENLOG");
  }
  QString Status() { return Find<QLabel>("StatusBar2_1")->text(); }

  /// Tag, image, tool tip and state of the recording button.
  QString Button() {
    const auto* button = Find<QAction>("TB_RECORDLOG");
    return QStringLiteral("%1 %2 %3%4")
        .arg(button->property("Tag").toString())
        .arg(button->property("Image").toInt())
        .arg(button->toolTip(), button->isChecked() ? " pressed" : "");
  }
  void ExpectOpen(bool open) {
    for (const char* key : {"TB_OPENLOG", "mnuOpenLog"}) EXPECT_EQ(Enabled(key), !open) << key;
    for (const char* key : {"TB_CLOSELOG", "mnuCloseLog", "TB_RECORDLOG"})
      EXPECT_EQ(Enabled(key), open) << key;
  }

  std::string path_ = folder_.Path("a.LOG");
};

constexpr auto kOff = "0 28 Log aktivieren";
constexpr auto kOn = "1 25 Log deaktivieren pressed";

TEST_F(LogCommandsTest, StartsWithoutALog) {
  ExpectOpen(false);
  EXPECT_EQ(Status(), "Logdatei: Keine");
  EXPECT_EQ(Button(), kOff);
}

TEST_F(LogCommandsTest, OpensRecordsAndCloses) {
  base::WriteBytes(path_, "old\r\n");
  OpenLog(path_);
  ExpectOpen(true);
  EXPECT_EQ(Status(), "Logdatei: " + QString::fromStdString(path_));
  AddLine("not recorded");
  Press("TB_RECORDLOG");
  EXPECT_EQ(Button(), kOn);
  AddLine("Größe");
  EXPECT_EQ(base::ReadBytes(path_), "old\r\nGr\xF6\xDF\x65\r\n");
  Press("TB_RECORDLOG");
  EXPECT_EQ(Button(), kOff);
  AddLine("not recorded");
  Press("TB_CLOSELOG");
  ExpectOpen(false);
  EXPECT_EQ(Status(), "Logdatei: Keine");
  EXPECT_EQ(base::ReadBytes(path_), "old\r\nGr\xF6\xDF\x65\r\n");
}

TEST_F(LogCommandsTest, TheMenuAlsoOpensAndCloses) {
  ChooseFile(path_);
  Press("mnuOpenLog");
  ExpectOpen(true);
  Press("mnuCloseLog");
  ExpectOpen(false);
}

TEST_F(LogCommandsTest, ACancelledDialogChangesNothing) {
  Cancel<QFileDialog>();
  Press("TB_OPENLOG");
  EXPECT_EQ(dialogs_, 1);
  ExpectOpen(false);
  EXPECT_EQ(Status(), "Logdatei: Keine");
}

TEST_F(LogCommandsTest, AfterClosingWhileRecordingOnePressLeavesRecordingOff) {
  OpenLog(path_);
  Press("TB_RECORDLOG");
  Press("TB_CLOSELOG");
  EXPECT_EQ(Button(), "1 28 Log deaktivieren");
  OpenLog(path_);
  Press("TB_RECORDLOG");
  EXPECT_EQ(Button(), kOff);
  EXPECT_FALSE(terminal_.output.log_recording);
  Press("TB_RECORDLOG");
  EXPECT_EQ(Button(), kOn);
  EXPECT_TRUE(terminal_.output.log_recording);
}

TEST_F(LogCommandsTest, AMissingFolderIsReportedOnce) {
  AnswerBoxes();
  ChooseFile("/nirgends/a.LOG");
  Press("TB_OPENLOG");
  EXPECT_EQ(boxes_.texts(), QStringList("Die Logdatei „/nirgends/a.LOG“ kann nicht geöffnet werden: "
                                        "Datei oder Ordner nicht gefunden"));
  ExpectOpen(false);
}

TEST_F(LogCommandsTest, AFullDiskIsReportedOnceAndTheSessionContinues) {
  OpenLog("/dev/full");
  Press("TB_RECORDLOG");
  AnswerBoxes();
  AddLine("one");
  AddLine("two");
  EXPECT_EQ(boxes_.texts(),
            QStringList("Die Logdatei „/dev/full“ kann nicht geschrieben werden: Der Datenträger ist voll"));
  EXPECT_EQ(PaneText(), "\none\ntwo");
  ExpectOpen(false);
  EXPECT_EQ(Status(), "Logdatei: Keine");
}

TEST_F(LogCommandsTest, ClosingTheLogEndsTheRecording) {
  OpenLog(path_);
  Press("TB_RECORDLOG");
  window_.log().CloseLog();
  EXPECT_FALSE(terminal_.output.log_recording);
  AddLine("not recorded");
  EXPECT_EQ(base::ReadBytes(path_), "");
}

}  // namespace
}  // namespace kolvane::window
