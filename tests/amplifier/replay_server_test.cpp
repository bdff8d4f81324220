#include "amplifier/replay_server.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <future>
#include <stdexcept>

#include "base/temp_folder.h"
#include "client.h"

namespace kolvane::amplifier {
namespace {

constexpr char kTwoConnections[] =
    R"({"t":0,"way":"open","bytes":""}
{"t":0.001,"way":"out","bytes":"QQo="}
{"t":0.002,"way":"in","bytes":"YQ0K"}
{"t":0.003,"way":"close","bytes":""}
{"t":0.004,"way":"open","bytes":""}
{"t":0.005,"way":"out","bytes":"Qgo="}
{"t":0.006,"way":"in","bytes":"Yg0K"}
{"t":0.007,"way":"close","bytes":""}
)";

struct ReplayServerTest : testing::Test {
  Options OptionsFor(const std::string& transcript) {
    base::WriteBytes(folder.Path("t"), transcript);
    Options options;
    options.tcp_port = 0;
    options.replay = folder.Path("t");
    return options;
  }
  Options SerialOptionsFor(const std::string& transcript) {
    Options options = OptionsFor(transcript);
    options.tcp_port.reset();
    options.pty_link = folder.Path("line");
    return options;
  }
  std::future<std::string> Run(ReplayServer& server) {
    return std::async(std::launch::async, [&server, this] { return server.Run(stop.get()); });
  }

  base::TempFolder folder;
  base::Descriptor stop{eventfd(0, EFD_CLOEXEC)};
};

// A is answered with a, B is not answered.
constexpr char kTwoCommands[] = R"({"way":"out","bytes":"QQo="}
{"way":"in","bytes":"YQ0K"}
{"way":"out","bytes":"Qgo="})";

TEST_F(ReplayServerTest, PlaysConnectionAfterConnectionAndEnds) {
  for (const bool recorded : {false, true}) {
    Options options = OptionsFor(kTwoConnections);
    options.recorded_times = recorded;
    ReplayServer server(options);
    auto result = Run(server);
    EXPECT_EQ(Client::Tcp(server.Port()).Ask("A"), "a");
    EXPECT_EQ(Client::Tcp(server.Port()).Ask("B"), "b");
    EXPECT_EQ(result.get(), "");
  }
}

TEST_F(ReplayServerTest, ReturnsTheFirstDifference) {
  ReplayServer server(OptionsFor(kTwoConnections));
  auto result = Run(server);
  EXPECT_EQ(Client::Tcp(server.Port()).Ask("A"), "a");
  const Client second = Client::Tcp(server.Port());
  second.Send("X\n");
  EXPECT_EQ(result.get(), folder.Path("t") + R"(:6: expected "B\n", got "X\n")");
}

TEST_F(ReplayServerTest, AConnectionThatEndsEarlyDiffers) {
  ReplayServer server(OptionsFor(kTwoConnections));
  auto result = Run(server);
  Client::Tcp(server.Port()).Send("A");
  EXPECT_EQ(result.get(), folder.Path("t") + R"(:2: expected "A\n", got "A")");
}

TEST_F(ReplayServerTest, AConnectionWithoutACommandIsIgnored) {
  ReplayServer server(OptionsFor(kTwoConnections));
  auto result = Run(server);
  EXPECT_TRUE(Client::Tcp(server.Port()));
  EXPECT_EQ(Client::Tcp(server.Port()).Ask("A"), "a");
  eventfd_write(stop.get(), 1);
  EXPECT_EQ(result.get(), "") << "the second one has not started";
}

TEST_F(ReplayServerTest, AStopInTheMiddleIsADifference) {
  ReplayServer server(OptionsFor(kTwoCommands));
  auto result = Run(server);
  const Client client = Client::Tcp(server.Port());
  EXPECT_EQ(client.Ask("A"), "a");
  eventfd_write(stop.get(), 1);
  EXPECT_EQ(result.get(), folder.Path("t") + R"(:3: expected "B\n", got nothing)");
}

TEST_F(ReplayServerTest, OnASerialLineAllConnectionsAreOne) {
  const Options options = SerialOptionsFor(kTwoConnections);
  ReplayServer server(options);
  EXPECT_EQ(server.Port(), 0);
  auto result = Run(server);
  const Client client = Client::Pty(options.pty_link);
  EXPECT_EQ(client.Ask("A"), "a");
  EXPECT_EQ(client.Ask("B"), "b");
  EXPECT_EQ(result.get(), "");
}

