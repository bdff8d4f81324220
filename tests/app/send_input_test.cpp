// `kolvane send -`.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include "app/instrument.h"
#include "app/program.h"
#include "base/descriptor.h"

namespace kolvane::app {
namespace {

struct Pipe {
  Pipe() {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    reader = base::Descriptor(ends[0]);
    writer = base::Descriptor(ends[1]);
  }

  void Write(std::string_view bytes) { EXPECT_EQ(base::WriteAll(writer.get(), bytes), 0); }
  /// The next line, with its end.
  std::string ReadLine() {
    std::string line;
    for (char byte = 0; !line.ends_with('\n') && read(reader.get(), &byte, 1) == 1;) line += byte;
    return line;
  }

  base::Descriptor reader;
  base::Descriptor writer;
};

struct SendInputTest : testing::Test {
  std::vector<std::string> Words(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"send", "-", "--connect", instrument.Resource()});
    return options;
  }
  Outcome Send(std::string_view bytes, std::vector<std::string> options = {}) {
    input.Write(bytes);
    EXPECT_TRUE(input.writer.Close());
    return RunProgram(Words(std::move(options)), {.input = input.reader.get()});
  }

  Instrument instrument{Echo};
  Pipe input;
};

TEST_F(SendInputTest, ANulEndsTheRunBeforeItsCommand) {
  const Outcome outcome = Send(std::string_view("A\nB\0C\nD\n", 8));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "A\n");
  EXPECT_EQ(outcome.err, "kolvane: Das Zeichen „<00>“ kann nicht gesendet werden\n");
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"A"});
}

TEST_F(SendInputTest, SendsEachLine) {
  const Outcome outcome = Send("A\r\nBrücke\n\n- \n$FLUSH");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "A\nBrücke\n\n-\n$FLUSH\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(instrument.lines(), (std::vector<std::string>{"A",
                                                          "Br\xFC"
                                                          "cke",
                                                          "", "- ", "$FLUSH"}));
}

TEST_F(SendInputTest, WithoutLinesNothingIsSent) {
  const Outcome outcome = Send("");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
}

TEST_F(SendInputTest, TakesTheOptionsOfSend) {
  const Outcome outcome = Send("A\n", {"--show-commands", "--format", "csv", "--fields", "1"});
  EXPECT_EQ(outcome.out, "time,command,field1\n");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(SendInputTest, EachAnswerIsPrintedBeforeTheNextCommandIsRead) {
  Pipe output;
  Program program(Words(), {.output = output.writer.get(), .input = input.reader.get()});
  for (const char* command : {"A\n", "B\n", "C\n"}) {
    input.Write(command);
    EXPECT_EQ(output.ReadLine(), command);
  }
  ASSERT_TRUE(input.writer.Close());
  EXPECT_EQ(program.Wait().status, 0);
}

TEST_F(SendInputTest, ASignalEndsTheWaitForTheNextCommand) {
  Program program(Words(), {.input = input.reader.get()});
  input.Write("A\n");
  instrument.AwaitLines(1);
  program.Signal(SIGTERM);
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kolvane: Der Ablauf wurde abgebrochen.\n");
}

TEST_F(SendInputTest, AFailedAnswerIsTheStatusAtTheEnd) {
  Instrument odd([](const std::string& line) { return line == "A" ? "" : line + "\r\n"; });
  input.Write("A\nB\n");
  ASSERT_TRUE(input.writer.Close());
  const Outcome outcome = RunProgram({"send", "-", "--connect", odd.Resource(), "--timeout", "100"},
                                     {.input = input.reader.get()});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.out, "-30\nB\n");
}

TEST_F(SendInputTest, ACharacterThatTheInstrumentsCodeLacksStops) {
  const Outcome outcome = Send("A\nΩ?\nB\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "A\n");
  EXPECT_EQ(outcome.err, "kolvane: Das Zeichen „Ω“ kann nicht gesendet werden\n");
  EXPECT_EQ(instrument.lines(), std::vector<std::string>{"A"});
}

TEST_F(SendInputTest, InputThatCannotBeReadStops) {
  const base::Descriptor folder = base::OpenDescriptor("/", O_RDONLY | O_CLOEXEC);
  const Outcome outcome = RunProgram(Words(), {.input = folder.get()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kolvane: cannot read standard input: Is a directory\n");
}

}  // namespace
}  // namespace kolvane::app
