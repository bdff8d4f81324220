#include "headless/lines.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/captured_output.h"
#include "base/loopback.h"
#include "base/pattern.h"
#include "device/fake_clock.h"
#include "pane/pane_contract.h"
#include "terminal/texts.h"

namespace kolvane::headless {
namespace {

namespace texts = terminal::texts;

struct LinePaneTest : testing::Test {
  base::CapturedOutput out;
  base::CapturedOutput err;
  Messages messages{err.fd(), true};
  LinePane pane{out.fd(), messages};
};

TEST_F(LinePaneTest, AnAnswerIsWrittenOnceItsExchangeIsOver) {
  pane.AppendLine(LineKind::kAnswer, "1.5");
  pane.Refresh();
  EXPECT_EQ(out.text(), "");
  pane.EndLine();
  EXPECT_EQ(out.text(), "1.5\n");
  pane.EndLine();
  EXPECT_EQ(out.text(), "1.5\n");
}

TEST_F(LinePaneTest, TheNextLineEndsTheOneBefore) {
  pane.AppendLine(LineKind::kAnswer, "1");
  pane.AppendLine(LineKind::kAnswer, "2");
  EXPECT_EQ(out.text(), "1\n");
}

TEST_F(LinePaneTest, ACommandIsWrittenAtOnce) {
  pane.AppendLine(LineKind::kCommand, "MSV?");
  EXPECT_EQ(out.text(), "MSV?\n");
}

TEST_F(LinePaneTest, TheResponseTimeFollowsTheAnswer) {
  pane.AppendLine(LineKind::kAnswer, "1");
  pane.AppendText(LineKind::kTime, texts::ResponseTime("0,5"), 0);
  pane.AppendLine(LineKind::kAnswer, "2");
  pane.EndLine();
  EXPECT_EQ(out.text(), "1(dt = 0,5 ms)\n2\n");
}

TEST_F(LinePaneTest, TheResponseTimeOfASuppressedAnswerIsASeparateLine) {
  pane.AppendText(LineKind::kTime, texts::ResponseTime("0,5"), 0);
  pane.EndLine();
  EXPECT_EQ(out.text(), "(dt = 0,5 ms)\n");
}

TEST_F(LinePaneTest, AnEmptyAnswerIsAnEmptyLine) {
  pane.AppendLine(LineKind::kAnswer, "");
  pane.EndLine();
  EXPECT_EQ(out.text(), "\n");
}

TEST_F(LinePaneTest, EachKindHasItsColor) {
  LinePane colored(out.fd(), messages, {.colors = true});
  colored.AppendLine(LineKind::kCommand, "MSV?");
  colored.AppendLine(LineKind::kAnswer, "1.5");
  colored.AppendText(LineKind::kTime, texts::ResponseTime("0,5"), 0);
  colored.AppendLine(LineKind::kError, "-30");
  colored.EndLine();
  colored.AppendText(LineKind::kTime, texts::ResponseTime("0,5"), 0);
  colored.EndLine();
  EXPECT_EQ(out.text(),
            "\x1B[36mMSV?\x1B[0m\n1.5(dt = 0,5 ms)\n\x1B[31m-30\x1B[0m\n\x1B[2m(dt = 0,5 ms)\x1B[0m\n");
}

TEST_F(LinePaneTest, LineBreaksInAnAnswerAreLineFeeds) {
  pane.AppendLine(LineKind::kAnswer, "a\r\nb\r\n\r\nc\r\n");
  pane.EndLine();
  EXPECT_EQ(out.text(), "a\nb\n\nc\n");
}

TEST_F(LinePaneTest, OtherControlCharactersAreWrittenAsTheyAre) {
  const std::string answer("\0a\rb\tc\x1B[0m\x7Fü\0", 14);
  pane.AppendLine(LineKind::kAnswer, answer);
  pane.EndLine();
  EXPECT_EQ(out.text(), answer + "\n");
}

TEST_F(LinePaneTest, AtATerminalControlCharactersAreVisible) {
  base::Pty terminal;
  LinePane shown(terminal.slave(), messages);
  const auto expect_shown = [&](std::string_view answer, const std::string& expected) {
    shown.AppendLine(LineKind::kAnswer, answer);
    shown.EndLine();
    std::string text;
    char buffer[64];
    // The bytes may arrive in pieces. The line discipline turns LF into CR LF.
    while (text.size() < expected.size()) {
      const ssize_t size = read(terminal.master(), buffer, sizeof buffer);
      ASSERT_GT(size, 0);
      text.append(buffer, static_cast<std::size_t>(size));
    }
    EXPECT_EQ(text, expected);
  };
  expect_shown("\x1B[2J\x1B]0;x\a", "<1B>[2J<1B>]0;x<07>\r\n");
  expect_shown(std::string_view("a\0\rb\tc\x7F", 7), "a<00><0D>b\tc<7F>\r\n");
  expect_shown("\xC2\x90\xC2\x9F\xC2\xA0Ü", "<90><9F>\xC2\xA0Ü\r\n");
  expect_shown("a\r\nb", "a\r\nb\r\n");
}

TEST_F(LinePaneTest, AWriteErrorIsAMessage) {
  pane.AppendLine(LineKind::kAnswer, "1");
  pane.AppendText(LineKind::kError, texts::WriteError("-5"), 0);
  pane.EndLine();
  EXPECT_EQ(out.text(), "1\n");
  EXPECT_EQ(err.text(), "kolvane: Write error: -5\n");
}

TEST_F(LinePaneTest, NoticesAreMessages) {
  pane.AppendLine(LineKind::kNotice, "connected");
  pane.AppendLine(LineKind::kAnswer, "answer");
  pane.EndLine();
  EXPECT_EQ(out.text(), "answer\n");
  EXPECT_EQ(err.text(), "kolvane: connected\n");
}

TEST_F(LinePaneTest, AnAnswerThatReadsLikeANoticeIsAnAnswer) {
  pane.AppendLine(LineKind::kNotice, texts::kMeasuringStopped);
  pane.AppendLine(LineKind::kAnswer, texts::kMeasuringStopped);
  pane.EndLine();
  EXPECT_EQ(out.text(), std::string(texts::kMeasuringStopped) + "\n");
  EXPECT_EQ(err.text(), "kolvane: " + std::string(texts::kMeasuringStopped) + "\n");
}

TEST_F(LinePaneTest, AnErrorInsteadOfAnAnswerIsALine) {
  pane.AppendLine(LineKind::kError, "-30");
  pane.EndLine();
  EXPECT_EQ(out.text(), "-30\n");
  EXPECT_EQ(err.text(), "");
}

TEST_F(LinePaneTest, ClearingDoesNothing) {
  pane.AppendLine(LineKind::kAnswer, "1");
  pane.Clear();
  pane.EndLine();
  EXPECT_EQ(out.text(), "1\n");
}

TEST_F(LinePaneTest, AFailureIsKeptAndNothingMoreIsWritten) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  LinePane failing(full, messages);
  EXPECT_EQ(failing.error(), 0);
  failing.AppendLine(LineKind::kCommand, "1");
  EXPECT_EQ(failing.error(), ENOSPC);
  close(full);
  failing.AppendLine(LineKind::kCommand, "2");
  EXPECT_EQ(failing.error(), ENOSPC);
}

struct LinePaneOfAHostTest : testing::Test {
  std::vector<std::pair<LineKind, std::string>> lines;
  HostLines::Handler handler = [this](LineKind kind, const std::string& line) {
    lines.emplace_back(kind, line);
  };
  HostLines host{handler};
  base::CapturedOutput out;
  base::CapturedOutput err;
  Messages messages{err.fd(), true, &host};
  LinePane pane{out.fd(), messages};
};

TEST_F(LinePaneOfAHostTest, EveryLineIsPassedWithItsKindAndNothingIsWritten) {
  pane.AppendLine(LineKind::kCommand, "MSV?");
  pane.AppendLine(LineKind::kAnswer, "1\r\n2\r\n");
  pane.AppendText(LineKind::kTime, texts::ResponseTime("0,5"), 0);
  pane.AppendLine(LineKind::kNotice, "connected");
  pane.AppendText(LineKind::kError, texts::WriteError("-5"), 0);
  pane.AppendLine(LineKind::kError, "-7");
  pane.EndLine();
  EXPECT_EQ(lines, (std::vector<std::pair<LineKind, std::string>>{{LineKind::kCommand, "MSV?"},
                                                                  {LineKind::kAnswer, "1\n2"},
                                                                  {LineKind::kTime, "(dt = 0,5 ms)"},
                                                                  {LineKind::kNotice, "connected"},
                                                                  {LineKind::kError, "Write error: -5"},
                                                                  {LineKind::kError, "-7"}}));
  EXPECT_EQ(out.text() + err.text(), "");
}

TEST_F(LinePaneOfAHostTest, TheFirstExceptionIsKeptAndNoMoreLinesArePassed) {
  handler = [this](LineKind kind, const std::string& line) {
    lines.emplace_back(kind, line);
    throw std::runtime_error(line);
  };
  pane.AppendLine(LineKind::kCommand, "ONE");
  EXPECT_TRUE(host.failed());
  pane.AppendLine(LineKind::kCommand, "TWO");
  messages.ShowError("three");
  EXPECT_EQ(lines.size(), 1u);
  try {
    host.Rethrow();
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "ONE");
  }
}

