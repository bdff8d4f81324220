#include "devlnk/node_names.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/temp_folder.h"

namespace kolvane::devlnk {
namespace {

using std::string_literals::operator""s;

TEST(FindPort, ReadsKeysOfItsSectionOnly) {
  constexpr std::string_view kText =
      "COM1=/dev/early\n[PORTS]\nCOM1=/dev/ttyUSB0\nCOM2 = /dev/ttyUSB1 "
      "\r\n[OTHER]\nCOM1=/dev/late\nLPT1=x\n";
  EXPECT_EQ(FindPort(kText, "COM1"), "/dev/ttyUSB0");
  EXPECT_EQ(FindPort(kText, "COM2"), "/dev/ttyUSB1");
  EXPECT_EQ(FindPort(kText, "LPT1"), "");
  EXPECT_EQ(FindPort("", "COM1"), "");
}

TEST(FindPort, IgnoresCaseByteOrderMarksAndComments) {
  EXPECT_EQ(FindPort("\xEF\xBB\xBF[ports]\ncom1=/dev/A", "COM1"), "/dev/A");
  EXPECT_EQ(FindPort("[PORTS]\n;COM1=/dev/A\n# COM1=/dev/B\nCOM1=/dev/C", "COM1"), "/dev/C");
  EXPECT_EQ(FindPort("  [Ports]\t\n\tCOM1\t=\t\"/dev/with space \"\n", "COM1"), "/dev/with space ");
  EXPECT_EQ(FindPort("[PORTS]\nCOM1=\"", "COM1"), "\"");
  EXPECT_EQ(FindPort("[PORTS]\nCOM1=a=b;c", "COM1"), "a=b;c");
}

TEST(FindPort, TakesTheLastOfRepeatedKeysAndSections) {
  EXPECT_EQ(FindPort("[PORTS]\nCOM1=a\nCOM1=b\n[X]\n[PORTS]\nCOM1=c\n", "COM1"), "c");
  EXPECT_EQ(FindPort("[PORTS]\nCOM1=a\nCOM1=\n", "COM1"), "");
}

TEST(FindPort, SurvivesDamage) {
  EXPECT_EQ(FindPort("[PORTS\nCOM1=a\n", "COM1"), "");
  EXPECT_EQ(FindPort("[PORTS]\nCOM1\n=a\n==\nCOM1=b", "COM1"), "b");
  EXPECT_EQ(FindPort("[PORTS]\nCOM1=/dev/a\nCOM1=/dev/\0b\n"s, "COM1"), "/dev/a");
  EXPECT_EQ(FindPort("[PORTS]\nCOM1=\x7F\n", "COM1"), "");
  const std::string whole = "[PORTS]\nCOM1=/dev/ttyUSB0\n";
  for (std::size_t size = 0; size <= whole.size(); ++size)
    EXPECT_TRUE("/dev/ttyUSB0"s.starts_with(FindPort(whole.substr(0, size), "COM1"))) << size;
  std::string noise;
  for (int value = 0; value < 100'000; ++value) noise += static_cast<char>(value * 7919 % 256);
  EXPECT_EQ(FindPort(noise, "COM1"), "");
}

class NodeNames : public testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(folder_.Path("Kolvane"));
    setenv("XDG_CONFIG_HOME", folder_.path().c_str(), 1);
    for (const char* name : {"KOLVANE_COM1", "KOLVANE_COM2", "KOLVANE_LPT1", "KOLVANE_LPT2", "KOLVANE_GPIB"})
      unsetenv(name);
  }
  std::string Path() const { return folder_.Path("Kolvane/ports.ini"); }
  void WriteFile(const std::string& text) { base::WriteBytes(Path(), text); }

  const base::TempFolder folder_;
};

TEST_F(NodeNames, HaveDefaults) {
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyS0");
  EXPECT_EQ(NodeFor("COM2"), "/dev/ttyS1");
  EXPECT_EQ(NodeFor("LPT1"), "/dev/parport0");
  EXPECT_EQ(NodeFor("LPT2"), "/dev/parport1");
  EXPECT_EQ(NodeFor("GPIB"), "0");
  EXPECT_EQ(NodeFor("USB"), "");
}

TEST_F(NodeNames, ComeFromTheEnvironmentThenFromTheFile) {
  WriteFile("[PORTS]\nCOM1=/dev/ttyUSB0\nGPIB=2\nLPT1=\n");
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyUSB0");
  EXPECT_EQ(NodeFor("GPIB"), "2");
  EXPECT_EQ(NodeFor("LPT1"), "/dev/parport0");
  setenv("KOLVANE_COM1", "/dev/ttyACM0", 1);
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyACM0");
  setenv("KOLVANE_COM1", "", 1);
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyUSB0");
}

TEST_F(NodeNames, ComeFromTheHomeFolderWithoutAnAbsoluteConfigFolder) {
  std::filesystem::create_directories(folder_.Path(".config/Kolvane"));
  folder_.Write(".config/Kolvane/ports.ini", "[PORTS]\nCOM2=/dev/home\n");
  setenv("HOME", folder_.path().c_str(), 1);
  for (const char* useless : {"", "relative"}) {
    setenv("XDG_CONFIG_HOME", useless, 1);
    EXPECT_EQ(NodeFor("COM2"), "/dev/home");
  }
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(NodeFor("COM2"), "/dev/home");
  unsetenv("HOME");
  EXPECT_EQ(NodeFor("COM2"), "/dev/ttyS1");
}

TEST_F(NodeNames, DoNotWaitForAnythingButAFile) {
  std::filesystem::create_directory(Path());
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyS0");
  std::filesystem::remove(Path());
  ASSERT_EQ(mkfifo(Path().c_str(), 0600), 0);
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyS0");
}

TEST_F(NodeNames, CountOnlyWholeLinesOfTheFirst64KiB) {
  const std::string line = "COM1=/dev/ttyUSB0\n";
  const std::string head = "[PORTS]\n";
  const std::string filler(65'536 - head.size() - line.size() - 1, '#');
  WriteFile(head + filler + "\n" + line + "COM1=/dev/beyond\n");
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyUSB0");
  WriteFile(head + filler + "#\n" + line);
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyS0");
  WriteFile(head + line + std::string(10 << 20, '\0'));
  EXPECT_EQ(NodeFor("COM1"), "/dev/ttyUSB0");
}

}  // namespace
}  // namespace kolvane::devlnk
