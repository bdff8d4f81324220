// Files written by other programs, sent by the amplifier as binary answers, dumped and read through
// templates.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "base/encoding.h"
#include "base/temp_folder.h"
#include "inspect/hex_dump.h"
#include "inspect/template_texts.h"
#include "integration/live_terminal.h"

namespace kolvane::integration {
namespace {

using Lines = std::vector<std::string>;

const std::string kFiles = KOLVANE_INSPECT_FILES;
const std::string kExamples = KOLVANE_TEMPLATE_EXAMPLES;
const std::string kAmplifierTemplates = KOLVANE_AMPLIFIER_TEMPLATES;
const std::string kZone = "/usr/share/zoneinfo/Europe/Berlin";

class InspectFilesTest : public testing::Test {
 protected:
  /// Connects to an amplifier that has the file to send.
  void Load(const std::string& file) {
    terminal_.emplace(Line::kTcp, amplifier::Options{.files = {file}});
    ASSERT_TRUE(terminal_->device.connected);
  }

  /// The dump of the first `count` bytes of an answer.
  std::string Receive(const std::string& command, int count) {
    terminal_->controls.PickFormat(1);
    terminal_->controls.PickMode(2);
    terminal_->controls.EditCount(std::to_string(count));
    terminal_->Ask(command);
    EXPECT_EQ(terminal_->Status(), 0);
    return inspect::BuildDump(base::ToWindows1252(terminal_->pane.lines.back()));
  }

  Lines Run(const std::string& file, const std::string& dump, bool network_order = false) {
    inspect::DumpView view{dump, inspect::kFirstByte, 0};
    inspect::ByteBuffer buffer{};
    Lines lines = TemplateTexts(base::ReadBytes(file), {network_order, ","}, view, buffer);
    for (std::string& line : lines) line = base::FromWindows1252(line);
    return lines;
  }

  std::optional<LiveTerminal> terminal_;
};

TEST_F(InspectFilesTest, ASoundFileIsReadThroughItsTemplate) {
  Load(kFiles + "/tone.wav");
  const std::string dump = Receive("FILE? 1", 444);
  EXPECT_EQ(dump.substr(0, 3 * 62),
            "0000 52494646 B4010000 57415645 666D7420    RIFF....WAVEfmt \r\n"
            "0016 10000000 01000200 22560000 88580100    ........\"V...X..\r\n"
            "0032 04001000 64617461 90010000 00000000    ....data........\r\n");
  EXPECT_EQ(dump.size(), 28u * 62);
  EXPECT_EQ(Run(kExamples + "/WAV.BNS", dump),
            (Lines{"Container=\"RIFF\"", "Bytes that follow=436", "Kind=\"WAVE\"", "Format chunk=\"fmt \"",
                   "Its size=16", "Format (1 is PCM)=1", "Channels=2", "Samples a second=22050",
                   "Bytes a second=88200", "Bytes a sample of all channels=4", "Bits a sample=16",
                   "Data chunk=\"data\"", "Bytes of data=400"}));
}

TEST_F(InspectFilesTest, ABitmapIsReadThroughItsTemplate) {
  Load(kFiles + "/gradient.bmp");
  const std::string dump = Receive("FILE? 1", 102);
  EXPECT_EQ(dump.substr(0, 2 * 62),
            "0000 424D6600 00000000 00003600 00002800    BMf.......6...(.\r\n"
            "0016 00000500 00000300 00000100 18000000    ................\r\n");
  EXPECT_EQ(dump.substr(6 * 62), "0096 00FF0000 FF00                          ................\r\n");
  EXPECT_EQ(Run(kExamples + "/BMP.BNS", dump),
            (Lines{"Kind=\"BM\"", "File size=102", "Offset of the pixels=54",
                   "Size of the information header=40", "Width=5", "Height (negative: from the top)=3",
                   "Planes=1", "Bits a pixel=24", "Compression=0", "Bytes of pixels=48",
                   "Pixels a metre across=2834", "Pixels a metre down=2834", "Colours in the table=0"}));
}

// The six counts of the header, read without the inspector.
std::vector<unsigned> ZoneCounts(const std::string& bytes) {
  std::vector<unsigned> counts;
  for (std::size_t at = 20; at < 44; at += 4) {
    unsigned count = 0;
    for (std::size_t i = 0; i < 4; ++i) count = count * 256 + static_cast<unsigned char>(bytes[at + i]);
    counts.push_back(count);
  }
  return counts;
}

TEST_F(InspectFilesTest, ATimeZoneOfThisSystemIsReadThroughItsTemplate) {
  if (!std::filesystem::exists(kZone)) GTEST_SKIP() << kZone << " is missing (package tzdata)";
  Load(kZone);
  const std::string bytes = base::ReadBytes(kZone);
  const std::vector<unsigned> counts = ZoneCounts(bytes);
  const std::string dump = Receive("FILE? 1", 44);
  const std::string names[] = {"UT/local indicators", "Standard/wall indicators", "Leap seconds",
                               "Transition times",    "Local time types",         "Bytes of abbreviations"};
  Lines expected{"Kind=\"TZif\"", std::string("Version=\"") + bytes[4] + '"'};
  for (std::size_t i = 0; i < counts.size(); ++i)
    expected.push_back(names[i] + "=" + std::to_string(counts[i]));
  EXPECT_EQ(Run(kExamples + "/TZIF.BNS", dump, true), expected);
  EXPECT_EQ(terminal_->core.device.FlushInput(), static_cast<int>(bytes.size()) - 44);
}

class InspectBlocksTest : public InspectFilesTest {
 protected:
  InspectBlocksTest() {
    terminal_.emplace(Line::kTcp, amplifier::Options{});
    terminal_->Ask("OPMODE 1");
    terminal_->Ask("NAME 1,Brücke");
  }

