#include <gtest/gtest.h>

#include <algorithm>

#include "help/rtf_reader.h"
#include "rtf_dump.h"

namespace kolvane::help {
namespace {

using namespace std::string_literals;

RtfFault FaultOf(const std::string& bytes) { return ReadRtf(bytes).fault; }

std::string TextOf(const std::string& bytes) { return ReadRtf(bytes).document.PlainText(); }

std::string Repeated(std::string_view piece, std::size_t count) {
  std::string out;
  out.reserve(piece.size() * count);
  for (std::size_t i = 0; i < count; ++i) out += piece;
  return out;
}

TEST(RtfFaults, OtherFilesAreNotRichText) {
  for (const std::string& bytes :
       {""s, "\0"s, "{"s, "text"s, "\\rtf1 x"s, "{\\rt"s, "{\\rtfx1 a}"s, "{rtf1}"s, "{{\\rtf1}}"s,
        "}{\\rtf1}"s, "\xEF\xBB\xBF{\\rtf1 x}"s, "{\\*\\rtf1 x}"s, "%PDF-1.4"s}) {
    const RtfResult result = ReadRtf(bytes);
    EXPECT_EQ(result.fault, RtfFault::kNotRichText) << bytes;
    EXPECT_TRUE(result.document.paragraphs.empty()) << bytes;
  }
  EXPECT_EQ(FaultOf("{\\rtf}"), RtfFault::kNone);
  EXPECT_EQ(FaultOf("\r\n{\\rtf1 x}"), RtfFault::kNone);
}

TEST(RtfFaults, AMissingBraceLeavesTheTextBefore) {
  EXPECT_EQ(FaultOf("{\\rtf1 a{\\b b\\par c"), RtfFault::kTruncated);
  EXPECT_EQ(TextOf("{\\rtf1 a{\\b b\\par c"), "ab\nc\n");
  EXPECT_EQ(TextOf("{\\rtf1 a\\"), "a\n");
  EXPECT_EQ(TextOf("{\\rtf1 a\\bin9 x}"), "a\n");
  EXPECT_EQ(TextOf("{\\rtf1 a\\'e"), "a\n");
}

TEST(RtfFaults, ADamagedByteIsLeftOut) {
  EXPECT_EQ(FaultOf("{\\rtf1 a\\'xyb\\par c}"), RtfFault::kBadByte);
  EXPECT_EQ(TextOf("{\\rtf1 a\\'xyb\\par c}"), "axyb\nc\n");
}

TEST(RtfFaults, TheFirstOneIsReported) { EXPECT_EQ(FaultOf("{\\rtf1 a\\'xy"), RtfFault::kBadByte); }

TEST(RtfFaults, TextAfterTheLastBraceIsLeftOut) {
  EXPECT_EQ(FaultOf("{\\rtf1 a} b}"), RtfFault::kTextAfterEnd);
  EXPECT_EQ(TextOf("{\\rtf1 a} b}"), "a\n");
  EXPECT_EQ(FaultOf("{\\rtf1 a}}"), RtfFault::kTextAfterEnd);
  EXPECT_EQ(FaultOf("{\\rtf1 a}\\"), RtfFault::kTextAfterEnd);
  EXPECT_EQ(FaultOf("{\\rtf1 a}\r\n \t\0\0"s), RtfFault::kNone);
}

TEST(RtfFaults, GroupsHaveALargestDepth) {
  const auto nested = [](std::size_t depth) {
    return "{\\rtf1 a" + Repeated("{", depth - 1) + "b" + Repeated("}", depth - 1) + "c}";
  };
  EXPECT_EQ(FaultOf(nested(kRtfMaxDepth)), RtfFault::kNone);
  EXPECT_EQ(TextOf(nested(kRtfMaxDepth)), "abc\n");
  EXPECT_EQ(FaultOf(nested(kRtfMaxDepth + 1)), RtfFault::kTooDeep);
  EXPECT_EQ(TextOf(nested(kRtfMaxDepth + 1)), "a\n");
}

TEST(RtfFaults, PiecesHaveALargestNumber) {
  const RtfResult most = ReadRtf("{\\rtf1" + Repeated("\\par", kRtfMaxPieces) + "}");
  EXPECT_EQ(most.fault, RtfFault::kNone);
  EXPECT_EQ(most.document.paragraphs.size(), kRtfMaxPieces);
  const RtfResult more = ReadRtf("{\\rtf1" + Repeated("\\par", kRtfMaxPieces + 1) + "}");
  EXPECT_EQ(more.fault, RtfFault::kTooLarge);
  EXPECT_EQ(more.document.paragraphs.size(), kRtfMaxPieces);
  const RtfResult runs = ReadRtf("{\\rtf1" + Repeated("\\b a\\b0 a", kRtfMaxPieces) + "}");
  EXPECT_EQ(runs.fault, RtfFault::kTooLarge);
  EXPECT_EQ(runs.document.paragraphs.at(0).runs.size(), kRtfMaxPieces);
}

TEST(RtfFaults, HaveAGermanTextEach) {
  EXPECT_EQ(FaultText(RtfFault::kNone), "");
  EXPECT_EQ(FaultText(RtfFault::kNotRichText), "Die Datei ist keine RTF-Datei");
  EXPECT_EQ(FaultText(RtfFault::kTruncated), "Die Datei ist unvollständig");
  EXPECT_EQ(FaultText(RtfFault::kBadByte), "Die Datei enthält ein beschädigtes Zeichen");
  EXPECT_EQ(FaultText(RtfFault::kTextAfterEnd), "Hinter dem Ende des Textes steht noch etwas");
  EXPECT_EQ(FaultText(RtfFault::kTooDeep), "Die Gruppen der Datei sind zu tief geschachtelt");
  EXPECT_EQ(FaultText(RtfFault::kTooLarge), "Die Datei enthält zu viele Absätze");
}

const std::string kSample =
    "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}{\\colortbl;\\red0\\green0\\blue255;}"
    "{\\*\\generator x;}{\\info{\\title y}}\\pard\\b\\fs32 Titel\\b0\\par\\uc2\\u937 ??\\u-10179 ??\\u-8704 "
    "??"
    "{\\cf1\\f1\\i\\ul $REPEAT\\~3}\\tab\\'e4\\line\\{\\bin3 }}}\\}\\par}";

// A \u with a truncated number is another character, and may leave half of a surrogate pair before it.
TEST(RtfHostile, CutAnywhereItShowsTheStart) {
  constexpr std::ptrdiff_t kTwoCharacters = 6;
  const std::string whole = TextOf(kSample);
  ASSERT_EQ(whole, "Titel\nΩ\U0001F600$REPEAT\u00A03\tä\n{}\n");
  for (std::size_t length = 0; length < kSample.size(); ++length) {
    const RtfResult result = ReadRtf(kSample.substr(0, length));
    EXPECT_NE(result.fault, RtfFault::kNone) << length;
    std::string text = result.document.PlainText();
    if (!text.empty()) text.pop_back();
    const auto differs = std::ranges::mismatch(text, whole).in1;
    EXPECT_LE(text.end() - differs, kTwoCharacters) << length << ": " << text;
  }
}

TEST(RtfHostile, EveryByteReplacedIsSurvived) {
  for (std::size_t at = 0; at < kSample.size(); ++at) {
    for (const char c : "{}\\'\0\x80-9u;"s) {
      std::string bytes = kSample;
      bytes[at] = c;
      EXPECT_LE(ReadRtf(bytes).document.PlainText().size(), 4 * bytes.size());
    }
  }
}

#ifdef KOLVANE_SANITIZED
constexpr std::size_t kLong = std::size_t{1} << 20;  // ten times as slow
#else
constexpr std::size_t kLong = std::size_t{10} << 20;
#endif

class RtfMebibytes : public testing::TestWithParam<const char*> {};

TEST_P(RtfMebibytes, AreReadWithinBounds) {
  const std::string piece = GetParam();
  const std::string bytes = "{\\rtf1 " + Repeated(piece, kLong / piece.size());
  const RtfResult result = ReadRtf(bytes);
  EXPECT_NE(result.fault, RtfFault::kNone);
  std::size_t runs = 0;
  for (const RtfParagraph& paragraph : result.document.paragraphs) runs += paragraph.runs.size();
  EXPECT_LE(runs, kRtfMaxPieces);
  EXPECT_LE(result.document.PlainText().size(), 2 * bytes.size());
}

INSTANTIATE_TEST_SUITE_P(Of, RtfMebibytes,
                         testing::Values("a", "{", "}", "{\\b x}", "\\", "\\'e4", "\\b x\\b0 y", "\\u55357?",
                                         "\\uc9999999\\u937", "{\\*\\x y}", "{\\fonttbl{\\f1 Name;}}",
                                         "{\\fonttbl x}"));

}  // namespace
}  // namespace kolvane::help