TEST(Messages, AtATerminalControlCharactersAreVisible) {
  base::Pty terminal;
  Messages messages(terminal.slave(), false);
  messages.ShowError("RING\x1B[H");
  char text[64];
  const ssize_t size = read(terminal.master(), text, sizeof text);
  EXPECT_EQ(std::string(text, static_cast<std::size_t>(std::max<ssize_t>(size, 0))),
            "kolvane: RING<1B>[H\r\n");
}

TEST(Messages, AreOneLineEach) {
  base::CapturedOutput err;
  Messages messages(err.fd(), false);
  messages.ShowError("a\r\nb\n\nc\r\n");
  messages.ShowMessage("Grüße");
  messages.Report("nothing");
  EXPECT_EQ(err.text(), "kolvane: a b c\nkolvane: Grüße\n");
}

TEST_F(LinePaneTest, ARemarkFollowsItsLine) {
  pane.AppendLine(LineKind::kError, "-30");
  pane.Remark(LineKind::kError, "-30: keine Antwort");
  pane.AppendText(LineKind::kTime, "(dt = 1 ms)\r\n", 0);
  EXPECT_EQ(err.text(), "");
  pane.EndLine();
  EXPECT_EQ(out.text(), "-30(dt = 1 ms)\n");
  EXPECT_EQ(err.text(), "kolvane: -30: keine Antwort\n");
}

