// `kolvane dump` and `kolvane decode`, the real program on files that other programs wrote.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "app/program.h"
#include "base/descriptor.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

const std::string kFiles = KOLVANE_INSPECT_FILES;
const std::string kTemplates = KOLVANE_TEMPLATE_EXAMPLES;

class DecodeProgramTest : public testing::Test {
 protected:
  std::string File(const std::string& name, const std::string& bytes) const {
    base::WriteBytes(folder_.Path(name), bytes);
    return folder_.Path(name);
  }
  Outcome Decode(const std::string& file, const std::string& pattern, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"decode", file, "--template", pattern});
    return RunProgram(options, {.environment = {{"LC_ALL", "C.UTF-8"}}});
  }
  nlohmann::json Json(const std::string& file, const std::string& pattern,
                      std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--format", "json"});
    const Outcome outcome = Decode(file, pattern, options);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return nlohmann::json::parse(outcome.out);
  }
  // The program reads its standard input from `file`.
  Outcome FromInput(const std::string& file, const std::string& words) {
    return RunProgram({"-c", std::string(KOLVANE_PROGRAM) + " " + words + " < '" + file + "'"},
                      {.program = "/bin/sh"});
  }

  base::TempFolder folder_;
};

TEST_F(DecodeProgramTest, ASoundFile) {
  const Outcome text = Decode(kFiles + "/tone.wav", kTemplates + "/WAV.BNS");
  EXPECT_EQ(text.out,
            "Container=\"RIFF\"\nBytes that follow=436\nKind=\"WAVE\"\nFormat chunk=\"fmt \"\nIts size=16\n"
            "Format (1 is PCM)=1\nChannels=2\nSamples a second=22050\nBytes a second=88200\n"
            "Bytes a sample of all channels=4\nBits a sample=16\nData chunk=\"data\"\nBytes of data=400\n");
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(text.err, "");
}

TEST_F(DecodeProgramTest, EachLineThatCannotBeUsedIsNamed) {
  const std::string pattern = File(
      "a.BNS",
      "BYTECOUNT=2\nA;FOO;0\nB;BYTE;x\nC;BYTE;300\nD;BYTE;0;5;3\nE;SHORT;0;16;17\nF;STRING*x;0\nG;BYTE;1\n");
  const Outcome outcome = Decode(File("ab", "ab"), pattern);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.ends_with("G=98\n")) << outcome.out;
  const std::string name = folder_.Path("a.BNS");
  EXPECT_EQ(outcome.err, name + ":2: unknown type: 'FOO'\n" + name + ":3: offset is not a number: 'x'\n" +
                             name + ":4: field extends beyond the 257 bytes of a record, offset: '300'\n" +
                             name + ":5: bit range without bits, starting at bit: '5'\n" + name +
                             ":6: bits from 15 on are ignored: '17'\n" + name +
                             ":7: length is not a number: 'x'\n");
}

TEST_F(DecodeProgramTest, ABitmap) {
  const auto head = Json(kFiles + "/gradient.bmp", kTemplates + "/BMP.BNS");
  EXPECT_EQ(head["Kind"], "BM");
  EXPECT_EQ(head["Width"], 5);
  EXPECT_EQ(head["Height (negative: from the top)"], 3);
  EXPECT_EQ(head["Bits a pixel"], 24);
}

TEST_F(DecodeProgramTest, ATimeZone) {
  const auto head = Json("/usr/share/zoneinfo/Europe/Berlin", kTemplates + "/TZIF.BNS", {"--motorola"});
  EXPECT_EQ(head["Kind"], "TZif");
  EXPECT_EQ(head["Standard/wall indicators"], head["Local time types"]);
}

TEST_F(DecodeProgramTest, AProgram) {
  const auto head = Json(KOLVANE_PROGRAM, kTemplates + "/ELF.BNS");
  EXPECT_EQ(head["Magic number"], 127);
  EXPECT_EQ(head["Kind"], "ELF");
  EXPECT_EQ(head["Size of this header"], 64);
  EXPECT_GT(head["Section headers"].get<int>(), 10);
}

