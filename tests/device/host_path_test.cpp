#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

#include "device/device_state.h"
#include "device_rig.h"

namespace kolvane::device {
namespace {

class IndexedHost : public testing::Test, public DeviceRig {
 protected:
  IndexedHost() : DeviceRig(operating_mode::kHostByIndex) {}
  Calls& calls = host->script.calls;
};

class SingleHost : public testing::Test, public DeviceRig {
 protected:
  SingleHost() : DeviceRig(operating_mode::kHost) {}
  Calls& calls = host->script.calls;
};

TEST(EveryPath, OpeningForgetsWhatTheLastConnectionLeft) {
  for (const std::int16_t mode : std::vector<std::int16_t>{0, 1, 2, 3}) {
    DeviceRig rig(mode);
    rig.state.put_back = "x";
    rig.state.modem_word = "BUSY";
    rig.io.Open();
    EXPECT_EQ(rig.state.put_back, "") << mode;
    EXPECT_EQ(rig.state.modem_word, std::nullopt) << mode;
  }
}

TEST(EveryPath, FlushingDiscardsBytesThatWerePutBack) {
  for (const std::int16_t mode : std::vector<std::int16_t>{0, 1, 2}) {
    DeviceRig rig(mode);
    rig.state.connected = true;
    rig.state.put_back = "x";
    rig.io.FlushInput();
    EXPECT_EQ(rig.state.put_back, "") << mode;
  }
}

TEST_F(IndexedHost, GoesThroughIoWithTheIndex) {
  state.connected = true;
  io.Open();
  io.Close();
  io.Write("*IDN?", "\n", 0);
  io.Write("*IDN?", "\r\n", 7);
  io.Write("*IDN?", "", 0);
  io.SetTimeout(50);
  EXPECT_EQ(io.FlushInput(), 0);
  io.ActivateInterpreter();
  EXPECT_EQ(calls,
            (Calls{"IO.InitializeDevice(3)", "IO.CloseDevice(3)", "IO.WriteCommand(3, \"*IDN?\", 10, 0)",
                   "IO.WriteCommand(3, \"*IDN?\", 2, 7)", "IO.WriteCommand(3, \"*IDN?\", -1, 0)",
                   "IO.SetIOTimeout(3, 50)", "IO.FlushInQ(3)", "IO.InitializeDevice(3)"}));
  EXPECT_TRUE(library.calls.empty());
}

TEST_F(IndexedHost, AppendsATerminatorThatHasNoCode) {
  io.Write("A", "END", 0);
  EXPECT_EQ(calls, Calls{"IO.WriteCommand(3, \"AEND\", -1, 0)"});
}

TEST_F(IndexedHost, MayChangeTheIndex) {
  host->script.change_index = [](std::int16_t& index) { index = 8; };
  io.Open();
  EXPECT_EQ(state.DevIdx, 8);
  io.Close();
  EXPECT_EQ(calls.back(), "IO.CloseDevice(8)");
}

TEST_F(IndexedHost, ReadsTextIntoSpaces) {
  host->script.read = [](Variant& text, Variant&) { text = "  12.5 \r\n   "; };
  io.ReadText("\r\n", 16000, answer, buffer);
  EXPECT_EQ(calls, Calls{"IO.Read(3, 0, 0, 10, 16000, 16000 spaces, 0 bytes)"});
  EXPECT_EQ(answer, "  12.5 \r\n");
}

TEST_F(IndexedHost, ReadsBytesIntoTheStartOfTheBuffer) {
  host->script.read = [](Variant&, Variant& bytes) { bytes = Bytes{1, 2, 3}; };
  buffer = Bytes(6, 9);
  io.ReadBinary("", 4, buffer);
  EXPECT_EQ(calls, Calls{"IO.Read(3, 1, 0, 0, 4, \"\", 4 bytes)"});
  EXPECT_EQ(buffer, (Bytes{1, 2, 3, 0, 9, 9}));
}

TEST_F(IndexedHost, ErrorsComeFromTheHostObjectItself) {
  host->last_error = -12;
  host->description = "Gerät antwortet nicht";
  io.ClearLastError();
  const DeviceError error = io.LastError();
  EXPECT_EQ(calls, (Calls{"SetLastError(0)", "LastError()", "LastErrorDescription()"}));
  EXPECT_EQ(error.code, -12);
  EXPECT_EQ(error.description, "Gerät antwortet nicht");
  EXPECT_EQ(state.last_result, -12);
}

TEST_F(SingleHost, GoesToTheHostObject) {
  state.connected = true;
  host->flushed = 17;
  io.Open();
  io.Close();
  io.Write("*IDN?", "\r\n", 5);
  io.SetTimeout(50);
  EXPECT_EQ(io.FlushInput(), 17);
  io.ActivateInterpreter();
  EXPECT_EQ(calls, (Calls{"OpenDevice()", "CloseDevice()", "WriteCommand(\"*IDN?\r\n\")", "FlushInQ(0)"}));
}

TEST_F(SingleHost, ReadsText) {
  host->script.read = [](Variant& text, Variant&) { text = "Grüße"; };
  io.ReadText("\r", 80, answer, buffer);
  EXPECT_EQ(calls, Calls{"Read(0, 13, 80, 80 spaces, 0 bytes)"});
  EXPECT_EQ(answer, "Grüße");
}

TEST_F(SingleHost, TakesAnAnswerInBytesAsWindows1252) {
  host->script.read = [](Variant& text, Variant&) { text = Bytes{0xE4, 0x80, ' '}; };
  io.ReadText("\n", 80, answer, buffer);
  EXPECT_EQ(answer, "ä€");
}

TEST_F(SingleHost, TakesANumberAsText) {
  host->script.read = [](Variant& text, Variant&) { text = 12.5; };
  io.ReadText("\n", 80, answer, buffer);
  EXPECT_EQ(answer, "12.5");
}

TEST_F(SingleHost, TakesATextForBytes) {
  host->script.read = [](Variant&, Variant& bytes) { bytes = "ä!?"; };
  io.ReadBinary("\n", 2, buffer);
  EXPECT_EQ(calls, Calls{"Read(1, 10, 2, \"\", 2 bytes)"});
  EXPECT_EQ(buffer, (Bytes{0xE4, '!'}));
}

TEST_F(SingleHost, RefusesANumberForBytes) {
  host->script.read = [](Variant&, Variant& bytes) { bytes = 7; };
  buffer = {5};
  io.ReadBinary("", 1, buffer);
  EXPECT_EQ(buffer, Bytes{5});
  EXPECT_EQ(io.LastError().description, "Typen unverträglich");
}

TEST_F(SingleHost, ANegativeCountReadsNothing) {
  io.ReadBinary("", -1, buffer);
  io.ReadText("", -1, answer, buffer);
  EXPECT_EQ(calls, (Calls{"Read(1, 0, -1, \"\", 0 bytes)", "Read(0, 0, -1, \"\", 0 bytes)"}));
}

TEST_F(SingleHost, AnExceptionBecomesAFailedOperation) {
  host->script.on_call["WriteCommand"] = [] { throw std::runtime_error("Leitung gestört"); };
  io.Write("A", "\n", 0);
  EXPECT_EQ(state.last_result, device_status::kHostFailed);
  for (int i = 0; i < 2; ++i) {
    const DeviceError error = io.LastError();
    EXPECT_EQ(error.code, device_status::kHostFailed);
    EXPECT_EQ(error.description, "Leitung gestört");
  }
  EXPECT_EQ(calls.size(), 1u);
}

TEST_F(SingleHost, AFailureLastsUpToTheNextOperation) {
  host->script.on_call["WriteCommand"] = [] { throw 42; };
  io.Write("A", "\n", 0);
  EXPECT_EQ(io.LastError().description, "Laufzeitfehler");
  io.ReadText("\n", 10, answer, buffer);
  EXPECT_EQ(io.LastError().code, 0);
  EXPECT_EQ(state.last_result, 0);

  io.Write("A", "\n", 0);
  io.ClearLastError();
  EXPECT_EQ(io.LastError().code, 0);
}

TEST_F(SingleHost, AFailedReadLeavesNoAnswer) {
  host->script.on_call["Read"] = [] { throw std::runtime_error("Zeitüberschreitung"); };
  answer = "alt";
  io.ReadText("\n", 10, answer, buffer);
  EXPECT_EQ(answer, "");
  EXPECT_EQ(io.LastError().description, "Zeitüberschreitung");
}

TEST_F(SingleHost, AFlushThatTheHostRefusesCountsNothing) {
  state.connected = true;
  host->flushed = 17;
  host->script.on_call["FlushInQ"] = [] { throw std::runtime_error("nein"); };
  EXPECT_EQ(io.FlushInput(), 0);
  EXPECT_LT(io.LastError().code, 0);
}

TEST_F(IndexedHost, AFlushThatTheHostRefusesCountsNothing) {
  state.connected = true;
  host->script.on_call["IO.FlushInQ"] = [] { throw std::runtime_error("nein"); };
  EXPECT_EQ(io.FlushInput(), 0);
  EXPECT_LT(io.LastError().code, 0);
}

// Reads by count or of text accept an empty result; reads of one byte would repeat for ever.
TEST_F(SingleHost, AReadOfOneByteThatReturnsNoneIsAFailure) {
  for (const Variant& nothing : {Variant(Bytes{}), Variant(""), Variant()}) {
    host->script.read = [&](Variant&, Variant& bytes) { bytes = nothing; };
    io.ReadBinary("", 1, buffer);
    for (int i = 0; i < 2; ++i) EXPECT_LT(io.LastError().code, 0);
    EXPECT_LT(state.last_result, 0);
    io.ClearLastError();
    EXPECT_EQ(io.LastError().code, 0);
    io.ReadBinary("", 2, buffer);
    EXPECT_EQ(io.LastError().code, 0);
  }
  host->script.read = [](Variant&, Variant& bytes) { bytes = Bytes{0}; };
  io.ReadBinary("", 1, buffer);
  EXPECT_EQ(io.LastError().code, 0);
}

TEST_F(SingleHost, AReadOfOneByteThatReturnsNoneKeepsTheHostsError) {
  host->script.read = [this](Variant&, Variant& bytes) {
    bytes = Bytes{};
    host->last_error = -7;
    host->description = "Zeitüberschreitung";
  };
  io.ReadBinary("", 1, buffer);
  EXPECT_EQ(io.LastError().code, -7);
  EXPECT_EQ(io.LastError().description, "Zeitüberschreitung");
}

// A host that only the terminal owns; it records its destruction.
class OwnedHost final : public HostObject {
 public:
  OwnedHost(DeviceState& state, bool& destroyed) : state_(state), destroyed_(destroyed) {}
  ~OwnedHost() override { destroyed_ = true; }
  void OpenDevice() override { GiveUp(); }
  void WriteCommand(const std::string&) override { GiveUp(); }
  std::string LastErrorDescription() override {
    GiveUp();
    return "noch da";
  }
  Variant LastError() override { return -3; }

