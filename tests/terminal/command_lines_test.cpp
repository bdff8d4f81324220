#include "terminal/interactive_send.h"

#include <gtest/gtest.h>

#include "base/runtime_error.h"
#include "terminal/session_bench.h"

namespace kolvane::terminal {
namespace {

std::string ErrorOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const base::RuntimeError& error) {
    return error.what();
  }
  return "";
}

class NoRecorder final : public CommandRecorder {
 public:
  bool Recording() const override { return false; }
  void AddToScript(std::string_view) override {}
};

class NoBox final : public CommandBox {
 public:
  void ShowHistory(const CommandHistory&, HistoryChange) override {}
};

class CommandLinesTest : public testing::Test, protected SessionBench {
 protected:
  void Send(std::string_view text) {
    lines.Send(text, [this] {
      ++between_lines;
      if (on_between_lines) on_between_lines();
    });
  }

  Lines Sent() const {
    Lines sent;
    for (const CommandHistory& history = interactive.history(); const std::string& entry : history.entries())
      sent.insert(sent.begin(), entry);
    return sent;
  }

  FakeClock clock;
  NoRecorder recorder;
  NoBox box;
  Exchange exchange{session, waits, state.options, output, clock, ","};
  InteractiveSend interactive{exchange, recorder, box};
  CommandLines lines{interactive, device_state};
  std::function<void()> on_between_lines;
  int between_lines = 0;
};

TEST_F(CommandLinesTest, OneLineIsOneCommand) {
  Send("A?");
  Send("B?\r\n");
  Send("");
  Send("\n\n");
  EXPECT_EQ(Sent(), (Lines{"A?", "B?"}));
  EXPECT_EQ(between_lines, 0);
}

TEST_F(CommandLinesTest, EachLineIsACommandWithItsOwnAnswer) {
  device.text_answers = {"1\r\n", "2\r\n", "3\r\n"};
  Send("A?\nB?\r\n\r\nC?");
  EXPECT_EQ(Sent(), (Lines{"A?", "B?", "C?"}));
  EXPECT_EQ(pane.text, "\r\nA?\r\n1\r\nB?\r\n2\r\nC?\r\n3");
  EXPECT_EQ(between_lines, 2);
}

TEST_F(CommandLinesTest, CanBeStoppedBetweenTwoLines) {
  on_between_lines = [this] { lines.Stop(); };
  Send("A?\nB?\nC?");
  EXPECT_EQ(Sent(), Lines{"A?"});
  on_between_lines = nullptr;
  Send("D?\nE?");
  EXPECT_EQ(Sent(), (Lines{"A?", "D?", "E?"}));
}

TEST_F(CommandLinesTest, NoneStartsDuringAnother) {
  on_between_lines = [this] {
    EXPECT_TRUE(lines.IsSending());
    Send("X?\nY?");
  };
  Send("A?\nB?");
  EXPECT_EQ(Sent(), (Lines{"A?", "B?"}));
  EXPECT_FALSE(lines.IsSending());
}

TEST_F(CommandLinesTest, ACommandThatCannotBeSentEndsThem) {
  device.write_result = {-7, "Leitung tot"};
  Send("A?\nB?");
  EXPECT_EQ(Sent(), Lines{"A?"});
}

TEST_F(CommandLinesTest, AnAnswerThatCannotBeReadEndsThem) {
  state.shown.timeout = "bald";
  EXPECT_EQ(ErrorOf([this] { Send("A?\nB?"); }),
            "Timeout (ms): Typen unverträglich. Die Antwort auf den Befehl steht noch aus, „Eingangspuffer "
            "flushen“ verwirft sie.");
  EXPECT_EQ(Sent(), Lines{"A?"});
  EXPECT_FALSE(lines.IsSending());
}

TEST_F(CommandLinesTest, ACharacterThatCannotBeSentIsReportedBeforeAnythingIsSent) {
  EXPECT_EQ(ErrorOf([this] { Send("A?\nMEAS:RES 5 Ω"); }), "Das Zeichen „Ω“ kann nicht gesendet werden");
  EXPECT_EQ(device.calls, Lines{});
  EXPECT_EQ(Sent(), Lines{});
  EXPECT_EQ(pane.text, "");
  Send("MEAS:RES 5 µ€ß?");
  EXPECT_EQ(Sent(), Lines{"MEAS:RES 5 µ€ß?"});
}

TEST_F(CommandLinesTest, ANulIsReportedForThePortLibrary) {
  device_state.OperMode = device::operating_mode::kPortLibrary;
  EXPECT_EQ(ErrorOf([this] { Send({"A?\nB\0C", 6}); }), "Das Zeichen „<00>“ kann nicht gesendet werden");
  EXPECT_EQ(Sent(), Lines{});
}

}  // namespace
}  // namespace kolvane::terminal
