#include "device/histories.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/temp_folder.h"

namespace kolvane::device {
namespace {

using Lines = AddressHistory;

TEST(IpHistory, SkipsLinesThatAreExactlyZeroOrOne) {
  const base::TempFolder folder;
  folder.Write("IPADDR.INI", "0\r\n1\r\n10.0.0.5\r\n");
  EXPECT_EQ(LoadIpHistory(folder.path()), Lines{"10.0.0.5"});
  folder.Write("IPADDR.INI", " 0\r\n00\r\n10\r\n1 \r\n");
  EXPECT_EQ(LoadIpHistory(folder.path()), (Lines{" 0", "00", "10", "1 "}));
}

TEST(UsbHistory, SkipsNothing) {
  const base::TempFolder folder;
  folder.Write("USBADDR.INI", "0\r\n\r\n1\r\nSN 7\r\n");
  EXPECT_EQ(LoadUsbHistory(folder.path()), (Lines{"0", "", "1", "SN 7"}));
}

TEST(Histories, KeepEmptyLines) {
  const base::TempFolder folder;
  folder.Write("IPADDR.INI", "\r\na\r\n\r\n");
  EXPECT_EQ(LoadIpHistory(folder.path()), (Lines{"", "a", ""}));
}

TEST(Histories, TakeEveryKindOfLineEndAndALastLineWithoutOne) {
  const base::TempFolder folder;
  folder.Write("USBADDR.INI", "a\nb\rc\r\nd");
  EXPECT_EQ(LoadUsbHistory(folder.path()), (Lines{"a", "b", "c", "d"}));
}

TEST(Histories, AreEmptyWithoutAFile) {
  const base::TempFolder folder;
  EXPECT_TRUE(LoadIpHistory(folder.path()).empty());
  EXPECT_TRUE(LoadUsbHistory(folder.path()).empty());
  EXPECT_EQ(LoadModemScript(folder.path()), "");
  EXPECT_TRUE(LoadIpHistory(folder.Path("none")).empty());
}

TEST(Histories, ReadOnlyRegularFiles) {
  const base::TempFolder folder;
  std::filesystem::create_directory(folder.Path("USBADDR.INI"));
  EXPECT_TRUE(LoadUsbHistory(folder.path()).empty());
  ASSERT_EQ(mkfifo((folder.Path("IPADDR.INI")).c_str(), 0600), 0);
  EXPECT_TRUE(LoadIpHistory(folder.path()).empty());
}

TEST(Histories, AreWrittenLineByLineInOrder) {
  const base::TempFolder folder;
  folder.Write("IPADDR.INI", "old\r\nlonger than what follows\r\n");
  SaveIpHistory(folder.path(), {"b", "", "a"});
  SaveUsbHistory(folder.path(), {});
  EXPECT_EQ(folder.Read("IPADDR.INI"), "b\r\n\r\na\r\n");
  EXPECT_EQ(folder.Read("USBADDR.INI"), "");
}

TEST(Histories, AreWindows1252) {
  const base::TempFolder folder;
  folder.Write("USBADDR.INI", "Ger\xE4t \x80\r\n");
  EXPECT_EQ(LoadUsbHistory(folder.path()), Lines{"Gerät €"});
  SaveUsbHistory(folder.path(), {"Größe", "→"});
  EXPECT_EQ(folder.Read("USBADDR.INI"),
            "Gr\xF6\xDF"
            "e\r\n?\r\n");
}

TEST(Histories, HoldManyEntries) {
  const base::TempFolder folder;
  Lines many;
  for (int i = 0; i < 10000; ++i) many.push_back("10.0.0." + std::to_string(i));
  SaveIpHistory(folder.path(), many);
  EXPECT_EQ(LoadIpHistory(folder.path()), many);
}

TEST(Histories, ShowNoErrorIfNothingCanBeWritten) {
  const base::TempFolder folder;
  SaveIpHistory(folder.Path("none"), {"a"});
  std::filesystem::create_directory(folder.Path("IPADDR.INI"));
  SaveIpHistory(folder.path(), {"a"});
  EXPECT_TRUE(std::filesystem::is_directory(folder.Path("IPADDR.INI")));
}

TEST(Remember, AddsNewEntriesAtTheEnd) {
  Lines history{"b", "a"};
  Remember(history, "c");
  Remember(history, "b");
  Remember(history, "c");
  EXPECT_EQ(history, (Lines{"b", "a", "c"}));
}

TEST(Remember, ComparesExactly) {
  Lines history{"Host"};
  Remember(history, "host");
  Remember(history, "Host ");
  Remember(history, "");
  EXPECT_EQ(history, (Lines{"Host", "host", "Host ", ""}));
}

TEST(Remember, DoesNotAddEntriesThatTheFileCannotHold) {
  Lines history;
  Remember(history, "→1");
  Remember(history, "→1");
  Remember(history, "a\r\nb");
  EXPECT_EQ(history, Lines{"?1"});
}

TEST(ModemScript, IsReadWithoutLinesOfSpaces) {
  const base::TempFolder folder;
  folder.Write("MODEM.INI", "\r\nATZ\r\n\r\n\r\nATDT 0815\r\n");
  EXPECT_EQ(LoadModemScript(folder.path()), "ATZ\r\nATDT 0815");
}

TEST(ModemScript, IsWrittenWithOneLineEndAfterIt) {
  const base::TempFolder folder;
  SaveModemScript(folder.path(), "ATZ\r\n\r\nATDT");
  EXPECT_EQ(folder.Read("MODEM.INI"), "ATZ\r\n\r\nATDT\r\n");
  SaveModemScript(folder.path(), "");
  EXPECT_EQ(folder.Read("MODEM.INI"), "\r\n");
  EXPECT_EQ(LoadModemScript(folder.path()), "");
}

TEST(FolderFile, MatchesWithoutRegardToCase) {
  const base::TempFolder folder;
  EXPECT_EQ(FolderFile(folder.path(), "IPADDR.INI"), folder.Path("IPADDR.INI"));
  folder.Write("ipaddr.ini", "x\r\n");
  EXPECT_EQ(LoadIpHistory(folder.path()), Lines{"x"});
  SaveIpHistory(folder.path(), {"y"});
  EXPECT_EQ(folder.Read("ipaddr.ini"), "y\r\n");
  EXPECT_EQ(folder.Read("IPADDR.INI"), "(no file)");
}

TEST(FolderFile, PrefersTheExactNameThenTheFirst) {
  const base::TempFolder folder;
  folder.Write("ipaddr.ini", "");
  folder.Write("Ipaddr.ini", "");
  EXPECT_EQ(FolderFile(folder.path(), "IPADDR.INI"), folder.Path("Ipaddr.ini"));
  folder.Write("IPADDR.INI", "");
  EXPECT_EQ(FolderFile(folder.path(), "IPADDR.INI"), folder.Path("IPADDR.INI"));
}

}  // namespace
}  // namespace kolvane::device