TEST_F(DecodeProgramTest, RecordsUpToTheEndIncludingATruncatedOne) {
  const std::string bytes("\1\0\x02\3\0\x04\5", 7);
  const std::string pattern = File("a.BNS", "BYTECOUNT=3\na;SHORT;0\nb;BYTE;2\n");
  const std::string file = File("data", bytes);
  EXPECT_EQ(Decode(file, pattern, {"--repeat", "all", "--format", "csv"}).out, "a,b\n1,2\n3,4\n,\n");
  EXPECT_EQ(Decode(file, pattern, {"--repeat", "2"}).out, "a=1\nb=2\n\na=3\nb=4\n");
  EXPECT_EQ(Decode(file, pattern, {"--format", "csv"}).out, "a,b\n1,2\n");
  EXPECT_EQ(Decode(file, pattern, {"--offset", "0x3", "--repeat", "all", "--format", "json"}).out,
            "{\"a\":3,\"b\":4}\n{}\n");
  EXPECT_EQ(FromInput(file, "decode - --offset 3 --repeat all --format csv --template " + pattern).out,
            "a,b\n3,4\n,\n");
  const std::string skip_one = " decode - --offset 1 --template " + File("b.BNS", "BYTECOUNT=1\na;BYTE;0\n");
  EXPECT_EQ(RunProgram({"-c", "printf '\\7\\10' | " KOLVANE_PROGRAM + skip_one}, {.program = "/bin/sh"}).out,
            "a=8\n");
}

TEST_F(DecodeProgramTest, JsonHasNullForValuesThatAreNotANumber) {
  const std::string pattern = File("a.BNS", "BYTECOUNT=4\na;FLOAT;0\n");
  const std::string file = File("data", std::string("\0\0\xC0\x7F\0\0\x80\x7F\0\0\0\x3F", 12));
  EXPECT_EQ(Decode(file, pattern, {"--repeat", "all", "--format", "json"}).out,
            "{\"a\":null}\n{\"a\":null}\n{\"a\":0.5}\n");
}

TEST_F(DecodeProgramTest, AFileLargerThanAPiece) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += {static_cast<char>(i), static_cast<char>(i >> 8), 0, 0};
  const std::string file = File("data", bytes);
  const std::string pattern = File("a.BNS", "BYTECOUNT=4\nn;LONG;0\n");
  const Outcome outcome = Decode(file, pattern, {"--repeat", "all", "--format", "csv"});
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 100001);
  EXPECT_TRUE(outcome.out.ends_with("\n34462\n34463\n"));
}

TEST_F(DecodeProgramTest, ReportsLinesThatATemplateCannotUseAndContinues) {
  const std::string pattern = File("a.BNS", "BYTECOUNT=1\na;BYTE;0\nb;FLAOT;0\n");
  const Outcome outcome = Decode(File("data", "A"), pattern);
  EXPECT_EQ(outcome.out, "a=65\n");
  EXPECT_EQ(outcome.err, pattern + ":3: unknown type: 'FLAOT'\n");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(DecodeProgramTest, AFullDiskIsReported) {
  const std::string pattern = File("a.BNS", "BYTECOUNT=1\na;BYTE;0\n");
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  const Outcome outcome = RunProgram({"decode", File("data", "A"), "--template", pattern}, {.output = full});
  close(full);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "kolvane: cannot write: No space left on device\n");
}

TEST_F(DecodeProgramTest, ATemplateMayBeAPipe) {
  const std::string pattern = File("a.BNS", "BYTECOUNT=1\na;BYTE;0\n");
  const Outcome outcome = RunProgram({"-c", "cat '" + pattern + "' | " + KOLVANE_PROGRAM + " decode '" +
                                                File("data", "A") + "' --template /dev/stdin"},
                                     {.program = "/bin/sh"});
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "a=65\n");
}