TEST_F(LinePaneTest, ANoticeIsShownOnceWhetherOrNotThePaneShowsIt) {
  pane.AppendLine(LineKind::kNotice, "beendet");
  pane.Remark(LineKind::kNotice, "beendet");
  EXPECT_EQ(err.text(), "kolvane: beendet\n");
  pane.Remark(LineKind::kNotice, "beendet");
  EXPECT_EQ(err.text(), "kolvane: beendet\nkolvane: beendet\n") << "the pane is silent";
}

TEST_F(LinePaneTest, FailedAnswersMayStayOffStandardOutput) {
  LinePane without(out.fd(), messages, {.errors = false});
  without.AppendLine(LineKind::kError, "-30");
  without.Remark(LineKind::kError, "-30: keine Antwort");
  without.AppendLine(LineKind::kAnswer, "1");
  without.EndLine();
  EXPECT_EQ(out.text(), "1\n");
  EXPECT_EQ(err.text(), "kolvane: -30: keine Antwort\n");
}

TEST_F(LinePaneTest, LinesMayStartWithTheirTime) {
  LinePane stamped(out.fd(), messages, {.times = true});
  stamped.AppendLine(LineKind::kAnswer, "1");
  stamped.EndLine();
  EXPECT_TRUE(base::Pattern("20\\d\\d-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} 1\n").Matches(out.text()))
      << out.text();
}

