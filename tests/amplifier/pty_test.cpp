#include "amplifier/pty.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "amplifier/server.h"
#include "base/temp_folder.h"
#include "client.h"

namespace kolvane::amplifier {
namespace {

namespace fs = std::filesystem;

class PtyTest : public testing::Test {
 protected:
  /// Differs for each new link.
  std::int64_t LinkTime() const {
    struct stat link {};
    return lstat(link_.c_str(), &link) == 0 ? link.st_ctim.tv_sec * 1'000'000'000 + link.st_ctim.tv_nsec : 0;
  }
  bool LinkExists() const { return fs::is_symlink(fs::symlink_status(link_)); }

  const base::TempFolder folder_;
  const std::string link_ = folder_.Path("amp");
};

TEST_F(PtyTest, AnswersWhenTheTerminalReconnects) {
  ServerThread amplifier({.pty_link = link_});
  for (int round = 0; round < 3; ++round) {
    const Client client = Client::Pty(link_);
    EXPECT_EQ(client.Ask("CHS?"), "1,2,3,4,5,6,7,8");
    EXPECT_EQ(client.Ask("RATE " + std::to_string(round + 1)), "0");
  }
  EXPECT_EQ(Client::Pty(link_).Ask("RATE?"), "3");
}

TEST_F(PtyTest, CarriesEveryByteUnchanged) {
  ServerThread amplifier({.pty_link = link_});
  const Client client = Client::Pty(link_);
  client.Send("RAMP? 100000\n");
  const std::string ramp = client.Read(100'000);
  ASSERT_EQ(ramp.size(), 100'000u);
  for (std::size_t i = 0; i < ramp.size(); ++i) ASSERT_EQ(static_cast<unsigned char>(ramp[i]), i % 256) << i;
}

TEST_F(PtyTest, IsOneInstrumentWithTcp) {
  ServerThread amplifier({.tcp_port = 0, .pty_link = link_});
  const Client serial = Client::Pty(link_);
  const Client network = Client::Tcp(amplifier.Port());
  EXPECT_EQ(serial.Ask("NAME 1,Shared"), "0");
  EXPECT_EQ(network.Ask("NAME? 1"), "Shared");
}

TEST_F(PtyTest, RemovesTheLinkAtTheEnd) {
  {
    ServerThread amplifier({.pty_link = link_});
    EXPECT_TRUE(LinkExists());
  }
  EXPECT_FALSE(LinkExists());
  EXPECT_TRUE(fs::is_empty(folder_.path()));
}

TEST_F(PtyTest, ReplacesAStaleLink) {
  fs::create_symlink("/dev/pts/does-not-exist", link_);
  ServerThread amplifier({.pty_link = link_});
  EXPECT_EQ(Client::Pty(link_).Ask("OPMODE?"), "0");
}

TEST_F(PtyTest, LeavesALinkOfAnotherProgram) {
  {
    ServerThread amplifier({.pty_link = link_});
    fs::remove(link_);
    fs::create_symlink("/dev/null", link_);
  }
  EXPECT_TRUE(LinkExists());
}

TEST_F(PtyTest, RefusesToReplaceAFile) {
  std::ofstream(link_) << "precious";
  try {
    PtyStream stream(link_);
    ADD_FAILURE();
  } catch (const std::system_error& error) {
    EXPECT_EQ(std::string(error.what()), "cannot make the link " + link_ + ": File exists");
  }
  EXPECT_TRUE(fs::is_regular_file(link_));
}

TEST_F(PtyTest, HangsUpAndReturnsUnderTheSameLink) {
  ServerThread amplifier({.pty_link = link_, .behaviour = {.close_after = 1}});
  for (int round = 0; round < 3; ++round) {
    const std::int64_t before = LinkTime();
    const Client client = Client::Pty(link_);
    EXPECT_EQ(client.Ask("RATE " + std::to_string(round + 1)), "0");
    EXPECT_EQ(client.Read(1), "");
    // The line is gone; another program may have its number now.
    while (LinkTime() == before) sched_yield();
  }
}

TEST_F(PtyTest, DripsAsOverTcp) {
  ServerThread amplifier({.pty_link = link_, .transmission = {.drip_ms = 1}});
  const Client client = Client::Pty(link_);
  EXPECT_EQ(client.Ask("ECHO abc"), "abc");
  EXPECT_EQ(client.Ask("ECHO def"), "def");
}

}  // namespace
}  // namespace kolvane::amplifier
