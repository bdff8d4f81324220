#include "component/headless_pane.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "component/captured_output.h"
#include "terminal/texts.h"

namespace kolvane::component {
namespace {

namespace texts = terminal::texts;

struct HeadlessPaneTest : testing::Test {
  CapturedOutput out;
  CapturedOutput err;
  HeadlessMessages messages{err.fd(), true};
  HeadlessPane pane{out.fd(), messages};
};

TEST_F(HeadlessPaneTest, AnAnswerIsWrittenOnceItsExchangeIsOver) {
  pane.AppendLine("1.5", terminal::kNoColor);
  pane.Refresh();
  EXPECT_EQ(out.text(), "");
  pane.EndLine();
  EXPECT_EQ(out.text(), "1.5\n");
  pane.EndLine();
  EXPECT_EQ(out.text(), "1.5\n");
}

TEST_F(HeadlessPaneTest, TheNextLineEndsTheOneBefore) {
  pane.AppendLine("1", terminal::kNoColor);
  pane.AppendLine("2", terminal::kNoColor);
  EXPECT_EQ(out.text(), "1\n");
}

TEST_F(HeadlessPaneTest, ACommandIsWrittenAtOnce) {
  pane.AppendLine("MSV?", terminal::kCommandColor);
  EXPECT_EQ(out.text(), "MSV?\n");
}

TEST_F(HeadlessPaneTest, TheResponseTimeStandsBehindTheAnswer) {
  pane.AppendLine("1", terminal::kNoColor);
  pane.AppendText(texts::ResponseTime("0,5"), 0);
  pane.AppendLine("2", terminal::kNoColor);
  pane.EndLine();
  EXPECT_EQ(out.text(), "1(dt = 0,5 ms)\n2\n");
}

TEST_F(HeadlessPaneTest, TheResponseTimeOfASuppressedAnswerIsALineOfItsOwn) {
  pane.AppendText(texts::ResponseTime("0,5"), 0);
  pane.EndLine();
  EXPECT_EQ(out.text(), "(dt = 0,5 ms)\n");
}

TEST_F(HeadlessPaneTest, AnEmptyAnswerIsAnEmptyLine) {
  pane.AppendLine("", terminal::kNoColor);
  pane.EndLine();
  EXPECT_EQ(out.text(), "\n");
}

TEST_F(HeadlessPaneTest, LineBreaksInAnAnswerAreLineFeeds) {
  pane.AppendLine("a\r\nb\r\n\r\nc\r\n", terminal::kNoColor);
  pane.EndLine();
  EXPECT_EQ(out.text(), "a\nb\n\nc\n");
}

TEST_F(HeadlessPaneTest, OtherControlCharactersAreWrittenAsTheyAre) {
  const std::string answer("\0a\rb\tc\x1B[0m\x7Fü\0", 14);
  pane.AppendLine(answer, terminal::kNoColor);
  pane.EndLine();
  EXPECT_EQ(out.text(), answer + "\n");
}

TEST_F(HeadlessPaneTest, AWriteErrorIsAMessage) {
  pane.AppendLine("1", terminal::kNoColor);
  pane.AppendText(texts::WriteError("-5"), 0);
  pane.EndLine();
  EXPECT_EQ(out.text(), "1\n");
  EXPECT_EQ(err.text(), "kolvane: Write error: -5\n");
}

TEST_F(HeadlessPaneTest, LinesOfAConnectionChangeAreNotices) {
  pane.SetConnectionNotices(true);
  pane.AppendLine("connected", terminal::kNoColor);
  pane.SetConnectionNotices(false);
  pane.AppendLine("answer", terminal::kNoColor);
  pane.EndLine();
  EXPECT_EQ(out.text(), "answer\n");
  EXPECT_EQ(err.text(), "kolvane: connected\n");
}

TEST_F(HeadlessPaneTest, WhatStandsInAnAnswersPlaceIsANoticeAndTheSameWordsAsAnAnswerAreNot) {
  pane.SetCommand("stp");
  pane.AppendLine(texts::kMeasuringStopped, terminal::kNoColor);
  pane.SetCommand("ECHO?");
  pane.AppendLine(texts::kMeasuringStopped, terminal::kNoColor);
  pane.EndLine();
  EXPECT_EQ(out.text(), std::string(texts::kMeasuringStopped) + "\n");
  EXPECT_EQ(err.text(), "kolvane: " + std::string(texts::kMeasuringStopped) + "\n");
}

TEST_F(HeadlessPaneTest, ClearingDoesNothing) {
  pane.AppendLine("1", terminal::kNoColor);
  pane.Clear();
  pane.EndLine();
  EXPECT_EQ(out.text(), "1\n");
}

TEST_F(HeadlessPaneTest, AFailureIsKeptAndNothingMoreIsWritten) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  HeadlessPane failing(full, messages);
  EXPECT_EQ(failing.error(), 0);
  failing.AppendLine("1", terminal::kCommandColor);
  EXPECT_EQ(failing.error(), ENOSPC);
  close(full);
  failing.AppendLine("2", terminal::kCommandColor);
  EXPECT_EQ(failing.error(), ENOSPC);
}

TEST(HeadlessMessages, AreOneLineEach) {
  CapturedOutput err;
  HeadlessMessages messages(err.fd(), false);
  messages.ShowError("a\r\nb\n\nc\r\n");
  messages.ShowMessage("Grüße");
  messages.Tell("nothing");
  EXPECT_EQ(err.text(), "kolvane: a b c\nkolvane: Grüße\n");
}

}  // namespace
}  // namespace kolvane::component