TEST_F(DecodeProgramTest, ATerminalGetsNoControlCharacters) {
  const std::string pattern = File("a.BNS", "BYTECOUNT=4\nA\x1B[1m;STRING*4;0\n");
  const std::string data = File("data", "\x1B[2J");
  int master = -1;
  int slave = -1;
  ASSERT_EQ(openpty(&master, &slave, nullptr, nullptr, nullptr), 0);
  const base::Descriptor reader(master);
  const base::Descriptor terminal(slave);
  EXPECT_EQ(RunProgram({"decode", data, "--template", pattern}, {.output = slave}).status, 0);
  char shown[100];
  const ssize_t got = read(master, shown, sizeof shown);
  ASSERT_GT(got, 0);
  EXPECT_EQ(std::string(shown, static_cast<std::size_t>(got)), "A<1B>[1m=\"<1B>[2J\"\r\n");
  EXPECT_EQ(Decode(data, pattern).out, "A\x1B[1m=\"\x1B[2J\"\n");
}

TEST_F(DecodeProgramTest, WaitsForANonBlockingInput) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
  const base::Descriptor input(ends[0]);
  base::Descriptor writer(ends[1]);
  // The next byte is only written once the program has taken the one before.
  std::thread slow([&writer] {
    for (const char* byte : {"A", "B", "C"}) {
      EXPECT_EQ(base::WriteAll(writer.get(), byte), 0);
      for (int unread = 1; ioctl(writer.get(), FIONREAD, &unread) == 0 && unread > 0;)
        std::this_thread::yield();
    }
    EXPECT_TRUE(writer.Close());
  });
  const Outcome outcome = RunProgram({"dump", "-"}, {.input = input.get()});
  slow.join();
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out.substr(0, 11), "0000 414243");
}

TEST_F(DecodeProgramTest, RefusesInOneLine) {
  const std::string pattern = File("a.BNS", "BYTECOUNT=1\na;BYTE;0\n");
  const std::string file = File("data", "A");
  const auto refused = [](const Outcome& outcome, const std::string& line) {
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, line + "\n");
  };
  refused(Decode("/nonexistent", pattern), "kolvane: cannot read '/nonexistent': No such file or directory");
  refused(Decode("/", pattern), "kolvane: cannot read '/': Is a directory");
  refused(Decode(file, "/nonexistent"),
          "kolvane: cannot read the template '/nonexistent': No such file or directory");
  for (const std::string offset : {"1", "2", "5"})
    refused(Decode(file, pattern, {"--offset", offset}),
            "kolvane: '" + file + "' has no bytes at offset " + offset);
  refused(Decode(file, File("b.BNS", "a;BYTE;0")),
          "kolvane: '" + folder_.Path("b.BNS") + "' has no line BYTECOUNT= with a number above 0");
  refused(Decode(file, File("c.BNS", "BYTECOUNT=1")),
          "kolvane: '" + folder_.Path("c.BNS") + "' has no fields");
  refused(RunProgram({"decode", file}), "kolvane: decode needs --template T.BNS (see kolvane --help)");
  refused(RunProgram({"dump"}), "kolvane: dump needs a file, or - for standard input (see kolvane --help)");
  refused(RunProgram({"dump", "a", "b"}), "kolvane: dump takes one file (see kolvane --help)");
  refused(RunProgram({"dump", "/nonexistent"}),
          "kolvane: cannot read '/nonexistent': No such file or directory");
}

TEST_F(DecodeProgramTest, DumpsAsTheInspectorDoes) {
  const std::string file = File("data", "ABCDEFGHIJKLMNOP\x7F\x80");
  const std::string dump =
      "0000 41424344 45464748 494A4B4C 4D4E4F50    ABCDEFGHIJKLMNOP\n"
      "0016 7F80                                   \x7F...............\n";
  EXPECT_EQ(RunProgram({"dump", file}).out, dump);
  EXPECT_EQ(FromInput(file, "dump -").out, dump);
  EXPECT_EQ(RunProgram({"dump", File("empty", "")}).out, "");
}

}  // namespace
}  // namespace kolvane::app
