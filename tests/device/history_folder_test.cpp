#include "device/histories.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <barrier>
#include <cstdlib>
#include <thread>

#include "base/temp_folder.h"
#include "device/connection_form.h"

namespace kolvane::device {
namespace {

// A component's folder that may not be written, seen by a user other than root.
class HistoryFolderTest : public testing::Test {
 protected:
  HistoryFolderTest() {
    for (const base::TempFolder* folder : {&component_, &data_})
      std::filesystem::permissions(folder->path(), std::filesystem::perms::all);
    setenv("XDG_DATA_HOME", data_.path().c_str(), 1);
  }
  ~HistoryFolderTest() override {
    if (root_ && seteuid(0) != 0) std::abort();
    unsetenv("XDG_DATA_HOME");
    std::filesystem::permissions(component_.path(), std::filesystem::perms::all);
  }

  void LockComponent() {
    std::filesystem::permissions(component_.path(), std::filesystem::perms(0555));
    constexpr uid_t kUnprivilegedUser = 65534;
    ASSERT_TRUE(!root_ || seteuid(kUnprivilegedUser) == 0);
  }

  const bool root_ = geteuid() == 0;
  base::TempFolder component_;
  base::TempFolder data_;
};

TEST_F(HistoryFolderTest, IsTheComponentsIfThatCanBeWritten) {
  EXPECT_EQ(HistoryFolder(component_.path()), component_.path());
  EXPECT_FALSE(std::filesystem::exists(data_.Path("Kolvane")));
}

TEST_F(HistoryFolderTest, OtherwiseIsTheUsersFilledFromTheComponents) {
  component_.Write("ipaddr.ini", "10.0.0.5\r\n");
  component_.Write("MODEM.INI", "ATZ\r\n");
  LockComponent();
  const std::string folder = HistoryFolder(component_.path());
  EXPECT_EQ(folder, data_.Path("Kolvane"));
  EXPECT_EQ(LoadIpHistory(folder), AddressHistory{"10.0.0.5"});
  EXPECT_EQ(LoadModemScript(folder), "ATZ");
  EXPECT_EQ(data_.Read("Kolvane/USBADDR.INI"), "(no file)");
}

TEST_F(HistoryFolderTest, KeepsTheUsersFiles) {
  component_.Write("IPADDR.INI", "10.0.0.5\r\n");
  LockComponent();
  SaveIpHistory(HistoryFolder(component_.path()), {"10.0.0.6"});
  EXPECT_EQ(LoadIpHistory(HistoryFolder(component_.path())), AddressHistory{"10.0.0.6"});
  EXPECT_EQ(component_.Read("IPADDR.INI"), "10.0.0.5\r\n");
}

TEST_F(HistoryFolderTest, KeepsAnEmptyFileOfTheUsers) {
  component_.Write("IPADDR.INI", "10.0.0.5\r\n");
  LockComponent();
  SaveIpHistory(HistoryFolder(component_.path()), {});
  EXPECT_TRUE(LoadIpHistory(HistoryFolder(component_.path())).empty());
}

TEST_F(HistoryFolderTest, IsTheComponentsIfTheUsersCannotBeCreatedEither) {
  component_.Write("IPADDR.INI", "10.0.0.5\r\n");
  data_.Write("Kolvane", "a file in the way");
  LockComponent();
  EXPECT_EQ(HistoryFolder(component_.path()), component_.path());
  SaveIpHistory(component_.path(), {"10.0.0.6"});
  EXPECT_EQ(LoadIpHistory(component_.path()), AddressHistory{"10.0.0.5"});
}

TEST_F(HistoryFolderTest, TerminalsThatStartTogetherKeepEachOthersFiles) {
  component_.Write("IPADDR.INI", "10.0.0.5\r\n");
  LockComponent();
  for (int round = 0; round < 20; ++round) {
    std::filesystem::remove_all(data_.Path("Kolvane"));
    std::barrier start(3);
    std::vector<std::thread> fillers;
    for (int i = 0; i < 2; ++i) {
      fillers.emplace_back([&] {
        start.arrive_and_wait();
        HistoryFolder(component_.path());
      });
    }
    start.arrive_and_wait();
    SaveIpHistory(HistoryFolder(component_.path()), {"10.0.0.6"});
    for (std::thread& filler : fillers) filler.join();
    EXPECT_EQ(data_.Read("Kolvane/IPADDR.INI"), "10.0.0.6\r\n");
  }
}

TEST_F(HistoryFolderTest, ARunWithoutADialogReadsTheScriptAndCreatesNothing) {
  component_.Write("MODEM.INI", "ATZ\r\n");
  LockComponent();
  ConnectionParameters parameters;
  EXPECT_TRUE(CompleteConnection(parameters, component_.path()));
  EXPECT_EQ(parameters.modem_script, "ATZ");
  EXPECT_FALSE(std::filesystem::exists(data_.Path("Kolvane")));
  SaveModemScript(HistoryFolder(component_.path()), "ATDT42");
  EXPECT_TRUE(CompleteConnection(parameters, component_.path()));
  EXPECT_EQ(parameters.modem_script, "ATDT42");
}

TEST_F(HistoryFolderTest, IsTheUsersIfTheComponentsDoesNotExist) {
  EXPECT_EQ(HistoryFolder(component_.Path("none")), data_.Path("Kolvane"));
  EXPECT_EQ(HistoryFolder(""), data_.Path("Kolvane"));
}

TEST_F(HistoryFolderTest, IsInTheHomeFolderWithoutADataFolder) {
  const std::string home = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
  setenv("HOME", data_.path().c_str(), 1);
  setenv("XDG_DATA_HOME", "relative", 1);
  EXPECT_EQ(HistoryFolder(component_.Path("none")), data_.Path(".local/share/Kolvane"));
  unsetenv("XDG_DATA_HOME");
  EXPECT_EQ(HistoryFolder(component_.Path("none")), data_.Path(".local/share/Kolvane"));
  unsetenv("HOME");
  EXPECT_EQ(HistoryFolder(component_.Path("none")), component_.Path("none"));
  setenv("HOME", home.c_str(), 1);
}

}  // namespace
}  // namespace kolvane::device
