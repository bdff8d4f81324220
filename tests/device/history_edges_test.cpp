#include <gtest/gtest.h>
#include <sys/wait.h>

#include <filesystem>
#include <random>

#include "base/encoding.h"
#include "base/fake_prompt.h"
#include "base/in_child.h"
#include "base/small_disk.h"
#include "base/small_files.h"
#include "base/temp_folder.h"
#include "base/unprivileged_user.h"
#include "device/connection_form.h"
#include "device/histories.h"

namespace kolvane::device {
namespace {

namespace fs = std::filesystem;
using Lines = AddressHistory;

TEST(HistoryEdges, EveryByteExceptLineEndsSurvives) {
  const base::TempFolder folder;
  std::string bytes;
  for (int i = 0; i < 256; ++i) {
    if (i != '\r' && i != '\n') bytes += static_cast<char>(i);
  }
  bytes += "\r\n";
  folder.Write("USBADDR.INI", bytes);
  const Lines lines = LoadUsbHistory(folder.path());
  ASSERT_EQ(lines.size(), 1u);
  fs::remove(folder.Path("USBADDR.INI"));
  SaveUsbHistory(folder.path(), lines);
  EXPECT_EQ(folder.Read("USBADDR.INI"), bytes);
}

TEST(HistoryEdges, SavingTwiceChangesNothingMore) {
  const base::TempFolder folder;
  std::mt19937 random(1);
  for (int round = 0; round < 40; ++round) {
    std::string bytes;
    for (int i = 0; i < 60; ++i) bytes += "\r\n01a\0\xE4 "[random() % 8];
    folder.Write("IPADDR.INI", bytes);
    folder.Write("USBADDR.INI", bytes);
    folder.Write("MODEM.INI", bytes);
    const Lines ip = LoadIpHistory(folder.path());
    const Lines usb = LoadUsbHistory(folder.path());
    const std::string script = LoadModemScript(folder.path());
    EXPECT_LE(ip.size(), usb.size());
    SaveIpHistory(folder.path(), ip);
    SaveUsbHistory(folder.path(), usb);
    SaveModemScript(folder.path(), script);
    EXPECT_EQ(LoadIpHistory(folder.path()), ip);
    EXPECT_EQ(LoadUsbHistory(folder.path()), usb);
    EXPECT_EQ(LoadModemScript(folder.path()), script);
  }
}

TEST(HistoryEdges, ZeroAndOneAreSkippedAtEveryPositionAndWithoutALineEnd) {
  const base::TempFolder folder;
  folder.Write("IPADDR.INI", "1\r\na\r\n0\r\n\r\n0\r\n+1\r\n0x\r\n1");
  EXPECT_EQ(LoadIpHistory(folder.path()), (Lines{"a", "", "+1", "0x"}));
}

TEST(HistoryEdges, ALastLineMayLackItsEndAndAnEmptyFileHasNoLine) {
  const base::TempFolder folder;
  folder.Write("USBADDR.INI", "a\r\n");
  EXPECT_EQ(LoadUsbHistory(folder.path()), Lines{"a"});
  folder.Write("USBADDR.INI", "a\r");
  EXPECT_EQ(LoadUsbHistory(folder.path()), Lines{"a"});
  folder.Write("USBADDR.INI", "\r\n");
  EXPECT_EQ(LoadUsbHistory(folder.path()), Lines{""});
  folder.Write("USBADDR.INI", "");
  EXPECT_TRUE(LoadUsbHistory(folder.path()).empty());
}

TEST(HistoryEdges, LinesMayBeLongAndMany) {
  const base::TempFolder folder;
  const std::string line(1024 * 1024, 'x');
  SaveUsbHistory(folder.path(), {line, "b"});
  EXPECT_TRUE(LoadUsbHistory(folder.path()) == (Lines{line, "b"}));
  SaveModemScript(folder.path(), line);
  EXPECT_TRUE(LoadModemScript(folder.path()) == line);
  std::string many;
  while (many.size() < 10 * 1024 * 1024) many += "192.168.100.100\r\n";
  folder.Write("IPADDR.INI", many);
  EXPECT_EQ(LoadIpHistory(folder.path()).size(), many.size() / 17);
}

TEST(HistoryEdges, AScriptOfSpacesIsEmpty) {
  const base::TempFolder folder;
  folder.Write("MODEM.INI", "\r\n\r\n\n\r");
  EXPECT_EQ(LoadModemScript(folder.path()), "");
  folder.Write("MODEM.INI", " \r\n\t\r\nATZ");
  EXPECT_EQ(LoadModemScript(folder.path()), " \r\n\t\r\nATZ") << "a line of spaces is not empty";
}

TEST(HistoryEdges, NoFolderDoesNotMeanTheCurrentOne) {
  const base::TempFolder started_in;
  started_in.Write("IPADDR.INI", "10.0.0.5\r\n");
  fs::current_path(started_in.path());
  EXPECT_EQ(LoadIpHistory(""), AddressHistory{});
  SaveIpHistory("", {"a"});
  SaveUsbHistory("", {"b"});
  fs::current_path("/");
  EXPECT_EQ(started_in.Read("IPADDR.INI"), "10.0.0.5\r\n");
  EXPECT_EQ(started_in.Names(), std::vector<std::string>{"IPADDR.INI"});
}

TEST(HistoryEdges, AFileThatMayNotBeReadIsEmptyAndStays) {
  const base::TempFolder folder;
  folder.Write("IPADDR.INI", "a\r\n");
  fs::permissions(folder.path(), fs::perms::all);
  fs::permissions(folder.Path("IPADDR.INI"), fs::perms::none);
  {
    const base::UnprivilegedUser user;
    EXPECT_TRUE(LoadIpHistory(folder.path()).empty());
    SaveIpHistory(folder.path(), {"b"});
  }
  fs::permissions(folder.Path("IPADDR.INI"), fs::perms(0600));
  EXPECT_EQ(folder.Read("IPADDR.INI"), "a\r\n");
}

TEST(HistoryEdges, ALinkStaysALink) {
  const base::TempFolder folder;
  folder.Write("elsewhere", "a\r\n");
  fs::create_symlink("elsewhere", folder.Path("IPADDR.INI"));
  SaveIpHistory(folder.path(), {"b"});
  EXPECT_TRUE(fs::is_symlink(folder.Path("IPADDR.INI")));
  EXPECT_EQ(folder.Read("elsewhere"), "b\r\n");
}

TEST(HistoryEdges, AFileSizeLimitLeavesTheOldFile) {
  const base::TempFolder folder;
  SaveIpHistory(folder.path(), {"a"});
  {
    const base::SmallFiles small(10);
    SaveIpHistory(folder.path(), {"longer than the limit"});
  }
  EXPECT_EQ(folder.Read("IPADDR.INI"), "a\r\n");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"IPADDR.INI"});
}

