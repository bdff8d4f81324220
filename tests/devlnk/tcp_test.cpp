#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

class Tcp : public testing::Test {
 protected:
  void SetUp() override { QDX_SetTimeout(20'000); }
  void TearDown() override { QDX_ClosePort(); }
};

std::int32_t Open(const char* host, std::int32_t port) { return QDX_OpenPort(100, 1, host, port, 1, 512); }

int OptionOf(int fd, int level, int option) {
  int value = -1;
  socklen_t size = sizeof value;
  getsockopt(fd, level, option, &value, &size);
  return value;
}

/// The socket of this process that is connected to the port.
int SocketTo(std::int32_t port) {
  for (int fd = 3; fd < 256; ++fd) {
    sockaddr_in peer{};
    socklen_t size = sizeof peer;
    if (getpeername(fd, reinterpret_cast<sockaddr*>(&peer), &size) == 0 && ntohs(peer.sin_port) == port)
      return fd;
  }
  return -1;
}

TEST_F(Tcp, PortsAbove32767MayComeAsTheNegativeNumber) {
  const base::Listener listener(AF_INET);
  ASSERT_GT(listener.port(), 32'767) << "the system's ephemeral ports are expected to be high";
  EXPECT_EQ(Open("127.0.0.1", listener.port() - 65'536), 0);
}

TEST_F(Tcp, AForkedProcessLeavesTheConnectionOpen) {
  const base::Listener listener(AF_INET);
  ASSERT_EQ(Open("127.0.0.1", listener.port()), 0);
  const base::Descriptor peer(listener.Accept());
  const pid_t child = fork();
  if (child == 0) {
    QDX_ClosePort();
    _exit(0);
  }
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  char byte = 0;
  EXPECT_EQ(recv(peer.get(), &byte, 1, MSG_DONTWAIT), -1) << "no end of stream";
  EXPECT_EQ(QDX_WritePort("A"), 0);
}

TEST_F(Tcp, PortsOutOfRangeAreInvalid) {
  for (const std::int32_t port : {0, 65'536, -32'769, -65'536, INT32_MAX, INT32_MIN})
    EXPECT_EQ(Open("127.0.0.1", port), Code(Status::kInvalidArgument)) << port;
}

TEST_F(Tcp, HostsAreNamesOrAddressesWithSpacesAround) {
  const base::Listener listener(AF_INET);
  EXPECT_EQ(Open("localhost", listener.port()), 0);
  EXPECT_EQ(Open("  127.0.0.1 ", listener.port()), 0);
  EXPECT_EQ(Open("", listener.port()), Code(Status::kInvalidArgument));
  EXPECT_EQ(Open("  ", listener.port()), Code(Status::kInvalidArgument));
  EXPECT_EQ(Open(nullptr, listener.port()), Code(Status::kInvalidArgument));
}

// Invalid names: no name service is asked for them.
TEST_F(Tcp, HostsThatCannotExistAreNotFound) {
  for (const std::string& host :
       {std::string("-"), std::string("a b"), std::string("two..dots"), std::string(100'000, 'x')}) {
    EXPECT_EQ(Open(host.c_str(), 9), Code(Status::kHostNotFound)) << host.substr(0, 20);
    EXPECT_EQ(QDX_FlushInQueue(), Code(Status::kNotOpen));
  }
}

TEST_F(Tcp, AClosedPortRefuses) {
  const base::Listener not_listening(AF_INET, base::Listener::kNotListening);
  EXPECT_EQ(Open("127.0.0.1", not_listening.port()), Code(Status::kRefused));
  EXPECT_EQ(QDX_WritePort("x"), Code(Status::kNotOpen));
}

TEST_F(Tcp, AnAddressOutsideAllNetworksIsUnreachable) {
  // The limited broadcast address accepts no stream connections.
  EXPECT_EQ(Open("255.255.255.255", 9), Code(Status::kUnreachable));
}

TEST_F(Tcp, ASwallowedAttemptEndsWithTheTimeout) {
  const base::FullListener listener;
  QDX_SetTimeout(60);
  EXPECT_EQ(Open("127.0.0.1", listener.port()), Code(Status::kConnectTimeout));
}

TEST_F(Tcp, AResetInTheMiddleOfAnAnswerIsALoss) {
  base::Listener listener(AF_INET);
  ASSERT_EQ(Open("127.0.0.1", listener.port()), 0);
  const int partner = listener.Accept();
  ASSERT_EQ(send(partner, "1\n2", 3, 0), 3);
  EXPECT_EQ(Answer(), "1");
  const linger at_once{1, 0};
  setsockopt(partner, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  close(partner);
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
  EXPECT_EQ(QDX_WritePort("x"), Code(Status::kConnectionLost));
}

TEST_F(Tcp, BytesFromBeforeAResetAreReadAfterAFailedWrite) {
  base::Listener listener(AF_INET);
  ASSERT_EQ(Open("127.0.0.1", listener.port()), 0);
  const int partner = listener.Accept();
  ASSERT_EQ(send(partner, "last\n", 5, 0), 5);
  const linger at_once{1, 0};
  setsockopt(partner, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  close(partner);
  EXPECT_EQ(QDX_WritePort("x"), Code(Status::kConnectionLost));
  EXPECT_EQ(Answer(), "last");
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
}

TEST_F(Tcp, ConnectionsHaveKeepAliveAndAreNotInherited) {
  const base::Listener listener(AF_INET);
  ASSERT_EQ(Open("127.0.0.1", listener.port()), 0);
  const int fd = SocketTo(listener.port());
  ASSERT_GE(fd, 0);
  EXPECT_EQ(OptionOf(fd, IPPROTO_TCP, TCP_NODELAY), 1);
  EXPECT_EQ(OptionOf(fd, SOL_SOCKET, SO_KEEPALIVE), 1);
  EXPECT_EQ(OptionOf(fd, IPPROTO_TCP, TCP_KEEPIDLE), 10);
  EXPECT_EQ(OptionOf(fd, IPPROTO_TCP, TCP_KEEPINTVL), 5);
  EXPECT_EQ(OptionOf(fd, IPPROTO_TCP, TCP_KEEPCNT), 3);
  EXPECT_EQ(OptionOf(fd, IPPROTO_TCP, TCP_USER_TIMEOUT), 30'000);
  EXPECT_EQ(fcntl(fd, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
}

TEST_F(Tcp, ClosingWithUnreadInputStillSendsTheLastCommand) {
  base::Listener listener(AF_INET);
  ASSERT_EQ(Open("127.0.0.1", listener.port()), 0);
  const int partner = listener.Accept();
  ASSERT_EQ(send(partner, "unread", 6, 0), 6);
  EXPECT_EQ(QDX_WritePort("STP"), 0);
  EXPECT_EQ(QDX_ClosePort(), 0);
  char text[4] = {};
  EXPECT_EQ(recv(partner, text, 3, MSG_WAITALL), 3);
  EXPECT_STREQ(text, "STP");
  EXPECT_EQ(recv(partner, text, 1, 0), 0);
  close(partner);
}

TEST_F(Tcp, OpeningClosesTheEarlierPortEvenIfItFails) {
  base::Listener listener(AF_INET);
  ASSERT_EQ(Open("127.0.0.1", listener.port()), 0);
  const int partner = listener.Accept();
  EXPECT_EQ(QDX_OpenPort(12345, 1, "", 0, 0, 0), Code(Status::kInvalidArgument));
  char byte = 0;
  EXPECT_EQ(recv(partner, &byte, 1, 0), 0);
  close(partner);
  EXPECT_EQ(QDX_FlushInQueue(), Code(Status::kNotOpen));
}

}  // namespace
}  // namespace kolvane::devlnk
