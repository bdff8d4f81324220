#include "device/ports_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "base/temp_folder.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

TEST(PortsFileText, AKeyIsChangedAtItsPosition) {
  EXPECT_EQ(WithPortSetting("; mine\n[PORTS]\nCOM1=/a\n# more\nX=1\n", "COM1", "/b"),
            "; mine\n[PORTS]\nCOM1=/b\n# more\nX=1\n");
  EXPECT_EQ(WithPortSetting("[ports]\n com1 = /a \r\nCOM1=/c\n", "COM1", "/b"), "[ports]\nCOM1=/b\n");
}

TEST(PortsFileText, ANewKeyIsAppendedToTheSection) {
  EXPECT_EQ(WithPortSetting("", "COM1", "/a"), "[PORTS]\nCOM1=/a\n");
  EXPECT_EQ(WithPortSetting("[PORTS]\nCOM1=/a", "COM2", "/b"), "[PORTS]\nCOM1=/a\nCOM2=/b\n");
  EXPECT_EQ(WithPortSetting("[PORTS]\nCOM1=/a\n\n[OTHER]\nCOM2=/x\n", "COM2", "/b"),
            "[PORTS]\nCOM1=/a\nCOM2=/b\n\n[OTHER]\nCOM2=/x\n");
  EXPECT_EQ(WithPortSetting("[OTHER]\nCOM1=/x", "COM1", "/a"), "[OTHER]\nCOM1=/x\n[PORTS]\nCOM1=/a\n");
}

TEST(PortsFileText, AnEmptyValueRemovesTheKey) {
  EXPECT_EQ(WithPortSetting("[PORTS]\nCOM1=/a\nCOM2=/b\n", "COM1", ""), "[PORTS]\nCOM2=/b\n");
  EXPECT_EQ(WithPortSetting("[PORTS]\n", "COM1", ""), "[PORTS]\n");
}

TEST(PortsFileText, NewLinesEndLikeTheFirstOne) {
  const std::string dos = "[PORTS]\r\nCOM1=/a\r\n; mine";
  EXPECT_EQ(WithPortSetting(dos, "COM1", "/b"), "[PORTS]\r\nCOM1=/b\r\n; mine");
  EXPECT_EQ(WithPortSetting(dos, "COM2", "/b"), "[PORTS]\r\nCOM1=/a\r\n; mine\r\nCOM2=/b\r\n");
  EXPECT_EQ(WithPortSetting("; mine\r\n", "COM1", "/b"), "; mine\r\n[PORTS]\r\nCOM1=/b\r\n");
}

/// Tests with their own configuration folder.
class PortsFileTest : public testing::Test {
 protected:
  PortsFileTest() {
    const char* before = std::getenv("XDG_CONFIG_HOME");
    before_ = before == nullptr ? "" : before;
    setenv("XDG_CONFIG_HOME", folder_.path().c_str(), 1);
  }
  ~PortsFileTest() override {
    unsetenv("KOLVANE_COM1");
    before_.empty() ? unsetenv("XDG_CONFIG_HOME") : setenv("XDG_CONFIG_HOME", before_.c_str(), 1);
  }

  base::TempFolder folder_;
  std::string path_ = folder_.Path("Kolvane/ports.ini");
  std::string before_;
};

TEST_F(PortsFileTest, SavedValuesAreLoaded) {
  std::vector<PortSetting> settings = LoadPortSettings();
  ASSERT_EQ(settings.size(), kPortSettings.size());
  settings[0].value = "/dev/ttyUSB0";
  settings[1].value = "115200";
  EXPECT_EQ(SavePortSettings(settings), 0);
  EXPECT_EQ(base::ReadBytes(path_), "[PORTS]\nCOM1=/dev/ttyUSB0\nCOM1_BAUD=115200\n");
  EXPECT_EQ(LoadPortSettings()[0].value, "/dev/ttyUSB0");
}

TEST_F(PortsFileTest, WithoutChangesNothingIsWritten) {
  EXPECT_EQ(SavePortSettings(LoadPortSettings()), 0);
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(PortsFileTest, AFolderThatCannotBeCreatedIsAFailure) {
  base::WriteBytes(folder_.Path("Kolvane"), "a file");
  std::vector<PortSetting> settings = LoadPortSettings();
  settings[0].value = "/dev/ttyUSB0";
  EXPECT_EQ(SavePortSettings(settings), ENOTDIR);
  EXPECT_EQ(base::ReadBytes(folder_.Path("Kolvane")), "a file");
}

TEST_F(PortsFileTest, AVariableWinsAndIsNotWritten) {
  setenv("KOLVANE_COM1", "/dev/ttyACM0", 1);
  const std::vector<PortSetting> settings = LoadPortSettings();
  EXPECT_TRUE(settings[0].fixed);
  EXPECT_EQ(settings[0].value, "/dev/ttyACM0");
  EXPECT_EQ(SavePortSettings(settings), 0);
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(PortsFileTest, EachPortCodeHasTheNodeOfItsKey) {
  EXPECT_EQ(PortNode(port_code::kGpib), "0");
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path());
  base::WriteBytes(path_, "[PORTS]\nCOM1=/a\nCOM2=/b\nLPT1=/c\nLPT2=/d\nGPIB=3\n");
  std::vector<std::string> nodes;
  for (const PortKind& kind : kPortKinds) nodes.push_back(PortNode(kind.code));
  EXPECT_EQ(nodes, (std::vector<std::string>{"/a", "/b", "/a", "/b", "/c", "/d", "3", "", "", ""}));
}

}  // namespace
}  // namespace kolvane::device
