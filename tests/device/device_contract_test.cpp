// What every Device promises, over each path that DeviceIo has.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "device_world.h"

namespace kolvane::device {
namespace {

struct PathCase {
  const char* name;
  std::int16_t mode;
  std::int16_t port_code;
  bool can_fail;     // offline and window-only paths never do
  bool has_answers;  // a window without device has none
};

std::ostream& operator<<(std::ostream& out, const PathCase& path) { return out << path.name; }

class DeviceContract : public testing::TestWithParam<PathCase>, public DeviceWorld {
 protected:
  DeviceContract() : DeviceWorld(GetParam().mode) {
    parameters.port_code = GetParam().port_code;
    host->script.read = [this](Variant& text, Variant& bytes) {
      text = received + "   ";
      bytes = Bytes(received.begin(), received.end());
    };
    io.Open();
    state.connected = true;
  }

  void Receive(const std::string& bytes) {
    received = bytes;
    library.replies = {{bytes}};
  }

  void BreakDown() {
    library.mode = FakePortLibrary::Mode::kFail;
    for (const char* call : {"OpenDevice", "CloseDevice", "WriteCommand", "Read", "IO.InitializeDevice",
                             "IO.CloseDevice", "IO.WriteCommand", "IO.Read"})
      host->script.on_call[call] = [] { throw std::runtime_error("gestört"); };
  }

  std::string received;
};

TEST_P(DeviceContract, AnOperationThatWorksIsNoError) {
  io.ClearLastError();
  EXPECT_GE(io.LastError().code, 0);
  io.Write("*IDN?", "\n", 0);
  EXPECT_GE(io.LastError().code, 0);
  io.Close();
  EXPECT_GE(io.LastError().code, 0);
}

TEST_P(DeviceContract, AFailureIsReportedAndNeverThrown) {
  BreakDown();
  const std::function<void()> operations[] = {[this] { io.Open(); }, [this] { io.Write("A", "\n", 0); },
                                              [this] { io.ReadText("\n", 16000, answer, buffer); },
                                              [this] { io.ReadBinary("", 1, buffer); },
                                              [this] { io.Close(); }};
  for (const auto& operation : operations) {
    EXPECT_NO_THROW(operation());
    const DeviceError error = io.LastError();
    EXPECT_EQ(error.code < 0, GetParam().can_fail);
    EXPECT_TRUE(error.code >= 0 || !error.description.empty());
  }
}

TEST_P(DeviceContract, ATextAnswerHasNoFillingAtItsEnd) {
  Receive(" 1,5 \r\n");
  answer = "alt";
  io.ReadText("\r\n", 16000, answer, buffer);
  EXPECT_EQ(answer.empty(), !GetParam().has_answers);
  EXPECT_FALSE(answer.ends_with(' '));
  EXPECT_GE(io.LastError().code, 0);
}

TEST_P(DeviceContract, ABinaryAnswerNeverShrinksTheBuffer) {
  Receive("AB");
  buffer = Bytes(5, 9);
  io.ReadBinary("", 2, buffer);
  ASSERT_EQ(buffer.size(), 5u);
  EXPECT_EQ(buffer[0] != 9, GetParam().has_answers);
  EXPECT_EQ((Bytes{buffer[2], buffer[3], buffer[4]}), (Bytes{9, 9, 9}));
}

TEST_P(DeviceContract, FlushTellsNothingWhileNotConnected) {
  state.connected = false;
  EXPECT_EQ(io.FlushInput(), std::nullopt);
}

TEST_P(DeviceContract, EveryOperationMayComeInAnyOrder) {
  for (int round = 0; round < 2; ++round) {
    EXPECT_NO_THROW(io.Close());
    EXPECT_NO_THROW(io.SetTimeout(-1));
    EXPECT_NO_THROW(io.ActivateInterpreter());
    EXPECT_NO_THROW(io.FlushInput());
    EXPECT_NO_THROW(io.ReadText("", 0, answer, buffer));
    EXPECT_NO_THROW(io.ReadBinary("", 0, buffer));
    EXPECT_NO_THROW(io.Write("", "", 0));
    EXPECT_NO_THROW(io.ClearLastError());
    EXPECT_NO_THROW(io.LastError());
  }
}

INSTANTIATE_TEST_SUITE_P(AllPaths, DeviceContract,
                         testing::Values(PathCase{"IndexedHost", 0, 0, true, true},
                                         PathCase{"SingleHost", 1, 0, true, true},
                                         PathCase{"PortLibrary", 2, port_code::kCom1, true, true},
                                         PathCase{"Offline", 2, port_code::kOffline, false, true},
                                         PathCase{"WindowOnly", 3, 0, false, false},
                                         PathCase{"NegativeMode", -1, 0, false, false}),
                         [](const auto& path) { return std::string(path.param.name); });

}  // namespace
}  // namespace kolvane::device