TEST_F(ReplayServerTest, ASerialLineThatNobodyHasUsedIsNoDifference) {
  ReplayServer server(SerialOptionsFor(kTwoConnections));
  eventfd_write(stop.get(), 1);
  EXPECT_EQ(Run(server).get(), "");
}

constexpr char kHungUp[] =
    R"({"way":"open","bytes":""}
{"way":"out","bytes":"QQo="}
{"way":"in","bytes":"YQ0K"}
{"way":"close","bytes":"","status":-40}
{"way":"open","bytes":""}
{"way":"out","bytes":"Qgo="}
{"way":"in","bytes":"Yg0K"}
{"way":"close","bytes":""}
)";

TEST_F(ReplayServerTest, ClosesWhenTheInstrumentHasClosed) {
  ReplayServer server(OptionsFor(kHungUp));
  auto result = Run(server);
  const Client first = Client::Tcp(server.Port());
  EXPECT_EQ(first.Ask("A"), "a");
  int error = -1;
  EXPECT_EQ(first.ReadAll(&error), "");
  EXPECT_EQ(error, 0);
  EXPECT_EQ(Client::Tcp(server.Port()).Ask("B"), "b");
  EXPECT_EQ(result.get(), "");
}

TEST_F(ReplayServerTest, OnASerialLineItHangsUpAndTheLinkNamesTheNextLine) {
  const Options options = SerialOptionsFor(kHungUp);
  ReplayServer server(options);
  auto result = Run(server);
  {
    const Client first = Client::Pty(options.pty_link);
    EXPECT_EQ(first.Ask("A"), "a");
    int error = -1;
    EXPECT_EQ(first.ReadAll(&error), "");
    EXPECT_EQ(error, 0) << "a line that was hung up has ended";
  }
  EXPECT_EQ(Client::Pty(options.pty_link).Ask("B"), "b");
  EXPECT_EQ(result.get(), "");
}

/// Answers the command A with three NUL bytes, `times` times.
std::string LongAnswer(int times) {
  std::string bytes;
  for (int i = 0; i < times; ++i) bytes += "AAAA";
  return "{\"way\":\"out\",\"bytes\":\"QQo=\"}\n{\"way\":\"in\",\"bytes\":\"" + bytes + "\"}";
}

TEST_F(ReplayServerTest, ALongAnswerArrivesWhole) {
  ReplayServer server(OptionsFor(LongAnswer(1'000'000)));
  auto result = Run(server);
  {
    const Client client = Client::Tcp(server.Port());
    client.Send("A\n");
    EXPECT_EQ(client.Read(3'000'000), std::string(3'000'000, '\0'));
  }
  EXPECT_EQ(result.get(), "");
}

void Reset(const Client& client) {
  const linger at_once{1, 0};
  ASSERT_EQ(setsockopt(client.descriptor(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once), 0);
}

TEST_F(ReplayServerTest, AResetBeforeTheNextCommandIsADifference) {
  ReplayServer server(OptionsFor(kTwoCommands));
  auto result = Run(server);
  {
    const Client client = Client::Tcp(server.Port());
    EXPECT_EQ(client.Ask("A"), "a");
    Reset(client);
  }
  EXPECT_EQ(result.get(), folder.Path("t") + R"(:3: expected "B\n", got nothing)");
}

TEST_F(ReplayServerTest, AnAnswerThatNobodyReadsBlocksNothing) {
  ReplayServer server(OptionsFor(LongAnswer(4'000'000)));
  auto result = Run(server);
  {
    const Client client = Client::Tcp(server.Port());
    client.Send("A\n");
    EXPECT_EQ(client.Read(1), std::string(1, '\0'));
    Reset(client);
  }
  EXPECT_EQ(result.get(), "");
}

TEST_F(ReplayServerTest, WithoutATranscriptThereIsNoServer) {
  const auto failure = [](const Options& options) {
    try {
      ReplayServer server(options);
    } catch (const std::runtime_error& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  const std::string file = folder.Path("t");
  EXPECT_EQ(failure(OptionsFor("no")), file + ":1: not a line of a transcript: not JSON");
  EXPECT_EQ(failure(OptionsFor("")), file + ": the transcript has no transfers");
  Options options = OptionsFor("");
  options.replay = folder.Path("none");
  EXPECT_EQ(failure(options), "cannot read " + folder.Path("none") + ": No such file or directory");
}

}  // namespace
}  // namespace kolvane::amplifier
