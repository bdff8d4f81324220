#include "headless/shell.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/temp_folder.h"
#include "script/command_list.h"

namespace kolvane::headless {
namespace {

using Rows = std::vector<std::string>;

TEST(ShellRows, ARowRunsAtOnce) {
  ShellRows rows;
  EXPECT_EQ(rows.Take("  MSV? 1 "), Rows{"MSV? 1"});
  EXPECT_EQ(rows.Take("$DELAY 5"), Rows{"$DELAY 5"});
  EXPECT_EQ(rows.Take("   "), Rows{});
  EXPECT_FALSE(rows.open());
}

TEST(ShellRows, LoopsAndConditionsRunAtTheirEnd) {
  ShellRows rows;
  EXPECT_EQ(rows.Take("$repeat 2"), Rows{});
  EXPECT_TRUE(rows.open());
  for (const char* row : {"A", "$IFEQUAL 1", "", "B", "$ENDIF"}) EXPECT_EQ(rows.Take(row), Rows{}) << row;
  EXPECT_EQ(rows.Take("$ENDREPEAT"), (Rows{"$repeat 2", "A", "$IFEQUAL 1", "B", "$ENDIF", "$ENDREPEAT"}));
  EXPECT_FALSE(rows.open());
}

TEST(ShellRows, AnExtraEndIsASeparateRow) {
  ShellRows rows;
  EXPECT_EQ(rows.Take("$ENDREPEAT"), Rows{"$ENDREPEAT"});
  EXPECT_EQ(rows.Take("$IFERR"), Rows{}) << "it does not count against the next one";
}

TEST(ShellRows, AnUnknownConditionRunsAtOnce) {
  ShellRows rows;
  EXPECT_EQ(rows.Take("$IFEQUALS 1"), Rows{"$IFEQUALS 1"});
  EXPECT_FALSE(rows.open());
}

TEST(ShellRows, RowsThatAreGivenUpAreDiscarded) {
  ShellRows rows;
  rows.Take("$REPEAT 2");
  EXPECT_EQ(rows.Finish(), Rows{"$REPEAT 2"});
  EXPECT_FALSE(rows.open());
  EXPECT_EQ(rows.Take("A"), Rows{"A"});
}

TEST(ShellRows, CollectsNoMoreThanAListHolds) {
  ShellRows rows;
  EXPECT_EQ(rows.Take("$REPEAT 2"), Rows{});
  for (int row = 2; row <= script::kListRows; ++row) ASSERT_EQ(rows.Take("A"), Rows{}) << row;
  EXPECT_EQ(rows.Take("A").size(), std::size_t{script::kListRows} + 1);
  EXPECT_FALSE(rows.open());
}

TEST(ConnectionName, IsShort) {
  namespace code = device::port_code;
  device::ConnectionParameters connection;
  const auto name = [&](std::int16_t port_code) {
    connection.port_code = port_code;
    return ConnectionName(connection);
  };
  connection.ip_address = "localhost";
  connection.ip_port = static_cast<std::int16_t>(50000);
  connection.usb_address = "4711";
  connection.address = 4;
  EXPECT_EQ(name(code::kTcpIp), "localhost:50000");
  connection.ip_address = "::1";
  EXPECT_EQ(name(code::kTcpIp), "[::1]:50000");
  EXPECT_EQ(name(code::kUsb), "USB 4711");
  EXPECT_EQ(name(code::kGpib), "GPIB 4");
  EXPECT_EQ(name(code::kOffline), "OFFLINE");
  EXPECT_EQ(name(code::kCom1), "COM 1");
  connection.node = "/dev/ttyUSB0";
  EXPECT_EQ(name(code::kCom1), "/dev/ttyUSB0");
}

TEST(CompleteShellLine, KnowsDollarWordsAndTheirArguments) {
  EXPECT_EQ(CompleteShellLine("$re"), (Rows{"$REPEAT ", "$READ"}));
  EXPECT_EQ(CompleteShellLine("$ru"), Rows{"$RUN "});
  EXPECT_EQ(CompleteShellLine("$SILENT "), (Rows{"$SILENT ON", "$SILENT OFF"}));
  EXPECT_EQ(CompleteShellLine("$NO"), Rows{});
  EXPECT_EQ(std::ranges::count(CompleteShellLine("$"), "$RUN "), 1);
}

TEST(CompleteShellLine, KnowsTheWordsThatEndAnExchange) {
  EXPECT_EQ(CompleteShellLine("d"), Rows{"DCL"});
  EXPECT_EQ(CompleteShellLine("*"), Rows{"*RST"});
  EXPECT_EQ(CompleteShellLine(""), Rows{});
}

TEST(CompleteShellLine, KnowsFiles) {
  const base::TempFolder folder;
  for (const char* name : {"a.CMD", "ab.CMD", ".hidden", "b c.CMD"}) base::WriteBytes(folder.Path(name), "");
  std::filesystem::create_directory(folder.Path("afolder"));
  const std::string path = folder.path() + "/";
  EXPECT_EQ(CompleteShellLine("$RUN " + path + "a"),
            (Rows{"$RUN " + path + "a.CMD", "$RUN " + path + "ab.CMD", "$RUN " + path + "afolder/"}));
  EXPECT_EQ(CompleteShellLine("$openlog " + path + "b"), Rows{"$openlog " + path + "b c.CMD"});
  EXPECT_EQ(CompleteShellLine("$RUN " + path).size(), 4u) << "nothing hidden";
  EXPECT_EQ(CompleteShellLine("$RUN " + path + "."), Rows{"$RUN " + path + ".hidden"});
  EXPECT_EQ(CompleteShellLine("$RUN /nonexistent/"), Rows{});
  for (const char* name : {"c\nd.CMD", "c\x1B[2J.CMD"}) base::WriteBytes(folder.Path(name), "");
  EXPECT_EQ(CompleteShellLine("$RUN " + path + "c"), Rows{}) << "no control characters";
  for (int i = 0; i < 50; ++i) base::WriteBytes(folder.Path("\t" + std::to_string(i)), "");
  EXPECT_EQ(CompleteShellLine("$RUN " + path).size(), 4u) << "all others, whatever their order";
}

}  // namespace
}  // namespace kolvane::headless
