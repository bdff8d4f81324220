#include "headless/line_input.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <vector>

#include "base/descriptor.h"

namespace kolvane::headless {
namespace {

using Result = LineInput::Result;

struct LineInputTest : testing::Test {
  LineInputTest() {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    reader = base::Descriptor(ends[0]);
    writer = base::Descriptor(ends[1]);
  }

  void Feed(std::string_view bytes) { EXPECT_EQ(base::WriteAll(writer.get(), bytes), 0); }
  Result Next(LineInput& input) {
    return input.Next(line, [this] { return give_up; });
  }
  /// All lines up to the end.
  std::vector<std::string> Lines(std::string_view bytes) {
    Feed(bytes);
    EXPECT_TRUE(writer.Close());
    LineInput input(reader.get());
    std::vector<std::string> lines;
    while (Next(input) == Result::kLine) lines.push_back(line);
    EXPECT_EQ(Next(input), Result::kEnd);
    return lines;
  }

  base::Descriptor reader;
  base::Descriptor writer;
  std::string line;
  bool give_up = false;
};

using Texts = std::vector<std::string>;

TEST_F(LineInputTest, LinesEndWithLfOrCrLf) { EXPECT_EQ(Lines("A\r\nB\nC\n"), (Texts{"A", "B", "C"})); }

TEST_F(LineInputTest, EmptyLinesAreLines) { EXPECT_EQ(Lines("\nA\n\n"), (Texts{"", "A", ""})); }

TEST_F(LineInputTest, TheLastLineNeedsNoEnd) { EXPECT_EQ(Lines("A\nB"), (Texts{"A", "B"})); }

TEST_F(LineInputTest, EmptyInputHasNoLine) { EXPECT_EQ(Lines(""), Texts{}); }

TEST_F(LineInputTest, ReportsALineThatWasReadAlready) {
  LineInput input(reader.get());
  EXPECT_FALSE(input.HasLine());
  Feed("A\nB\nC");
  EXPECT_FALSE(input.HasLine());
  ASSERT_EQ(Next(input), Result::kLine);
  EXPECT_TRUE(input.HasLine());
  ASSERT_EQ(Next(input), Result::kLine);
  EXPECT_EQ(line, "B");
  EXPECT_FALSE(input.HasLine());
  Feed("\n");
  ASSERT_EQ(Next(input), Result::kLine);
  EXPECT_EQ(line, "C");
}

TEST_F(LineInputTest, ALineIsReturnedOnceItIsComplete) {
  LineInput input(reader.get());
  Feed("A\nB");
  ASSERT_EQ(Next(input), Result::kLine);
  EXPECT_EQ(line, "A");
  give_up = true;
  EXPECT_EQ(Next(input), Result::kGivenUp);
  Feed("C\n");
  ASSERT_EQ(Next(input), Result::kLine);
  EXPECT_EQ(line, "BC");
}

TEST_F(LineInputTest, ALineWithoutEndFails) {
  std::thread feeder([this] {
    // The reader does not read to the end.
    (void)base::WriteAll(writer.get(), std::string(2 * LineInput::kLongestLine, 'x'));
  });
  LineInput input(reader.get());
  EXPECT_EQ(Next(input), Result::kFailed);
  EXPECT_EQ(input.error(), EMSGSIZE);
  EXPECT_TRUE(reader.Close());
  feeder.join();
}

TEST_F(LineInputTest, TheLimitOfALineDoesNotDependOnItsEndOrItsPieces) {
  const std::string longest(LineInput::kLongestLine, 'x');
  for (const std::string end : {"\n", "\r\n", ""}) {
    for (const bool too_long : {false, true}) {
      const base::Descriptor file = base::OpenDescriptor("/tmp", O_RDWR | O_TMPFILE | O_CLOEXEC);
      ASSERT_EQ(base::WriteAll(file.get(), longest + (too_long ? "x" : "") + end), 0);
      ASSERT_EQ(lseek(file.get(), 0, SEEK_SET), 0);
      LineInput input(file.get());
      EXPECT_EQ(Next(input), too_long ? Result::kFailed : Result::kLine) << end.size();
    }
  }
}

TEST_F(LineInputTest, InputThatCannotBeReadFails) {
  const base::Descriptor folder = base::OpenDescriptor("/", O_RDONLY | O_CLOEXEC);
  LineInput input(folder.get());
  EXPECT_EQ(Next(input), Result::kFailed);
  EXPECT_EQ(input.error(), EISDIR);
}

}  // namespace
}  // namespace kolvane::headless