TEST(HistoryEdges, AFullDiskLeavesTheOldFile) {
  const base::TempFolder folder;
  const bool mounted = base::OnSmallDisk(folder.path(), [&] {
    SaveIpHistory(folder.path(), {"a"});
    SaveModemScript(folder.path(), "ATZ");
    base::FillDisk(folder.Path("filler"), 0);
    SaveIpHistory(folder.path(), {"b"});
    SaveModemScript(folder.path(), "ATDT");
    EXPECT_EQ(LoadIpHistory(folder.path()), Lines{"a"});
    EXPECT_EQ(LoadModemScript(folder.path()), "ATZ");
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"IPADDR.INI", "MODEM.INI", "filler"}));
  });
  if (!mounted) GTEST_SKIP() << "this user may not mount a small disk";
}

// What a start in operating mode 2 does with the stored connection.
void Start(const base::TempFolder& folder, const std::string& ip_address) {
  ConnectionParameters parameters;
  parameters.port_option = 8;
  parameters.ip_address = ip_address;
  base::FakePrompt prompt;
  ConfirmStoredConnection(parameters, folder.path(), prompt);
}

TEST(HistoryEdges, AStartNormalizesTheFiles) {
  const base::TempFolder folder;
  folder.Write("IPADDR.INI", "0\n10.0.0.5\n1\n");
  folder.Write("USBADDR.INI", "1\nSN");
  folder.Write("MODEM.INI", "\n\nATZ\n\nATDT\n");
  Start(folder, "10.0.0.6");
  EXPECT_EQ(folder.Read("IPADDR.INI"), "10.0.0.5\r\n10.0.0.6\r\n");
  EXPECT_EQ(folder.Read("USBADDR.INI"), "1\r\nSN\r\n");
  EXPECT_EQ(folder.Read("MODEM.INI"), "ATZ\r\nATDT\r\n");
}

TEST(HistoryEdges, AStartCreatesMissingFiles) {
  const base::TempFolder folder;
  Start(folder, "10.0.0.6");
  EXPECT_EQ(folder.Read("IPADDR.INI"), "10.0.0.6\r\n");
  EXPECT_EQ(folder.Read("USBADDR.INI"), "");
  EXPECT_EQ(folder.Read("MODEM.INI"), "\r\n");
}

TEST(HistoryEdges, TerminalsThatStartAtOnceLeaveAWholeFile) {
  const base::TempFolder folder;
  for (int round = 0; round < 20; ++round) {
    folder.Write("IPADDR.INI", "first\r\nsecond\r\n");
    int start[2];
    ASSERT_EQ(pipe(start), 0);
    std::vector<pid_t> children;
    for (int i = 0; i < 3; ++i) {
      children.push_back(base::InChild([&] {
        close(start[1]);
        char byte;
        // Every child wakes up when the parent closes its end.
        if (read(start[0], &byte, 1) == 0) Start(folder, std::string(2000, static_cast<char>('a' + i)));
      }));
    }
    close(start[0]);
    close(start[1]);
    for (const pid_t child : children) {
      int status = -1;
      waitpid(child, &status, 0);
      EXPECT_EQ(status, 0);
    }
    const Lines lines = LoadIpHistory(folder.path());
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 2), (Lines{"first", "second"}));
    for (auto line = lines.begin() + 2; line != lines.end(); ++line)
      EXPECT_EQ(*line, std::string(2000, line->front()));
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"IPADDR.INI", "MODEM.INI", "USBADDR.INI"}));
  }
}

}  // namespace
}  // namespace kolvane::device