TEST_F(LinePaneTest, EachLineOfAnAnswerStartsWithItsTime) {
  LinePane stamped(out.fd(), messages, {.times = true});
  stamped.AppendLine(LineKind::kAnswer, "A\r\nB\nC\r\n");
  stamped.EndLine();
  const std::string text = out.text();
  const std::string time = text.substr(0, text.find('A'));
  EXPECT_EQ(time.size(), sizeof "2026-11-21 15:01:04.123 " - 1);
  EXPECT_EQ(text, time + "A\n" + time + "B\n" + time + "C\n");
}

class LinePaneCase {
 public:
  pane::Pane& pane() { return pane_; }
  std::string Text() {
    pane_.EndLine();
    std::string text = out_.text();
    text.pop_back();
    return text;
  }

 private:
  base::CapturedOutput out_;
  base::CapturedOutput err_;
  Messages messages_{err_.fd(), true};
  LinePane pane_{out_.fd(), messages_};
};

struct LinesInSuccessionTest : LinePaneTest {
  void Answer(std::string_view text) {
    quick.AppendLine(LineKind::kAnswer, text);
    quick.EndLine();
  }

  device::FakeClock clock;
  LinePane quick{out.fd(), messages, {.clock = &clock}};
};

TEST_F(LinesInSuccessionTest, LinesThatFollowAtOnceAreWrittenTogether) {
  Answer("1");
  Answer("2");
  Answer("3");
  EXPECT_EQ(out.text(), "1\n");
  clock.Advance(0.0015);
  Answer("4");
  EXPECT_EQ(out.text(), "1\n2\n3\n4\n");
}

TEST_F(LinesInSuccessionTest, AfterAPauseALineIsWrittenAtOnce) {
  for (const char* answer : {"1", "2", "3"}) {
    Answer(answer);
    clock.Advance(0.0015);
  }
  EXPECT_EQ(out.text(), "1\n2\n3\n");
}

TEST_F(LinesInSuccessionTest, WaitingLinesAreWrittenOnDemand) {
  Answer("1");
  Answer("2");
  quick.FlushDue();
  EXPECT_EQ(out.text(), "1\n");
  clock.Advance(0.0015);
  quick.FlushDue();
  EXPECT_EQ(out.text(), "1\n2\n");
  Answer("3");
  quick.Flush();
  EXPECT_EQ(out.text(), "1\n2\n3\n");
}

TEST_F(LinesInSuccessionTest, ALargeOutputIsWrittenAtOnce) {
  Answer("1");
  const std::string large(1 << 16, 'x');
  Answer(large);
  EXPECT_EQ(out.text(), "1\n" + large + "\n");
}

TEST_F(LinesInSuccessionTest, MessagesComeAfterEarlierLines) {
  Answer("1");
  Answer("2");
  std::string before = "not asked";
  messages.Precede([&] {
    quick.Flush();
    before = err.text();
  });
  messages.ShowError("that is all");
  EXPECT_EQ(out.text(), "1\n2\n");
  EXPECT_EQ(before, "");
  EXPECT_EQ(err.text(), "kolvane: that is all\n");
}

}  // namespace
}  // namespace kolvane::headless

namespace kolvane::pane {
INSTANTIATE_TYPED_TEST_SUITE_P(Lines, PaneContract, headless::LinePaneCase);
}
