#include "amplifier/server.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/no_descriptors.h"
#include "client.h"

namespace kolvane::amplifier {
namespace {

TEST(Server, AnswersOverTcp) {
  ServerThread amplifier;
  ASSERT_NE(amplifier.Port(), 0);
  const Client client = Client::Tcp(amplifier.Port());
  EXPECT_EQ(client.Ask("CHS?"), "1,2,3,4,5,6,7,8");
  EXPECT_EQ(client.Ask("nonsense"), "?");
  client.Send("RAMP? 4\rCHS?\r\n");
  EXPECT_EQ(client.Read(4), std::string("\0\1\2\3", 4));
  EXPECT_EQ(client.ReadUntil("\r\n"), "1,2,3,4,5,6,7,8");
}

TEST(Server, AnswersOverIpv6IfAvailable) {
  ServerThread amplifier;
  const Client client = Client::Tcp(amplifier.Port(), true);
  if (!client) GTEST_SKIP() << "no IPv6 loopback";
  EXPECT_EQ(client.Ask("OPMODE?"), "0");
}

TEST(Server, KeepsSettingsFromOneConnectionToTheNext) {
  ServerThread amplifier;
  {
    const Client first = Client::Tcp(amplifier.Port());
    EXPECT_EQ(first.Ask("NAME 1,Kept"), "0");
    first.Send("DCL\n");
  }
  const Client second = Client::Tcp(amplifier.Port());
  EXPECT_EQ(second.Ask("NAME? 1"), "Kept");
}

TEST(Server, ServesSeveralConnectionsAsOneInstrument) {
  ServerThread amplifier;
  std::vector<Client> clients;
  for (int i = 0; i < 10; ++i) clients.push_back(Client::Tcp(amplifier.Port()));
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(clients[static_cast<std::size_t>(i)].Ask("RATE " + std::to_string(i + 1)), "0");
    for (const Client& other : clients) EXPECT_EQ(other.Ask("RATE?"), std::to_string(i + 1));
  }
}

TEST(Server, AcceptsConnectionsPastItsLimitWhenOthersEnd) {
  ServerThread amplifier;
  std::vector<Client> clients;
  for (int i = 0; i < 64; ++i) {
    clients.push_back(Client::Tcp(amplifier.Port()));
    EXPECT_EQ(clients.back().Ask("OPMODE?"), "0");
  }
  const Client late = Client::Tcp(amplifier.Port());
  late.Send("OPMODE?\n");
  clients.pop_back();
  EXPECT_EQ(late.ReadUntil("\r\n"), "0");
}

// Neither a byte nor a close or reset has arrived.
bool IsOpenAndSilent(const Client& client) {
  char byte = 0;
  return recv(client.descriptor(), &byte, 1, MSG_DONTWAIT) == -1 && errno == EAGAIN;
}

void ConnectTo(std::uint16_t port, const base::Descriptor& socket) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

TEST(Listener, TriesAgainLaterWithoutADescriptor) {
  TcpListener listener(0);
  const base::Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  ConnectTo(listener.Port(), socket);
  {
    const base::NoDescriptors none;
    EXPECT_FALSE(listener.Accept(listener.ipv4()));
  }
  EXPECT_TRUE(listener.PausedUntil());
  EXPECT_TRUE(listener.Accept(listener.ipv4()));
  EXPECT_FALSE(listener.PausedUntil());
}

TEST(Server, AcceptsAConnectionOnceADescriptorIsFree) {
  ServerThread amplifier;
  const base::Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  {
    const base::NoDescriptors none;
    ConnectTo(amplifier.Port(), socket);
  }
  EXPECT_EQ(write(socket.get(), "CHS?\n", 5), 5);
  char answer[17];
  EXPECT_EQ(recv(socket.get(), answer, sizeof answer, MSG_WAITALL), 17);
  EXPECT_EQ(std::string_view(answer, sizeof answer), "1,2,3,4,5,6,7,8\r\n");
}

TEST(Server, AWaitingConnectionBlocksNoOther) {
  ServerThread amplifier;
  const Client slow = Client::Tcp(amplifier.Port());
  slow.Send("WAIT? 600000\n");
  const Client quick = Client::Tcp(amplifier.Port());
  EXPECT_EQ(quick.Ask("OPMODE?"), "0");
  EXPECT_TRUE(IsOpenAndSilent(slow));
}

TEST(Server, DelaysAndDripsArriveWhole) {
  ServerThread amplifier({.transmission = {.delay_ms = 2, .drip_ms = 1}});
  const Client client = Client::Tcp(amplifier.Port());
  EXPECT_EQ(client.Ask("ECHO dripping"), "dripping");
  EXPECT_EQ(client.Ask("WAIT? 3"), "0");
}

TEST(Server, ADrippingAnswerIsSentWithoutOthers) {
  ServerThread amplifier({.transmission = {.drip_ms = 600'000}});
  const Client client = Client::Tcp(amplifier.Port());
  client.Send("ECHO abc\n");
  EXPECT_EQ(client.Read(1), "a");
  EXPECT_TRUE(IsOpenAndSilent(client));
}

TEST(Server, EndsAnswersAsAsked) {
  for (const char* terminator : {"\r\n", "\n", "\r", ""}) {
    ServerThread amplifier({.behaviour = {.close_after = 1}, .transmission = {.terminator = terminator}});
    const Client client = Client::Tcp(amplifier.Port());
    client.Send("OPMODE?\n");
    int error = -1;
    EXPECT_EQ(client.ReadAll(&error), std::string("0") + terminator);
    EXPECT_EQ(error, 0);
  }
}

TEST(Server, ClosesGracefullyAlthoughMoreWasSent) {
  ServerThread amplifier({.behaviour = {.close_after = 2}});
  for (int round = 0; round < 2; ++round) {
    const Client client = Client::Tcp(amplifier.Port());
    client.Send("ECHO a\nECHO b\nECHO c\nECHO d\n");
    int error = -1;
    EXPECT_EQ(client.ReadAll(&error), "a\r\nb\r\n");
    EXPECT_EQ(error, 0);
  }
}

TEST(Server, Resets) {
  ServerThread amplifier({.behaviour = {.reset_after = 1}});
  const Client client = Client::Tcp(amplifier.Port());
  EXPECT_EQ(client.Ask("ECHO a"), "a");
  int error = -1;
  EXPECT_EQ(client.ReadAll(&error), "");
  EXPECT_EQ(error, ECONNRESET);
}

TEST(Server, ClosesInTheMiddleOfAnAnswer) {
  ServerThread amplifier({.behaviour = {.close_mid_answer = 1}});
  const Client client = Client::Tcp(amplifier.Port());
  client.Send("ECHO abcdef\n");
  int error = -1;
  EXPECT_EQ(client.ReadAll(&error), "abcd");
  EXPECT_EQ(error, 0);
}

TEST(Server, StaysSilentButListens) {
  ServerThread amplifier({.behaviour = {.silent_after = 0}});
  const Client client = Client::Tcp(amplifier.Port());
  client.Send("RATE 7\nRATE?\n");
  shutdown(client.descriptor(), SHUT_WR);
  int error = -1;
  EXPECT_EQ(client.ReadAll(&error), "");
  EXPECT_EQ(error, 0);
}

TEST(Server, EchoesLines) {
  ServerThread amplifier({.echo = true});
  const Client client = Client::Tcp(amplifier.Port());
  for (int i = 0; i < 1000; ++i)
    EXPECT_EQ(client.Ask("RES " + std::to_string(i)), "RES " + std::to_string(i));
  const Client second = Client::Tcp(amplifier.Port());
  EXPECT_EQ(second.Ask("x"), "x");
  EXPECT_EQ(client.Ask(""), "");
}

TEST(Server, SendsAnswersLongerThanTheSocketsBuffer) {
  ServerThread amplifier;
  const Client client = Client::Tcp(amplifier.Port());
  std::string commands;
  for (int i = 0; i < 8; ++i) commands += "RAMP? 1000000\n";
  client.Send(commands + "ECHO end\n");
  const std::string bytes = client.Read(8'000'000);
  ASSERT_EQ(bytes.size(), 8'000'000u);
  EXPECT_EQ(bytes.back(), static_cast<char>(999'999 & 0xFF));
  EXPECT_EQ(client.ReadUntil("\r\n"), "end");
}

TEST(Server, SurvivesHostileInput) {
  ServerThread amplifier;
  const Client client = Client::Tcp(amplifier.Port());
  client.Send(std::string(1 << 20, 'x') + '\n');
  EXPECT_EQ(client.ReadUntil("\r\n"), "?");
  EXPECT_EQ(client.Ask("ERR?"), "4,line too long");
  EXPECT_EQ(client.Ask("ECHO " + std::string(8192 - 5, 'y')), std::string(8192 - 5, 'y'));
  EXPECT_EQ(client.Ask("ECHO " + std::string(8192 - 4, 'y')), "?");
  client.Send(std::string(10'000, '\0') + '\n');
  EXPECT_EQ(client.ReadUntil("\r\n"), "?");
  for (int byte = 0; byte < 256; ++byte) client.Send(std::string(3, static_cast<char>(byte)));
  client.Send("\nECHO done\n");
  // LF and CR cut the bytes into three invalid lines.
  for (int i = 0; i < 3; ++i) EXPECT_EQ(client.ReadUntil("\r\n"), "?");
  EXPECT_EQ(client.ReadUntil("\r\n"), "done");
}

TEST(Server, SurvivesPeersThatVanish) {
  ServerThread amplifier;
  for (int i = 0; i < 20; ++i) {
    const Client client = Client::Tcp(amplifier.Port());
    client.Send("LONG? 500000\nLONG? 500000\n");
    const linger reset{1, 0};
    if (i % 2 == 0) setsockopt(client.descriptor(), SOL_SOCKET, SO_LINGER, &reset, sizeof(reset));
  }
  EXPECT_EQ(Client::Tcp(amplifier.Port()).Ask("OPMODE?"), "0");
}

TEST(Server, AnswersAPeerThatHasFinishedSending) {
  ServerThread amplifier;
  const Client client = Client::Tcp(amplifier.Port());
  client.Send("ECHO a\nWAIT? 1\nECHO b\nunfinished");
  shutdown(client.descriptor(), SHUT_WR);
  int error = -1;
  EXPECT_EQ(client.ReadAll(&error), "a\r\n0\r\nb\r\n");
  EXPECT_EQ(error, 0);
}

TEST(Server, ServesFiles) {
  const auto path =
      std::filesystem::path(testing::TempDir()) / ("amplifier_file_" + std::to_string(getpid()));
  std::ofstream(path, std::ios::binary) << std::string("\0\r\n\xFF", 4);
  ServerThread amplifier({.files = {path.string()}});
  std::filesystem::remove(path);
  const Client client = Client::Tcp(amplifier.Port());
  EXPECT_EQ(client.Ask("FILESIZE? 1"), "4");
  client.Send("FILE? 1\n");
  EXPECT_EQ(client.Read(4), std::string("\0\r\n\xFF", 4));
}

std::string FailureOf(const Options& options) {
  try {
    ServerThread amplifier(options);
  } catch (const std::system_error& error) {
    return error.what();
  }
  return "(none)";
}

TEST(Server, ReportsWhatItCannotOpen) {
  ServerThread taken;
  EXPECT_EQ(FailureOf({.tcp_port = taken.Port()}),
            "cannot listen on 127.0.0.1:" + std::to_string(taken.Port()) + ": Address already in use");
  EXPECT_EQ(FailureOf({.files = {"/nonexistent/file"}}),
            "cannot read /nonexistent/file: No such file or directory");
  EXPECT_NE(FailureOf({.files = {"/"}}), "(none)");
}

}  // namespace
}  // namespace kolvane::amplifier
