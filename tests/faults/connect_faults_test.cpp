// Failing attempts to connect, and connections that the system ends, seen from a window.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "devlnk/status.h"
#include "faults/live_window.h"
#include "faults/thorough.h"

namespace kolvane::faults {
namespace {

using devlnk::Status;

std::string ConnectFailure(Status status) {
  return "Fehler beim Verbindungsaufbau: " + TextOf(status) + " (" + TextOf(status) + ")";
}

void ExpectConnects(LiveWindow& live) {
  live.NewLines();
  live.Press("TB_CONNECT");
  live.Send("NOW");
  EXPECT_EQ(live.NewLines(), "<+>|NOW|NOW");
}

class ConnectFault : public testing::Test {
 protected:
  void ExpectFailure(LiveWindow& live, Status status) {
    live.Press("TB_CONNECT");
    ASSERT_FALSE(live.boxes().empty());
    EXPECT_EQ(live.boxes().back(), ConnectFailure(status));
    EXPECT_FALSE(live.connected());
    EXPECT_EQ(live.NewLines(), "");
  }
};

TEST_F(ConnectFault, Row04Refused) {
  LiveWindow live(Port::kTcp, NoFault);
  const base::Listener not_listening(AF_INET, base::Listener::kNotListening);
  const std::int16_t own_port = live.connection().ip_port;
  live.connection().ip_port = static_cast<std::int16_t>(not_listening.port());
  ExpectFailure(live, Status::kRefused);
  live.connection().ip_port = own_port;
  ExpectConnects(live);
}

TEST_F(ConnectFault, Row04Swallowed) {
  LiveWindow live(Port::kTcp, NoFault);
  const base::FullListener full;
  const std::int16_t own_port = live.connection().ip_port;
  live.connection().ip_port = static_cast<std::int16_t>(full.port());
  live.connection().timeout_ms = 200;
  ExpectFailure(live, Status::kConnectTimeout);
  live.connection().ip_port = own_port;
  ExpectConnects(live);
}

TEST_F(ConnectFault, Row20NoModemLinesAndNoRs485) {
  for (const Port port : kLines) {
    LiveWindow live(port, NoFault);
    const int line = open(live.instrument().node().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    int lines = 0;
    EXPECT_EQ(ioctl(line, TIOCMGET, &lines), -1);
    EXPECT_EQ(errno, ENOTTY);
    close(line);
    ExpectConnects(live);
    EXPECT_TRUE(live.boxes().empty());
  }
}

TEST_F(ConnectFault, Row21TheLineIsInUse) {
  for (const Port port : kLines) {
    LiveWindow live(port, NoFault);
    const int line = open(live.instrument().node().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_EQ(flock(line, LOCK_EX | LOCK_NB), 0);
    ExpectFailure(live, Status::kBusy);
    close(line);
    ExpectConnects(live);
  }
}

TEST_F(ConnectFault, Row21TheLineIsNotThere) {
  LiveWindow live(Port::kCom, NoFault);
  const std::string node = live.instrument().node();
  setenv("KOLVANE_COM1", "/nonexistent/line", 1);
  ExpectFailure(live, Status::kNoSuchNode);
  setenv("KOLVANE_COM1", node.c_str(), 1);
  ExpectConnects(live);
}

TEST_F(ConnectFault, Row05AConnectionKilledFromOutside) {
  if (geteuid() != 0) GTEST_SKIP() << "only root may kill connections";
  LiveWindow live(Port::kTcp, NoFault);
  ExpectConnects(live);
  const std::string port = std::to_string(live.instrument().ip_port());
  const std::string kill = "ss -K state established dport = :" + port + " >/dev/null 2>&1";
  if (std::system(("command -v ss >/dev/null && " + kill).c_str()) != 0) GTEST_SKIP() << "no ss -K";
  const std::string still_open = "test -z \"$(ss -H state established dport = :" + port + ")\"";
  if (std::system(still_open.c_str()) != 0) GTEST_SKIP() << "this kernel kills no connections";
  live.Send("NEXT");
  const std::string lost = TextOf(Status::kConnectionLost);
  const std::string lines = live.NewLines();
  EXPECT_TRUE(lines.ends_with("NEXT|" + lost)) << lines;
  live.Press("TB_CONNECT");
  ExpectConnects(live);
}

/// While it lives, this thread and those that it starts have their own network.
class OwnNetwork {
 public:
  OwnNetwork() : old_(open("/proc/self/ns/net", O_RDONLY | O_CLOEXEC)) {
    entered_ = old_ >= 0 && unshare(CLONE_NEWNET) == 0;
    if (entered_) SwitchLoopback(true);
  }
  ~OwnNetwork() {
    if (entered_) setns(old_, CLONE_NEWNET);
    if (old_ >= 0) close(old_);
  }
  bool entered() const { return entered_; }

  /// Switched off, it drops everything sent, like a cable pulled out after a switch.
  void SwitchLoopback(bool on) {
    const int any = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = static_cast<short>(on ? IFF_UP | IFF_RUNNING : 0);
    EXPECT_EQ(ioctl(any, SIOCSIFFLAGS, &request), 0);
    close(any);
  }

 private:
  int old_;
  bool entered_ = false;
};

TEST_F(ConnectFault, Row03AHalfOpenConnection) {
  OwnNetwork network;
  if (!network.entered()) GTEST_SKIP() << "no separate network namespace";
  LiveWindow live(Port::kTcp, [](Wire& wire) {
    wire.Send("FAULT\r\n");
    wire.AwaitEndOfFault();
    return After::kEnd;
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "<+>|FAULT|FAULT");
  network.SwitchLoopback(false);
  live.terminal().shown.timeout = "100";
  for (int commands = 0; commands < 3; ++commands) {
    live.Send("NEXT");
    EXPECT_EQ(live.NewLines(), "NEXT|" + TextOf(Status::kReadTimeout));
  }
  if (IsThorough()) {
    live.terminal().shown.timeout = "60000";
    live.Send("NEXT");
    EXPECT_EQ(live.NewLines(), "NEXT|" + TextOf(Status::kConnectionLost));
  }
  live.Press("TB_CONNECT");
  live.NewLines();
  live.connection().timeout_ms = 200;
  live.Press("TB_CONNECT");
  ASSERT_FALSE(live.boxes().empty());
  EXPECT_EQ(live.boxes().back(), ConnectFailure(Status::kConnectTimeout));
  network.SwitchLoopback(true);
  live.terminal().shown.timeout = "20000";
  live.connection().timeout_ms = 5000;
  live.instrument().EndFault();
  ExpectConnects(live);
}

}  // namespace
}  // namespace kolvane::faults