 private:
  void GiveUp() {
    state_.gObj.reset();
    EXPECT_FALSE(destroyed_) << "in the middle of its own call";
  }

  DeviceState& state_;
  bool& destroyed_;
};

TEST_F(SingleHost, LivesToTheEndOfACallThatReleasesIt) {
  bool destroyed = false;
  const auto own = [&] { state.gObj = std::make_shared<OwnedHost>(state, destroyed = false); };
  own();
  io.Open();
  EXPECT_TRUE(destroyed);
  own();
  io.Write("A", "\n", 0);
  EXPECT_TRUE(destroyed);
  own();
  EXPECT_EQ(io.LastError().description, "noch da");
  EXPECT_TRUE(destroyed);
  EXPECT_EQ(io.LastError().description, "Kein Geräteobjekt übergeben");
}

TEST_F(SingleHost, ErrorPropertiesThatThrowAreFailuresToo) {
  host->script.on_call["LastError"] = [] { throw std::runtime_error("kein LastError"); };
  EXPECT_EQ(io.LastError().code, device_status::kHostFailed);
  EXPECT_EQ(io.LastError().description, "kein LastError");
  host->script.on_call.clear();
  host->script.on_call["SetLastError"] = [] { throw std::runtime_error("nur lesbar"); };
  io.ClearLastError();
  EXPECT_EQ(io.LastError().description, "nur lesbar");
}

// Calls each member of a host that implements none of them.
TEST(HostContract, AMemberThatAHostLeavesOutIsMissing) {
  struct : IoObject {
  } io;
  struct : HostObject {
  } host;
  std::int16_t small = 0;
  std::int32_t count = 0;
  std::string text;
  Variant first;
  Variant second;
  const std::function<void()> members[] = {
      [&] { io.InitializeDevice(small); },
      [&] { io.CloseDevice(small); },
      [&] { io.WriteCommand(small, text, small, small); },
      [&] { io.Read(small, small, small, small, count, first, second); },
      [&] { io.SetIOTimeout(small, count); },
      [&] { io.FlushInQ(small); },
      [&] { io.GetDeviceProperty(small, small, first); },
      [&] { host.IO(); },
      [&] { host.OpenDevice(); },
      [&] { host.CloseDevice(); },
      [&] { host.WriteCommand(text); },
      [&] { host.Read(small, small, count, first, second); },
      [&] { host.FlushInQ(count); },
      [&] { host.GetDeviceInfo(first, second); },
      [&] { host.LastError(); },
      [&] { host.SetLastError(1); },
      [&] { host.LastErrorDescription(); },
  };
  for (const auto& member : members) {
    try {
      member();
      ADD_FAILURE() << &member - members;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.kind(), RuntimeError::Kind::kNoMember);
    }
  }
}

TEST_F(SingleHost, AMissingDescriptionKeepsTheCode) {
  host->script.on_call["LastErrorDescription"] = [] { throw std::runtime_error("keine Beschreibung"); };
  host->last_error = 0;
  EXPECT_EQ(io.LastError().code, 0);
  host->last_error = -5;
  const DeviceError error = io.LastError();
  EXPECT_EQ(error.code, -5);
  EXPECT_EQ(error.description, "keine Beschreibung");
}

TEST_F(SingleHost, CodesBeyond16BitsKeepTheirSign) {
  const struct {
    Variant code;
    std::int16_t expected;
  } cases[] = {
      {-32768, -32768}, {-32769, -32768}, {INT32_MIN, -32768}, {32768, 32767}, {Variant(" -7 "), -7}};
  for (const auto& [code, expected] : cases) {
    host->last_error = code;
    EXPECT_EQ(io.LastError().code, expected);
    EXPECT_EQ(state.last_result, expected);
  }
}

TEST_F(SingleHost, ACodeThatIsNotANumberIsAFailure) {
  host->last_error = "kaputt";
  EXPECT_EQ(io.LastError().description, "Typen unverträglich");
  host->last_error = 1e12;
  io.ClearLastError();
  EXPECT_EQ(io.LastError().description, "Überlauf");
  host->last_error = Variant();
  io.ClearLastError();
  EXPECT_EQ(io.LastError().code, device_status::kHostFailed);
  EXPECT_EQ(io.LastError().description, "Typen unverträglich");
}

TEST(HostPath, WithoutAnObjectEveryOperationFails) {
  for (const auto mode : {operating_mode::kHostByIndex, operating_mode::kHost}) {
    DeviceRig rig(mode);
    rig.state.gObj.reset();
    rig.state.connected = true;
    rig.io.Open();
    EXPECT_EQ(rig.io.LastError().code, device_status::kHostFailed);
    EXPECT_EQ(rig.io.LastError().description, "Kein Geräteobjekt übergeben");
    EXPECT_EQ(rig.io.FlushInput(), 0);
  }
}

TEST(HostPath, AnObjectThatLacksTheOperationFailsIt) {
  DeviceRig rig(operating_mode::kHost);
  rig.state.gObj = std::make_shared<HostObject>();
  rig.io.Open();
  EXPECT_EQ(rig.io.LastError().description, "Das Geräteobjekt unterstützt diese Operation nicht");
}

}  // namespace
}  // namespace kolvane::device
