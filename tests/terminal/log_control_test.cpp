#include "terminal/log_control.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/fake_prompt.h"
#include "base/small_files.h"
#include "base/temp_folder.h"
#include "pane/fake_pane.h"
#include "terminal/session_fakes.h"

namespace kolvane::terminal {
namespace {

namespace fs = std::filesystem;

class RecordingObserver final : public LogObserver {
 public:
  void LogChanged() override { ++changes; }
  int changes = 0;
};

class LogControlTest : public testing::Test {
 protected:
  LogControlTest() { log_.Observe(&observer_); }

  std::string Button() const {
    const LogButtonState& button = log_.button();
    return std::to_string(button.tag) + " " + std::to_string(button.image) + " " +
           std::string(button.tool_tip) + (button.pressed ? " pressed" : "");
  }

  base::TempFolder folder_;
  std::string path_ = folder_.Path("a.LOG");
  OutputFlags flags_;
  base::FakePrompt prompt_;
  pane::FakePane pane_;
  RecordingObserver observer_;
  LogControl log_{flags_, prompt_};
  Output output_{flags_, pane_, log_};
};

constexpr auto kOff = "0 28 Log aktivieren";
constexpr auto kOn = "1 25 Log deaktivieren pressed";

TEST_F(LogControlTest, StartsWithoutALog) {
  EXPECT_FALSE(log_.IsOpen());
  EXPECT_EQ(log_.StatusText(), "Logdatei: Keine");
  EXPECT_EQ(Button(), kOff);
}

TEST_F(LogControlTest, OpeningShowsThePathAndRecordsNothing) {
  log_.OpenLog(path_);
  output_.AddLine(LineKind::kAnswer, "not recorded");
  EXPECT_TRUE(log_.IsOpen());
  EXPECT_EQ(log_.StatusText(), "Logdatei: " + path_);
  EXPECT_EQ(Button(), kOff);
  EXPECT_FALSE(flags_.log_recording);
  EXPECT_EQ(base::ReadBytes(path_), "");
  EXPECT_EQ(observer_.changes, 1);
}

TEST_F(LogControlTest, ARelativeNameIsShownWithItsFolder) {
  const fs::path before = fs::current_path();
  fs::current_path(folder_.Path("."));
  const std::string full = (fs::current_path() / "a.LOG").string();
  log_.OpenLog("a.LOG");
  fs::current_path(before);
  EXPECT_EQ(log_.StatusText(), "Logdatei: " + full);
  log_.WriteLine("x");
  EXPECT_EQ(base::ReadBytes(path_), "x\r\n");
}

TEST_F(LogControlTest, AnEmptyNameIsAFailure) {
  log_.OpenLog("");
  EXPECT_FALSE(log_.IsOpen());
  EXPECT_EQ(log_.StatusText(), "Logdatei: Keine");
  ASSERT_EQ(prompt_.errors.size(), 1u);
  EXPECT_TRUE(prompt_.errors.front().starts_with("Die Logdatei „“ ")) << prompt_.errors.front();
}

TEST_F(LogControlTest, RecordsBetweenTwoPresses) {
  log_.OpenLog(path_);
  log_.PressRecord();
  EXPECT_EQ(Button(), kOn);
  output_.AddLine(LineKind::kCommand, "Größe");
  output_.AddLine(LineKind::kAnswer, "");
  EXPECT_EQ(base::ReadBytes(path_), "Gr\xF6\xDF\x65\r\n\r\n");
  log_.PressRecord();
  EXPECT_EQ(Button(), kOff);
  output_.AddLine(LineKind::kAnswer, "not recorded");
  EXPECT_EQ(base::ReadBytes(path_), "Gr\xF6\xDF\x65\r\n\r\n");
}

TEST_F(LogControlTest, AppendsToWhatTheFileHolds) {
  base::WriteBytes(path_, "old\r\n");
  log_.OpenLog(path_);
  log_.PressRecord();
  output_.AddLine(LineKind::kAnswer, "new");
  EXPECT_EQ(base::ReadBytes(path_), "old\r\nnew\r\n");
}

TEST_F(LogControlTest, EachLineOfAnAnswerStartsWithItsTime) {
  flags_.log_time_stamps = true;
  log_.OpenLog(path_);
  log_.PressRecord();
  output_.AddLine(LineKind::kAnswer, "A\r\nB\r\n");
  const std::string text = base::ReadBytes(path_);
  const std::string time = text.substr(0, text.find('A'));
  EXPECT_EQ(time.size(), sizeof "2026-11-21 15:01:04.123 " - 1);
  EXPECT_EQ(text, time + "A\r\n" + time + "B\r\n" + time + "\r\n");
}

TEST_F(LogControlTest, ClosingEndsRecordingButKeepsTagAndToolTip) {
  log_.OpenLog(path_);
  log_.PressRecord();
  log_.CloseLog();
  EXPECT_EQ(Button(), "1 28 Log deaktivieren");
  EXPECT_FALSE(flags_.log_recording);
  EXPECT_FALSE(log_.IsOpen());
  EXPECT_EQ(log_.StatusText(), "Logdatei: Keine");
}

TEST_F(LogControlTest, AfterClosingWhileRecordingTheSecondPressRecords) {
  log_.OpenLog(path_);
  log_.PressRecord();
  log_.CloseLog();
  log_.OpenLog(path_);
  log_.PressRecord();
  EXPECT_EQ(Button(), kOff);
  EXPECT_FALSE(flags_.log_recording);
  log_.PressRecord();
  EXPECT_EQ(Button(), kOn);
  EXPECT_TRUE(flags_.log_recording);
}

TEST_F(LogControlTest, ClosingWithoutALogChangesNothing) {
  flags_.log_recording = true;
  log_.CloseLog();
  log_.CloseLog();
  EXPECT_TRUE(flags_.log_recording);
  EXPECT_EQ(observer_.changes, 0);
}

TEST_F(LogControlTest, APressWithoutALogChangesNothing) {
  log_.PressRecord();
  EXPECT_EQ(Button(), kOff);
  EXPECT_FALSE(flags_.log_recording);
  EXPECT_EQ(observer_.changes, 0);
}

TEST_F(LogControlTest, AFlagSetElsewhereDoesNotChangeTheButton) {
  log_.OpenLog(path_);
  flags_.log_recording = true;
  output_.AddLine(LineKind::kAnswer, "recorded");
  EXPECT_EQ(Button(), kOff);
  EXPECT_EQ(base::ReadBytes(path_), "recorded\r\n");
}

TEST_F(LogControlTest, ASingleLineNeedsNoRecording) {
  log_.WriteLine("lost");
  log_.OpenLog(path_);
  log_.WriteLine("one");
  EXPECT_EQ(base::ReadBytes(path_), "one\r\n");
}

TEST_F(LogControlTest, OpeningClosesThePreviousLog) {
  const std::string other = folder_.Path("b.LOG");
  log_.OpenLog(path_);
  log_.PressRecord();
  log_.OpenLog(other);
  EXPECT_FALSE(flags_.log_recording);
  EXPECT_EQ(log_.StatusText(), "Logdatei: " + other);
  log_.WriteLine("one");
  EXPECT_EQ(base::ReadBytes(path_), "");
  EXPECT_EQ(base::ReadBytes(other), "one\r\n");
}

TEST_F(LogControlTest, AMissingFolderIsReported) {
  flags_.log_recording = true;
  log_.OpenLog("/nirgends/a.LOG");
  EXPECT_EQ(
      prompt_.errors,
      Lines{"Die Logdatei „/nirgends/a.LOG“ kann nicht geöffnet werden: Datei oder Ordner nicht gefunden"});
  EXPECT_FALSE(log_.IsOpen());
  EXPECT_FALSE(flags_.log_recording);
  EXPECT_EQ(log_.StatusText(), "Logdatei: Keine");
}

TEST_F(LogControlTest, NamesThatAreNotFilesAreReported) {
  log_.OpenLog(folder_.Path(""));
  log_.OpenLog("");
  log_.OpenLog(std::string("a\0b", 3));
  ASSERT_EQ(prompt_.errors.size(), 3u);
  EXPECT_TRUE(prompt_.errors[0].ends_with("“ kann nicht geöffnet werden: Der Name bezeichnet einen Ordner"));
  EXPECT_EQ(prompt_.errors[1],
            "Die Logdatei „“ kann nicht geöffnet werden: Datei oder Ordner nicht gefunden");
  EXPECT_TRUE(prompt_.errors[2].ends_with("“ kann nicht geöffnet werden: Der Name ist ungültig"));
}

TEST_F(LogControlTest, AFullDiskShowsOneMessageAndTheSessionContinues) {
  log_.OpenLog("/dev/full");
  log_.PressRecord();
  output_.AddLine(LineKind::kAnswer, "one");
  output_.AddLine(LineKind::kAnswer, "two");
  EXPECT_EQ(prompt_.errors,
            Lines{"Die Logdatei „/dev/full“ kann nicht geschrieben werden: Der Datenträger ist voll"});
  EXPECT_EQ(pane_.lines, (Lines{"one", "two"}));
  EXPECT_FALSE(log_.IsOpen());
  EXPECT_FALSE(flags_.log_recording);
  EXPECT_EQ(Button(), "1 28 Log deaktivieren");
}

TEST_F(LogControlTest, AFileAtItsLimitDoesNotEndTheProgram) {
  const base::SmallFiles small(8);
  log_.OpenLog(path_);
  log_.PressRecord();
  output_.AddLine(LineKind::kAnswer, "123456");
  EXPECT_TRUE(prompt_.errors.empty());
  output_.AddLine(LineKind::kAnswer, "7");
  EXPECT_EQ(prompt_.errors,
            Lines{"Die Logdatei „" + path_ + "“ kann nicht geschrieben werden: Die Datei würde zu groß"});
  EXPECT_EQ(base::ReadBytes(path_), "123456\r\n");
}

// The message box runs an event loop, in which further lines may arrive or the log may be opened again.
TEST_F(LogControlTest, WhatHappensDuringTheMessageFindsNoLog) {
  base::FakePrompt prompt;
  LogControl log(flags_, prompt);
  Output output(flags_, pane_, log);
  prompt.at_error = [&] {
    EXPECT_FALSE(log.IsOpen());
    output.AddLine(LineKind::kAnswer, "meanwhile");
    log.CloseLog();
    log.OpenLog(path_);
  };
  log.OpenLog("/dev/full");
  log.PressRecord();
  output.AddLine(LineKind::kAnswer, "failing");
  output.AddLine(LineKind::kAnswer, "after");
  EXPECT_EQ(prompt.errors.size(), 1u);
  EXPECT_EQ(pane_.lines, (Lines{"failing", "meanwhile", "after"}));
  EXPECT_EQ(log.StatusText(), "Logdatei: " + path_);
}

}  // namespace
}  // namespace kolvane::terminal
