// System calls that fail, each at every place where the program makes it.

#include <gtest/gtest.h>
#include <signal.h>

#include <cerrno>
#include <sstream>

#include "faults/shim_run.h"
#include "faults/thorough.h"

namespace kolvane::faults {
namespace {

constexpr char kAllAnswered[] = "ONE\nTWO\nTHREE\n";

std::string Error(int number) { return std::to_string(number); }

std::string WithCrLf(const std::string& text) {
  std::string lines;
  for (const char c : text) lines += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return lines;
}

/// Three lines, each an answer or a status; no answer twice, and none before its turn.
bool IsInOrder(const std::string& out) {
  const std::vector<std::string> answers = {"ONE", "TWO", "THREE"};
  std::istringstream lines(out);
  std::size_t number = 0;
  std::size_t next = 0;
  for (std::string line; std::getline(lines, line); ++number) {
    if (line.starts_with('-')) continue;
    while (next < answers.size() && answers[next] != line) ++next;
    if (next > number || next == answers.size()) return false;
    ++next;
  }
  return number == answers.size();
}

class Shim : public testing::Test {
 protected:
  static constexpr int kMaxCalls = 10'000;

  /// Runs `check` on each run, for n = 1, 2, 3 ... until a run does not make that many calls.
  template <typename Check>
  void ForEachCall(Port port, const FailingCall& failing, Check check, int step = 1) {
    FaultyInstrument instrument(port, NoFault);
    int nth = 1;
    for (; nth < kMaxCalls; nth += step) {
      SCOPED_TRACE(NameOf(port) + ": " + Describe(failing, nth));
      const ShimRun run = RunWithShim(failing, nth, instrument);
      ASSERT_FALSE(run.hung);
      ASSERT_EQ(run.outcome.status == -SIGKILL, failing.kind == "kill" && run.hit);
      ASSERT_TRUE(run.outcome.status >= 0 || run.outcome.status == -SIGKILL) << run.outcome.err;
      check(run);
      if (HasFailure()) return;
      if (!run.hit) break;
    }
    EXPECT_GT(nth, 1) << "no such call";
    EXPECT_LT(nth, kMaxCalls);
  }

  /// The fault has no effect.
  static void ExpectNoEffect(const ShimRun& run) {
    EXPECT_EQ(run.outcome.status, 0);
    EXPECT_EQ(run.outcome.out, kAllAnswered);
    EXPECT_EQ(run.outcome.err, "");
    EXPECT_EQ(run.log, "ONE\r\nTWO\r\nTHREE\r\n");
  }

  /// The fault is reported, and no line is lost or doubled.
  static void ExpectReported(const ShimRun& run) {
    if (!run.hit) return ExpectNoEffect(run);
    if (run.outcome.status == 3) {
      EXPECT_NE(run.outcome.err, "");
      EXPECT_EQ(run.outcome.out, "");
      return;
    }
    EXPECT_TRUE(IsInOrder(run.outcome.out)) << run.outcome.out;
    const bool no_log = run.outcome.err.find("Logdatei") != std::string::npos;
    EXPECT_EQ(run.log, no_log ? "" : WithCrLf(run.outcome.out));
    EXPECT_EQ(run.outcome.status == 0, run.outcome.out == kAllAnswered) << run.outcome.out;
  }
};

TEST_F(Shim, Row14ShortTransfers) {
  for (const bool once : {true, false}) {
    ForEachCall(Port::kTcp, {"recv", "short", once}, ExpectNoEffect);
    ForEachCall(Port::kTcp, {"send", "short", once}, ExpectNoEffect);
    ForEachCall(Port::kCom, {"read", "short", once}, ExpectNoEffect);
    ForEachCall(Port::kCom, {"write", "short", once}, ExpectNoEffect);
    ForEachCall(Port::kTcp, {"save", "short", once}, ExpectNoEffect);
  }
}

TEST_F(Shim, Row15Interruptions) {
  for (const bool once : {true, false}) {
    for (const char* call : {"recv", "send", "connect", "save", "open"})
      ForEachCall(Port::kTcp, {call, Error(EINTR), once}, ExpectNoEffect);
    for (const char* call : {"read", "write", "open", "save"})
      ForEachCall(Port::kCom, {call, Error(EINTR), once}, ExpectNoEffect);
  }
}

TEST_F(Shim, Row16NothingNow) {
  for (const char* call : {"recv", "send"}) {
    ForEachCall(Port::kTcp, {call, Error(EAGAIN), true}, ExpectNoEffect);
    ForEachCall(Port::kTcp, {call, Error(EAGAIN), false}, ExpectReported);
  }
  for (const char* call : {"read", "write"}) {
    ForEachCall(Port::kCom, {call, Error(EAGAIN), true}, ExpectNoEffect);
    ForEachCall(Port::kCom, {call, Error(EAGAIN), false}, ExpectReported);
  }
}

TEST_F(Shim, Row16TransfersThatFail) {
  const std::vector<int> errors = IsThorough() ? std::vector{EIO, ENOMEM, ECONNRESET} : std::vector{EIO};
  for (const bool once : {true, false}) {
    for (const int error : errors) {
      for (const char* call : {"recv", "send", "connect", "poll"})
        ForEachCall(Port::kTcp, {call, Error(error), once}, ExpectReported);
      for (const char* call : {"read", "write", "open"})
        ForEachCall(Port::kCom, {call, Error(error), once}, ExpectReported);
    }
  }
}

// The log ends before the line that fails, and never in the middle of a line.
TEST_F(Shim, Row23ALogOnADiskThatIsFull) {
  for (const bool once : {true, false}) {
    for (const int error : {ENOSPC, EIO}) {
      ForEachCall(Port::kTcp, {"save", Error(error), once}, [](const ShimRun& run) {
        if (!run.hit) return ExpectNoEffect(run);
        EXPECT_EQ(run.outcome.out, kAllAnswered);
        EXPECT_NE(run.outcome.err.find("kann nicht geschrieben werden"), std::string::npos);
        EXPECT_TRUE(run.log.empty() || run.log.ends_with("\r\n")) << run.log;
        EXPECT_TRUE(WithCrLf(kAllAnswered).starts_with(run.log)) << run.log;
      });
    }
  }
}

// A line is in the log completely or not at all, and those before it stay.
TEST_F(Shim, Row31KilledWhileWritingTheLog) {
  const std::vector<std::string> logs = {"", "ONE\r\n", "ONE\r\nTWO\r\n"};
  std::size_t killed = 0;
  ForEachCall(Port::kTcp, {"save", "kill"}, [&](const ShimRun& run) {
    if (!run.hit) return ExpectNoEffect(run);
    ASSERT_LT(killed, logs.size());
    EXPECT_EQ(run.log, logs[killed++]);
  });
  EXPECT_EQ(killed, logs.size());
}

TEST_F(Shim, Row28NoMemory) {
  const int step = IsThorough() ? 1 : 7;
  for (const bool once : {true, false}) {
    ForEachCall(
        Port::kTcp, {"malloc", Error(ENOMEM), once},
        [](const ShimRun& run) {
          if (!run.hit) return ExpectNoEffect(run);
          // A lack of memory in the port library is an answer's status, anywhere else a message.
          const bool reported = !run.outcome.err.empty() || run.outcome.out.find("-51") != std::string::npos;
          EXPECT_NE(reported, run.outcome.status == 0) << run.outcome.err << run.outcome.out;
          EXPECT_TRUE(run.log.empty() || run.log.ends_with("\r\n")) << run.log;
        },
        step);
  }
}

}  // namespace
}  // namespace kolvane::faults
