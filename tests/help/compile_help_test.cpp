#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "base/temp_folder.h"
#include "help/help_file.h"

namespace kolvane::help {
namespace {

// The script that makes the help file, on pages of the test.
class CompileHelp : public testing::Test {
 protected:
  CompileHelp() {
    std::filesystem::create_directory(folder_.Path("pages"));
    for (const char* page : {"a.html", "b.html"})
      base::WriteBytes(folder_.Path("pages/") + page, std::string("<html><body>") + page + "</body></html>");
  }

  bool Compile(const std::string& topics) {
    base::WriteBytes(folder_.Path("topics.txt"), topics);
    const std::string command = KOLVANE_COMPILE_HELP " " + folder_.Path("pages") + " " +
                                folder_.Path("topics.txt") + " " + Output() + " " + folder_.Path("staging") +
                                " 2>/dev/null";
    return std::system(command.c_str()) == 0;
  }
  std::string Output() const { return folder_.Path("out.chm"); }

  base::TempFolder folder_;
};

TEST_F(CompileHelp, TakesRemarksEmptyLinesAndCarriageReturns) {
  ASSERT_TRUE(Compile("# remark\n\n1\t1\ta.html\tA <&> \"B\"\r\n70000\t2\tb.html\tÄ\n"));
  const auto file = HelpFile::Open(Output());
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->TopicPage(70000), "b.html");
  const std::vector<ContentsEntry> contents = {{0, "A <&> \"B\"", "a.html"}, {1, "Ä", "b.html"}};
  EXPECT_EQ(file->contents(), contents);
}

TEST_F(CompileHelp, RefusesAnInvalidListAndLeavesNoFile) {
  ASSERT_TRUE(Compile("1\t1\ta.html\tA\n"));
  for (const char* topics :
       {"", "# nothing\n", "1\t1\ta.html\n", "1\t1\ta.html\tA\tmore\n", "0\t1\ta.html\tA\n",
        "x\t1\ta.html\tA\n", "1\t2\ta.html\tA\n", "1\t1\ta.html\tA\n2\t3\tb.html\tB\n", "1\t4\ta.html\tA\n",
        "1\t1\ta.html\t\n", "1\t1\ta.html\tA\n1\t1\tb.html\tB\n", "1\t1\ta.html\tA\n2\t1\ta.html\tB\n",
        "1\t1\tmissing.html\tA\n", "1\t1\t../a.html\tA\n", "1\t1\tA.html\tA\n"}) {
    EXPECT_FALSE(Compile(topics)) << topics;
    EXPECT_FALSE(std::filesystem::exists(Output())) << topics;
  }
}

}  // namespace
}  // namespace kolvane::help
