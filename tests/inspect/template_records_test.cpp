#include "inspect/template_run.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kolvane::inspect {
namespace {

using Kind = TemplateProblem::Kind;

std::string Csv(std::string_view file, std::string_view bytes, bool network_order = false) {
  const RecordTable table(ParseTemplate(file));
  std::string out;
  table.AppendCsvHeader(out);
  table.AppendCsvRecord(bytes, network_order, out);
  return out;
}

TEST(RecordTable, HasAColumnForEachField) {
  EXPECT_EQ(Csv("BYTECOUNT=4\nStatus;BYTE;0;3\nFlags;SHORT;0;0;3\nValue;LONG;0",
                std::string_view("\x08\x0F\0\0", 4)),
            "Status,Flags,Value\n1,8,3848\n");
  EXPECT_EQ(Csv("a;FLOAT;0\nb;DOUBLE;4", std::string_view("\xCD\xCC\xCC\x3D\0\0\0\0\0\0\xF8\x3F", 12)),
            "a,b\n0.1,1.5\n");
  EXPECT_EQ(Csv("a;SHORT;0", "\x01\x02", true), "a\n258\n");
}

TEST(RecordTable, QuotesTextsAndConvertsThem) {
  EXPECT_EQ(Csv("Gr\xF6\xDF"
                "e, m;STRING*4;0",
                "\xE4,\"b"),
            "\"Größe, m\"\n\"ä,\"\"b\"\n");
}

TEST(RecordTable, NumbersRepeatedNames) {
  EXPECT_EQ(Csv("a;BYTE;0\na;BYTE;1\na_2;BYTE;2\na;BYTE;3", "\1\2\3\4"), "a,a_2,a_2_2,a_3\n1,2,3,4\n");
}

TEST(RecordTable, LeavesIncompleteFieldsEmpty) {
  EXPECT_EQ(Csv("a;BYTE;0\nb;SHORT;1\nc;STRING*9;0\nd;BYTE;300\ne;BYTE;0;2;1", "\1\2"), "a,b,c,d,e\n1,,,,\n");
}

TEST(RecordLines, AreThoseOfTheAvailableFields) {
  const Template parsed = ParseTemplate("BYTECOUNT=4\na;BYTE;0\nb;LONG;0\nc;FLOAT;0");
  EXPECT_EQ(RecordLines(parsed, {false, ","}, std::string_view("\1\0\0\0", 4)).size(), 3u);
  const auto cut = RecordLines(parsed, {false, ","}, "\1\2");
  ASSERT_EQ(cut.size(), 1u);
  EXPECT_EQ(cut.front().text, "a=1");
}

TEST(Template, KnowsTheLengthOfARecord) {
  EXPECT_EQ(ParseTemplate("BYTECOUNT=4\nBYTECOUNT=&H10\nBYTECOUNT=2").RecordLength(), 16u);
  EXPECT_EQ(ParseTemplate("a;BYTE;0").RecordLength(), std::nullopt);
  EXPECT_EQ(ParseTemplate("BYTECOUNT=0").RecordLength(), std::nullopt);
  EXPECT_EQ(ParseTemplate("BYTECOUNT=-3").RecordLength(), std::nullopt);
}

std::vector<std::pair<int, Kind>> ProblemsOf(std::string_view file) {
  std::vector<std::pair<int, Kind>> problems;
  for (const TemplateProblem& problem : ParseTemplate(file).problems)
    problems.emplace_back(problem.line, problem.kind);
  return problems;
}

TEST(Template, ReportsLinesThatCannotBeUsed) {
  using Problems = std::vector<std::pair<int, Kind>>;
  EXPECT_EQ(ProblemsOf("a remark\r\n\r\nBYTECOUNT=4\r\na;BYTE;0\r\nb;STRING*3;&H1\r\nc;SHORT"), Problems{});
  EXPECT_EQ(ProblemsOf("\na;FLAOT;0"), (Problems{{2, Kind::kType}}));
  EXPECT_EQ(ProblemsOf("a;string*4;0"), (Problems{{1, Kind::kType}}));
  EXPECT_EQ(ProblemsOf("BYTECOUNT=vier"), (Problems{{1, Kind::kByteCount}}));
  EXPECT_EQ(ProblemsOf("BYTECOUNT=99999999999"), (Problems{{1, Kind::kByteCount}}));
  EXPECT_EQ(ProblemsOf("a;BYTE;x"), (Problems{{1, Kind::kOffset}}));
  EXPECT_EQ(ProblemsOf("a;BYTE;257\nb;BYTE;256\nc;LONG;254\nd;BYTE;-1"),
            (Problems{{1, Kind::kOutside}, {3, Kind::kOutside}, {4, Kind::kOutside}}));
  EXPECT_EQ(ProblemsOf("a;STRING*0;257\nb;STRING*0;258\nc;STRING*-1;0"),
            (Problems{{2, Kind::kOutside}, {3, Kind::kOutside}}));
  EXPECT_EQ(ProblemsOf("a;BYTE;0;3;1\nb;BYTE;0;15"), (Problems{{1, Kind::kBits}, {2, Kind::kBits}}));
  EXPECT_EQ(ProblemsOf("a;SHORT;0;0;15\nb;FLOAT;0;3;1"), (Problems{{1, Kind::kHighBits}}));
  EXPECT_EQ(ProblemsOf("a;STRING*x;0"), (Problems{{1, Kind::kLength}}));
}

TEST(ValueOf, ASingleHasItsOwnDigits) {
  const auto parsed = ParseTemplate("a;FLOAT;0").Fields().front();
  const std::uint8_t tenth[] = {0xCD, 0xCC, 0xCC, 0x3D};
  EXPECT_EQ(ValueOf(parsed, tenth, false), FieldValue(0.1));
  const std::uint8_t nan[] = {0, 0, 0xC0, 0x7F};
  EXPECT_TRUE(std::isnan(std::get<double>(ValueOf(parsed, nan, false))));
}

}  // namespace
}  // namespace kolvane::inspect
