#include "device/port_path.h"

#include <gtest/gtest.h>

#include "device/device_state.h"
#include "device_rig.h"

namespace kolvane::device {
namespace {

class OverPortLibrary : public testing::Test, public DeviceRig {
 protected:
  OverPortLibrary() : DeviceRig(operating_mode::kPortLibrary) { parameters.port_code = port_code::kCom1; }

  std::string Read(std::int32_t count = 16000) {
    io.ReadText("\n", count, answer, buffer);
    return answer;
  }

  Calls& calls = library.calls;
};

TEST_F(OverPortLibrary, CallsTheLibraryOnly) {
  state.connected = true;
  library.results["FlushInQueue"] = {12};
  io.Write("*IDN?", "\r\n", 0);
  io.SetTimeout(50);
  EXPECT_EQ(io.FlushInput(), 12);
  io.ActivateInterpreter();
  io.Close();
  EXPECT_EQ(calls, (Calls{"WritePort(\"*IDN?\r\n\")", "SetTimeout(50)", "FlushInQueue()",
                          "ActivateInterpreter(200)", "CloseInterpreter(1, 1)", "ClosePort()"}));
  EXPECT_TRUE(host->script.calls.empty());
}

TEST_F(OverPortLibrary, KeepsEachStatusAsLastResult) {
  library.results["WritePort"] = {-3};
  library.results["SetTimeout"] = {5};
  library.results["FlushInQueue"] = {-8};
  library.results["ActivateInterpreter"] = {-4};
  library.replies = {{"x", -6}, {"x", 2}};
  state.connected = true;
  io.Write("A", "\n", 0);
  EXPECT_EQ(state.last_result, -3);
  io.SetTimeout(1);
  EXPECT_EQ(state.last_result, 5);
  EXPECT_EQ(io.FlushInput(), -8);
  EXPECT_EQ(state.last_result, -8);
  io.ActivateInterpreter();
  EXPECT_EQ(state.last_result, -4);
  Read();
  EXPECT_EQ(state.last_result, -6);
  io.ReadBinary("", 1, buffer);
  EXPECT_EQ(state.last_result, 2);
}

TEST_F(OverPortLibrary, TheLastResultOfCloseIsThatOfClosePort) {
  library.results["CloseInterpreter"] = {-3};
  io.Close();
  EXPECT_EQ(state.last_result, 0);
  library.results["ClosePort"] = {-5};
  io.Close();
  EXPECT_EQ(state.last_result, -5);
}

TEST_F(OverPortLibrary, OpenKeepsItsResultAndAForcedAddress) {
  parameters.port_code = port_code::kUsb;
  library.results["OpenPort"] = {-21};
  io.Open();
  EXPECT_EQ(state.last_result, -21);
  EXPECT_EQ(parameters.address, 1);
  io.Open();
  EXPECT_EQ(state.last_result, 0);
}

TEST_F(OverPortLibrary, LastErrorIsTheLastResultCutTo16Bits) {
  const struct {
    std::int32_t result;
    std::int16_t code;
    const char* description;
  } cases[] = {
      {-9, -9, "-9"},           {0, 0, "0"},      {17, 17, "17"},           {-32768, -32768, "-32768"},
      {-32769, 32767, "32767"}, {-65536, 0, "0"}, {-70000, -4464, "-4464"}, {40000, -25536, "-25536"}};
  for (const auto& expected : cases) {
    state.last_result = expected.result;
    EXPECT_EQ(io.LastError().code, expected.code);
    EXPECT_EQ(io.LastError().description, expected.description);
  }
  EXPECT_TRUE(calls.empty());
}

TEST_F(OverPortLibrary, ClearingLeavesTheLastResult) {
  state.last_result = -9;
  io.ClearLastError();
  EXPECT_EQ(state.last_result, -9);
}

TEST_F(OverPortLibrary, WritesWindows1252) {
  io.Write("Größe € 中", "ÿ", 0);
  EXPECT_EQ(calls, Calls{"WritePort(\"Gr\xF6\xDF\x65 \x80 ?\xFF\")"});
}

TEST_F(OverPortLibrary, ReadsWindows1252) {
  library.replies = {{"\xE4\x80\r\n"}};
  EXPECT_EQ(Read(), "ä€\r\n");
  EXPECT_EQ(calls, Calls{"ReadPort(16000, 10)"});
}

TEST_F(OverPortLibrary, KeepsLeadingSpacesButNotTheFilling) {
  library.replies = {{"  1 2  \r\n  "}};
  EXPECT_EQ(Read(), "  1 2  \r\n");
}

TEST_F(OverPortLibrary, HasNothingOfTheAnswerBefore) {
  library.replies = {{std::string(16000, 'x')}, {"ab"}, {""}, {"c", -5}, {"d"}};
  EXPECT_EQ(Read(), std::string(16000, 'x'));
  EXPECT_EQ(Read(), "ab");
  EXPECT_EQ(Read(), "");
  Read();
  EXPECT_EQ(Read(), "d");
}

TEST_F(OverPortLibrary, FindsAnAnswerAtEveryPosition) {
  library.replies = {{"ab", 0, 0, 15998}, {"c", 0, 0, 700}, {"d"}};
  EXPECT_EQ(Read(), std::string(15998, ' ') + "ab");
  EXPECT_EQ(Read(), std::string(700, ' ') + "c");
  EXPECT_EQ(Read(), "d");
}

TEST_F(OverPortLibrary, TakesTheCountThatTheLibraryReports) {
  library.replies = {{"12.5  \r\n"}, {"7"}, {"8"}};
  library.delivered = 5;
  io.ReadText("\r\n", 16000, answer, buffer);
  EXPECT_EQ(answer, "12.5") << "the spaces at its end count as filling";
  library.delivered = 20000;
  io.ReadText("\r\n", 1, answer, buffer);
  EXPECT_EQ(answer, "7");
  library.delivered = 0;
  io.ReadText("\r\n", 1, answer, buffer);
  EXPECT_EQ(answer, "");
}

TEST_F(OverPortLibrary, TakesAnyCount) {
  library.replies = {{"abcdef"}, {std::string(20000, 'y')}, {"g"}, {"h"}, {"i"}};
  EXPECT_EQ(Read(4), "abcd");
  EXPECT_EQ(Read(20000), std::string(20000, 'y'));
  EXPECT_EQ(Read(16000), "g");
  EXPECT_EQ(Read(0), "");
  EXPECT_EQ(Read(1), "i");
}

TEST_F(OverPortLibrary, WithoutATerminatorReadsTextAsBytes) {
  library.replies = {{"AB"}};
  buffer = Bytes(5, 9);
  answer = "alt";
  io.ReadText("", 3, answer, buffer);
  EXPECT_EQ(calls, Calls{"ReadPort(3, 0)"});
  EXPECT_EQ(answer, "");
  EXPECT_EQ(buffer, (Bytes{'A', 'B', 0, 9, 9}));
}

TEST_F(OverPortLibrary, ReadsExactlyTheBytesAskedFor) {
  library.replies = {{std::string("\r\n\xFF\0", 4)}, {"Z"}};
  io.ReadBinary("", 4, buffer);
  EXPECT_EQ(calls, Calls{"ReadPort(4, 0)"});
  EXPECT_EQ(buffer, (Bytes{13, 10, 255, 0}));
  io.ReadBinary("", 1, buffer);
  EXPECT_EQ(buffer, (Bytes{'Z', 10, 255, 0}));
}

TEST_F(OverPortLibrary, AFailedBinaryReadLeavesTheBuffer) {
  library.replies = {{"AB", -9}, {"CD", -9}};
  buffer = {1, 2};
  io.ReadBinary("", 2, buffer);
  EXPECT_EQ(buffer, (Bytes{1, 2}));
  io.ReadBinary("\n", 2, buffer);
  EXPECT_EQ(buffer, (Bytes{1, 2}));
}

TEST_F(OverPortLibrary, ABinaryReadReturnsTheBytesUpToTheTerminator) {
  library.replies = {{"AB"}, {"C\r\n"}, {"DEFG"}, {""}};
  buffer = Bytes(5, 9);
  EXPECT_EQ(io.ReadBinary("\r\n", 4, buffer), 3u);
  EXPECT_EQ(calls, Calls{"ReadPort(4, 10)"});
  EXPECT_EQ(buffer, (Bytes{'A', 'B', '\n', 9, 9}));
  EXPECT_EQ(io.ReadBinary("\r\n", 4, buffer), 3u);
  EXPECT_EQ(buffer, (Bytes{'C', '\r', '\n', 9, 9}));
  EXPECT_EQ(io.ReadBinary("\n", 4, buffer), 4u);
  EXPECT_EQ(buffer, (Bytes{'D', 'E', 'F', 'G', 9}));
  EXPECT_EQ(io.ReadBinary(";", 4, buffer), 1u);
  EXPECT_EQ(buffer, (Bytes{';', 'E', 'F', 'G', 9}));
}

TEST_F(OverPortLibrary, ReadsByteByByte) {
  // What the library makes of 41 0D 0A 20 42 0A: it strips each LF.
  library.replies = {{"A"}, {"\r"}, {""}, {" "}, {"B"}, {""}};
  Bytes received;
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(io.ReadBinary("\r\n", 1, buffer), 1u);
    received.push_back(buffer.front());
  }
  EXPECT_EQ(received, (Bytes{'A', '\r', '\n', ' ', 'B', '\n'}));
  EXPECT_EQ(io.ReadBinary("\r\n", 1, buffer), 0u);
}

TEST_F(OverPortLibrary, ANegativeCountReadsNothing) {
  library.replies = {{""}, {""}};
  io.ReadBinary("", -1, buffer);
  io.ReadBinary("\n", -1, buffer);
  EXPECT_EQ(buffer, Bytes{});
  EXPECT_EQ(Read(-1), "");
}

TEST_F(OverPortLibrary, FlushesOnlyWhileConnected) {
  EXPECT_EQ(io.FlushInput(), std::nullopt);
  EXPECT_TRUE(calls.empty());
}

TEST_F(OverPortLibrary, SwitchesFromAcceptToFailAndStall) {
  library.replies = {{"ok\r\n"}};
  io.SetTimeout(2000);
  EXPECT_EQ(Read(), "ok\r\n");
  library.mode = FakePortLibrary::Mode::kFail;
  Read();
  EXPECT_EQ(io.LastError().code, FakePortLibrary::kRefused);
  library.mode = FakePortLibrary::Mode::kStall;
  const double begin = clock.now;
  Read();
  EXPECT_EQ(io.LastError().description, "-9");
  EXPECT_DOUBLE_EQ(clock.now - begin, 2);
}

TEST_F(OverPortLibrary, ReportsWhyThereIsNoLibrary) {
  source.library = nullptr;
  source.failure = "Die Portbibliothek „x“ kann nicht benutzt werden: Datei nicht gefunden.";
  state.connected = true;
  const auto fails = [&](const char* operation) {
    EXPECT_EQ(state.last_result, device_status::kNoPortLibrary) << operation;
    EXPECT_EQ(io.LastError().code, device_status::kNoPortLibrary) << operation;
    EXPECT_EQ(io.LastError().description, source.failure) << operation;
    state.last_result = 0;
  };
  io.Open();
  fails("Open");
  io.Close();
  fails("Close");
  io.Write("A", "\n", 0);
  fails("Write");
  Read();
  fails("ReadText");
  io.ReadBinary("", 1, buffer);
  fails("ReadBinary");
  io.SetTimeout(1);
  fails("SetTimeout");
  EXPECT_LT(io.FlushInput(), 0);
  fails("FlushInput");
  io.ActivateInterpreter();
  fails("ActivateInterpreter");
}

TEST_F(OverPortLibrary, ALibrarysOwnStatusOfThatNumberIsShownAsNumber) {
  library.results["WritePort"] = {device_status::kNoPortLibrary};
  io.Write("A", "\n", 0);
  EXPECT_EQ(io.LastError().description, "-902");
}

TEST_F(OverPortLibrary, ChoosesThePathAtEachCall) {
  io.Open();
  state.OperMode = operating_mode::kHost;
  io.Open();
  state.OperMode = operating_mode::kHostByIndex;
  io.Open();
  state.OperMode = 5;
  io.Open();
  EXPECT_EQ(host->script.calls, (Calls{"OpenDevice()", "IO.InitializeDevice(3)"}));
  EXPECT_EQ(calls.size(), 4u);
}

TEST_F(OverPortLibrary, AFailureHasTheLibrarysWords) {
  library.status_text = "Verbindung abgelehnt";
  library.results["WritePort"] = {-22};
  io.Write("A", "\n", 0);
  EXPECT_EQ(io.LastError().words, "Verbindung abgelehnt");
  io.Write("A", "\n", 0);
  EXPECT_EQ(io.LastError().words, "");
}

TEST_F(OverPortLibrary, ReportsWaitingBytesOnceConnected) {
  library.bytes_waiting = 12;
  EXPECT_EQ(io.BytesWaiting(), 0);
  state.connected = true;
  EXPECT_EQ(io.BytesWaiting(), 12);
  state.put_back = "x";
  EXPECT_EQ(io.BytesWaiting(), 13);
  library.results["FlushInQueue"] = {12};
  EXPECT_EQ(io.FlushInput(), 13);
  EXPECT_EQ(state.put_back, "");
}

TEST_F(OverPortLibrary, AnInstrumentMayUseUtf8) {
  state.utf8 = true;
  io.Write("Ω", "\n", 0);
  EXPECT_EQ(calls.back(), "WritePort(\"Ω\n\")");
  library.replies = {{"5 Ω \xFC\n"}};
  EXPECT_EQ(Read(), "5 Ω ü\n");
}

TEST_F(OverPortLibrary, AUtf8CharacterCutByTheCountIsReadWithTheNextAnswer) {
  state.utf8 = true;
  library.replies = {{"12Ω"}, {"12Ω"}};
  EXPECT_EQ(Read(3), "12");
  EXPECT_EQ(state.put_back, "\xCE");
  state.put_back.clear();
  EXPECT_EQ(Read(4), "12Ω");
  EXPECT_EQ(state.put_back, "");
}

}  // namespace
}  // namespace kolvane::device
