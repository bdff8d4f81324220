#include "headless/transcript.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "base/fake_prompt.h"
#include "base/small_files.h"
#include "base/temp_folder.h"
#include "device/device_state.h"
#include "device/fake_port_library.h"
#include "device/port_library_contract.h"

namespace kolvane::headless {
namespace {

using Way = Transcript::Way;

TEST(Transcript, ALineHasTimesDirectionAndBytes) {
  const base::TempFolder folder;
  Transcript transcript;
  ASSERT_EQ(transcript.Open(folder.Path("t"), true), 0);
  EXPECT_EQ(transcript.Write(Way::kOpen, "", {0, 1795269664123}), 0);
  EXPECT_EQ(transcript.Write(Way::kOut, "A\n", {0.0000014, 1795269664123}), 0);
  EXPECT_EQ(transcript.Write(Way::kIn, std::string("\0\xFF", 2), {1234567.5, 1795269664124}), 0);
  EXPECT_EQ(transcript.Write(Way::kClose, "", {1234568, 1795269664124}), 0);
  EXPECT_EQ(base::ReadBytes(folder.Path("t")),
            R"({"t":0.000000,"time":"2026-11-21T14:01:04.123Z","way":"open","bytes":""})"
            "\n"
            R"({"t":0.000001,"time":"2026-11-21T14:01:04.123Z","way":"out","bytes":"QQo="})"
            "\n"
            R"({"t":1234567.500000,"time":"2026-11-21T14:01:04.124Z","way":"in","bytes":"AP8="})"
            "\n"
            R"({"t":1234568.000000,"time":"2026-11-21T14:01:04.124Z","way":"close","bytes":""})"
            "\n");
}

TEST(Transcript, TimesCanBeLeftOut) {
  const base::TempFolder folder;
  Transcript transcript;
  ASSERT_EQ(transcript.Open(folder.Path("t"), false), 0);
  EXPECT_EQ(transcript.Write(Way::kOut, "A\n", transcript.Now()), 0);
  EXPECT_EQ(base::ReadBytes(folder.Path("t")), "{\"way\":\"out\",\"bytes\":\"QQo=\"}\n");
}

TEST(Transcript, IsReadableAsTheMaskAllows) {
  const base::TempFolder folder;
  const mode_t mask = umask(027);
  Transcript transcript;
  EXPECT_EQ(transcript.Open(folder.Path("t"), true), 0);
  umask(mask);
  struct stat status {};
  ASSERT_EQ(stat(folder.Path("t").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST(Transcript, AnotherOneIsAppended) {
  const base::TempFolder folder;
  base::WriteBytes(folder.Path("t"), "before\n");
  Transcript transcript;
  ASSERT_EQ(transcript.Open(folder.Path("t"), false), 0);
  EXPECT_EQ(transcript.Write(Way::kOpen, "", {}), 0);
  EXPECT_EQ(base::ReadBytes(folder.Path("t")), "before\n{\"way\":\"open\",\"bytes\":\"\"}\n");
}

TEST(Transcript, AFileThatCannotBeWrittenFailsOnce) {
  Transcript transcript;
  EXPECT_EQ(transcript.Open("/nonexistent/t", true), ENOENT);
  ASSERT_EQ(transcript.Open("/dev/full", true), 0);
  EXPECT_EQ(transcript.Write(Way::kOpen, "", {}), ENOSPC);
  EXPECT_EQ(transcript.Write(Way::kClose, "", {}), 0);
}

TEST(Transcript, ALineThatDoesNotFitIsNotWrittenInPart) {
  const base::TempFolder folder;
  Transcript transcript;
  ASSERT_EQ(transcript.Open(folder.Path("t"), false), 0);
  const base::SmallFiles small(50);
  EXPECT_EQ(transcript.Write(Way::kOpen, "", {}), 0);
  EXPECT_EQ(transcript.Write(Way::kOut, "a command", {}), EFBIG);
  EXPECT_EQ(base::ReadBytes(folder.Path("t")), "{\"way\":\"open\",\"bytes\":\"\"}\n");
}

struct RecordedPortTest : testing::Test {
  RecordedPortTest() {
    EXPECT_EQ(transcript.Open(folder.Path("t"), false), 0);
    Library().OpenPort(1, 9600, "", 8, 1, 512);
  }

  device::PortLibrary& Library() { return *recorded.Library(); }
  /// What a read of `count` bytes puts into a buffer of spaces, without the spaces at its end.
  std::string Read(std::int32_t count, std::int16_t terminator) {
    std::string buffer(static_cast<std::size_t>(count), ' ');
    Library().ReadPort(buffer.data(), count, terminator);
    buffer.erase(buffer.find_last_not_of(' ') + 1);
    return buffer;
  }
  /// The recorded transfers: "<" before input, ">" before output.
  std::string Recorded() const {
    std::string all;
    std::istringstream lines(base::ReadBytes(folder.Path("t")));
    for (std::string line; std::getline(lines, line);) {
      const auto event = nlohmann::json::parse(line);
      const std::string way = event["way"];
      all += way == "in" ? "<" : way == "out" ? ">" : "|";
      all += event["bytes"].get<std::string>();
    }
    return all;
  }

  base::TempFolder folder;
  Transcript transcript;
  base::FakePrompt prompt;
  device::FakePortLibrary library;
  device::FakePortLibrarySource source{&library};
  RecordedSource recorded{source, transcript, prompt};
};

TEST_F(RecordedPortTest, HasBothDirectionsInTheirOrder) {
  library.replies = {{"B\r\n"}, {"C"}};
  Library().WritePort("A\n");
  EXPECT_EQ(Read(20, '\n'), "B\r\n");
  EXPECT_EQ(Read(20, '\n'), "C") << "the library has stripped the terminator";
  Library().ClosePort();
  EXPECT_EQ(Recorded(), "|>QQo=<Qg0K<Qwo=|") << "A LF, B CR LF, C LF";
}

TEST_F(RecordedPortTest, AFullBufferHasNoTerminator) {
  library.replies = {{"ABC"}, {"DEF"}};
  EXPECT_EQ(Read(3, '\n'), "ABC");
  EXPECT_EQ(Read(3, 0), "DEF");
  EXPECT_EQ(Recorded(), "|<QUJD<REVG");
}

TEST_F(RecordedPortTest, AnEmptyAnswerIsItsTerminator) {
  library.replies = {{""}};
  EXPECT_EQ(Read(3, '\r'), "");
  EXPECT_EQ(Recorded(), "|<DQ==");
}

TEST_F(RecordedPortTest, AnEmptyLineKeepsBothItsCharacters) {
  library.replies = {{"\r\n"}};
  EXPECT_EQ(Read(3, '\n'), "\r\n");
  EXPECT_EQ(Recorded(), "|<DQo=");
}

TEST_F(RecordedPortTest, FailedTransfersAreNotRecorded) {
  EXPECT_EQ(Read(20, '\n'), "");
  library.mode = device::FakePortLibrary::Mode::kFail;
  Library().WritePort("A\n");
  EXPECT_EQ(Recorded(), "|");
}

TEST_F(RecordedPortTest, BytesThatComeOneByOneAreOneLine) {
  library.replies = {{"A"}, {"B"}, {"C"}};
  library.bytes_waiting = 2;
  Read(1, 0);
  Read(1, 0);
  EXPECT_EQ(Recorded(), "|");
  library.bytes_waiting = 0;
  Read(1, 0);
  EXPECT_EQ(Recorded(), "|<QUJD");
}

TEST_F(RecordedPortTest, BytesHaveTheTimeAtWhichTheyWereRead) {
  Transcript timed;
  ASSERT_EQ(timed.Open(folder.Path("timed"), true), 0);
  RecordedPort port(library, timed, prompt);
  port.OpenPort(1, 9600, "", 8, 1, 512);
  library.replies = {{"A"}};
  library.bytes_waiting = 1;
  char byte = 0;
  port.ReadPort(&byte, 1, 0);
  const double read = timed.Now().seconds + 1e-6;  // times are rounded
  while (timed.Now().seconds <= read + 1e-6) {
  }
  port.WritePort("B\n");
  std::istringstream lines(base::ReadBytes(folder.Path("timed")));
  std::string in;
  while (std::getline(lines, in) && nlohmann::json::parse(in)["way"] != "in") {
  }
  EXPECT_LE(nlohmann::json::parse(in)["t"].get<double>(), read);
}

TEST_F(RecordedPortTest, FlushedBytesAreReadBefore) {
  library.replies = {{"ABC"}, {"DEF"}};
  library.bytes_waiting = 3;
  EXPECT_EQ(Library().FlushInQueue(), 3);
  Library().ClosePort();
  EXPECT_EQ(Recorded(), "|<QUJD<REVG|");
}

TEST_F(RecordedPortTest, APortThatWasNotOpenIsNotClosed) {
  Library().ClosePort();
  Library().ClosePort();
  EXPECT_EQ(Recorded(), "||");
}

TEST_F(RecordedPortTest, TheInstrumentsEndOfTheConnectionIsRecordedWithItsStatus) {
  library.replies = {{"A"}, {"", device::device_status::kClosedByPeer}};
  Read(20, '\n');
  Read(20, '\n');
  Library().ClosePort();
  EXPECT_EQ(base::ReadBytes(folder.Path("t")),
            "{\"way\":\"open\",\"bytes\":\"\"}\n"
            "{\"way\":\"in\",\"bytes\":\"QQo=\"}\n"
            "{\"way\":\"close\",\"bytes\":\"\",\"status\":-40}\n");
}

TEST_F(RecordedPortTest, BytesBeforeTheEndOfTheConnectionAreRecorded) {
  library.replies = {{"", device::device_status::kConnectionLost}, {"AB"}};
  library.bytes_waiting = 2;
  Read(20, '\n');
  EXPECT_EQ(Recorded(), "|");
  Library().ClosePort();
  EXPECT_EQ(Recorded(), "|<QUI=|");
}

TEST_F(RecordedPortTest, AnswersBeforeTheEndOfTheConnectionAreStillRead) {
  library.results["WritePort"] = {device::device_status::kConnectionLost};
  library.replies = {{"A"}, {"B"}};
  library.bytes_waiting = 2;
  Library().WritePort("C\n");
  EXPECT_EQ(Library().BytesWaiting(), 2);
  EXPECT_EQ(Read(20, '\n'), "A");
  EXPECT_EQ(Recorded(), "|<QQo=");
  library.bytes_waiting = 0;
  EXPECT_EQ(Read(20, '\n'), "B");
  EXPECT_EQ(Recorded(), "|<QQo=<Qgo=|");
}

TEST_F(RecordedPortTest, AWriteMayFindTheEndToo) {
  library.results["WritePort"] = {device::device_status::kConnectionLost};
  Library().WritePort("A\n");
  Library().FlushInQueue();
  EXPECT_EQ(Recorded(), "||");
}

TEST_F(RecordedPortTest, OtherCallsArePassedOn) {
  library.calls.clear();
  Library().SelectDevice(4);
  Library().SetTimeout(70);
  Library().EnablePortIo(90);
  Library().ActivateInterpreter(200);
  Library().CloseInterpreter(1, 1);
  Library().SetNode(1, "/dev/x");
  EXPECT_EQ(library.calls, (std::vector<std::string>{"SelectDevice(4)", "SetTimeout(70)", "EnablePortIo(90)",
                                                     "ActivateInterpreter(200)", "CloseInterpreter(1, 1)",
                                                     "SetNode(1, \"/dev/x\")"}));
}

TEST(RecordedSource, WithoutALibraryThereIsNone) {
  device::FakePortLibrarySource source(nullptr);
  Transcript transcript;
  base::FakePrompt prompt;
  RecordedSource recorded(source, transcript, prompt);
  EXPECT_EQ(recorded.Library(), nullptr);
  EXPECT_EQ(recorded.Failure(), source.Failure());
}

TEST_F(RecordedPortTest, AFileThatIsFullIsReportedOnce) {
  ASSERT_EQ(transcript.Open("/dev/full", false), 0);
  Library().WritePort("A\n");
  Library().WritePort("B\n");
  ASSERT_EQ(prompt.errors.size(), 1u);
  EXPECT_EQ(prompt.errors.front(),
            "Die Mitschrift „/dev/full“ kann nicht geschrieben werden: Der Datenträger ist voll.");
}

/// A recorded fake with an answer.
struct RecordedFake {
  RecordedFake() { library.replies = {{"an answer of more than eight bytes"}}; }

  Transcript transcript;
  base::FakePrompt prompt;
  device::FakePortLibrary library;
  RecordedPort port{library, transcript, prompt};
};

std::shared_ptr<device::PortLibrary> MakeRecorded() {
  const auto fake = std::make_shared<RecordedFake>();
  return {fake, &fake->port};
}

}  // namespace
}  // namespace kolvane::headless

namespace kolvane::device {

INSTANTIATE_TEST_SUITE_P(Recorded, PortLibraryContract,
                         testing::Values(PortLibraryCase{"Fake", headless::MakeRecorded}), NameOfLibrary);

}  // namespace kolvane::device