  /// The value of a line.
  std::string ValueOf(const Lines& lines, const std::string& name) {
    for (const std::string& line : lines) {
      if (line.starts_with(name + "=")) return line.substr(name.size() + 1);
    }
    return "no line " + name;
  }
};

TEST_F(InspectBlocksTest, TheHeaderOfABlockIsReadInBothByteOrders) {
  for (const bool motorola : {false, true}) {
    const std::string dump =
        Receive(std::string("BIN? 1-2,2,INT16,") + (motorola ? "MOTOROLA" : "INTEL"), 56);
    const Lines lines = Run(kAmplifierTemplates + "/KVA-1-KOPF.BNS", dump, motorola);
    EXPECT_EQ(lines.size(), 17u);
    EXPECT_EQ(ValueOf(lines, "Kennung"), "\"KVAB\"");
    EXPECT_EQ(ValueOf(lines, "Version"), "1");
    EXPECT_EQ(ValueOf(lines, "Aufzeichnung läuft"), "0");
    EXPECT_EQ(ValueOf(lines, "Betriebsart (0, 8 oder 16)"), "8");
    EXPECT_EQ(ValueOf(lines, "Zahlentyp (0 INT16, 32 INT32, 64 FLOAT32)"), "0");
    EXPECT_EQ(ValueOf(lines, "Motorola"), motorola ? "1" : "0");
    EXPECT_EQ(ValueOf(lines, "Erster Kanal"), "1");
    EXPECT_EQ(ValueOf(lines, "Kanäle"), "2");
    EXPECT_EQ(ValueOf(lines, "Messwerte je Kanal"), "2");
    EXPECT_EQ(ValueOf(lines, "Messrate in Hz"), "100");
    EXPECT_EQ(ValueOf(lines, "Faktor"), "0,02");
    EXPECT_EQ(ValueOf(lines, "Blocknummer"), motorola ? "2" : "1");
    EXPECT_EQ(ValueOf(lines, "Name"), "\"Brücke          \"");
  }
}

TEST_F(InspectBlocksTest, TheNumbersOfABlockAreItsCalibrationSignal) {
  const Lines whole = Run(kAmplifierTemplates + "/KVA-2-INT16.BNS", Receive("BIN? 1-2,4", 64));
  for (int number = 1; number <= 8; ++number)
    EXPECT_EQ(ValueOf(whole, "Zahl " + std::to_string(number)), number % 2 == 1 ? "500" : "12500");
  const Lines floats = Run(kAmplifierTemplates + "/KVA-3-FLOAT32.BNS", Receive("BIN? 1,8,FLOAT32", 80));
  EXPECT_EQ(ValueOf(floats, "Faktor"), "1");
  for (int number = 1; number <= 8; ++number)
    EXPECT_EQ(ValueOf(floats, "Wert " + std::to_string(number)), "10");
}

}  // namespace
}  // namespace kolvane::integration
