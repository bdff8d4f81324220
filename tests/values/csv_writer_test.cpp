#include "values/row.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <vector>

#include "base/csv.h"
#include "values/csv_reader.h"

namespace kolvane::values {
namespace {

constexpr std::int64_t kAfternoonUtc = 1795273264123;  // 2026-11-21 15:01:04.123

class CsvWriterTest : public testing::Test {
 protected:
  void SetUp() override { SetZone("UTC"); }
  void TearDown() override {
    unsetenv("TZ");
    tzset();
  }
  static void SetZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }

  static std::string Line(CsvForm form, std::size_t columns, std::string_view command,
                          const std::vector<double>& fields, std::int64_t time_ms = kAfternoonUtc) {
    std::string out;
    CsvWriter(form, columns).Append({{time_ms, 0}, command, fields}, out);
    return out;
  }

  static std::string Header(CsvForm form, std::size_t columns) {
    std::string out;
    CsvWriter(form, columns).AppendHeader(out);
    return out;
  }

  static std::string Number(double value) {
    std::string out;
    base::AppendCsvNumber(value, '.', out);
    return out;
  }
};

TEST_F(CsvWriterTest, NamesTheColumns) {
  EXPECT_EQ(Header(kCommaForm, 3), "time,command,field1,field2,field3\n");
  EXPECT_EQ(Header(kSemicolonForm, 1), "time;command;field1\n");
  EXPECT_EQ(Header(kCommaForm, 0), "time,command\n");
}

TEST_F(CsvWriterTest, WritesARowInBothForms) {
  EXPECT_EQ(Line(kCommaForm, 2, "MSV? 1-2", {12.5, -0.25}), "2026-11-21 15:01:04.123,MSV? 1-2,12.5,-0.25\n");
  EXPECT_EQ(Line(kSemicolonForm, 2, "MSV? 1-2", {12.5, -0.25}),
            "2026-11-21 15:01:04,123;MSV? 1-2;12,5;-0,25\n");
}

TEST_F(CsvWriterTest, WritesTheSameNumberOfCellsInEachLine) {
  EXPECT_EQ(Line(kCommaForm, 3, "A", {1}), "2026-11-21 15:01:04.123,A,1,,\n");
  EXPECT_EQ(Line(kCommaForm, 1, "A", {1, 2, 3}), "2026-11-21 15:01:04.123,A,1\n");
}

TEST_F(CsvWriterTest, QuotesCommandsThatNeedIt) {
  EXPECT_EQ(Line(kCommaForm, 0, "MSV? 1,2", {}), "2026-11-21 15:01:04.123,\"MSV? 1,2\"\n");
  EXPECT_EQ(Line(kSemicolonForm, 0, "MSV? 1,2", {}), "2026-11-21 15:01:04,123;MSV? 1,2\n");
  EXPECT_EQ(Line(kSemicolonForm, 0, "A;B", {}), "2026-11-21 15:01:04,123;\"A;B\"\n");
  EXPECT_EQ(Line(kCommaForm, 0, "SAY \"x\"", {}), "2026-11-21 15:01:04.123,\"SAY \"\"x\"\"\"\n");
  EXPECT_EQ(Line(kCommaForm, 0, "A\r\nB", {}), "2026-11-21 15:01:04.123,\"A\r\nB\"\n");
  EXPECT_EQ(Line(kCommaForm, 0, " A ", {}), "2026-11-21 15:01:04.123,\" A \"\n");
  EXPECT_EQ(Line(kCommaForm, 0, "Größe?", {}), "2026-11-21 15:01:04.123,Größe?\n");
  EXPECT_EQ(Line(kCommaForm, 0, "", {}), "2026-11-21 15:01:04.123,\n");
}

TEST_F(CsvWriterTest, WritesTheShortestNumberThatReadsBack) {
  EXPECT_EQ(Number(12.5), "12.5");
  EXPECT_EQ(Number(0.1), "0.1");
  EXPECT_EQ(Number(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(Number(-0.0), "-0");
  EXPECT_EQ(Number(1e22), "1e+22");
  EXPECT_EQ(Number(1.5e-7), "1.5e-07");
  EXPECT_EQ(Number(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
  EXPECT_EQ(Number(-std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(Number(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST_F(CsvWriterTest, WritesLocalTimes) {
  SetZone("CET-1CEST,M3.5.0,M10.5.0/3");
  EXPECT_EQ(Line(kCommaForm, 0, "", {}), "2026-11-21 16:01:04.123,\n");
  EXPECT_EQ(Line(kCommaForm, 0, "", {}, 1782000000000), "2026-06-21 02:00:00.000,\n");
}

TEST_F(CsvWriterTest, WritesTimesBefore1970) {
  EXPECT_EQ(Line(kCommaForm, 0, "", {}, -1), "1969-12-31 23:59:59.999,\n");
  EXPECT_EQ(Line(kCommaForm, 0, "", {}, 0), "1970-01-01 00:00:00.000,\n");
}

TEST_F(CsvWriterTest, ChangesTheSecondsFromRowToRow) {
  CsvWriter writer(kCommaForm, 0);
  std::string out;
  for (const std::int64_t ms : {0, 7, 999, 1000, 500})
    writer.Append({{kAfternoonUtc - 123 + ms, 0}, "", {}}, out);
  EXPECT_EQ(out,
            "2026-11-21 15:01:04.000,\n2026-11-21 15:01:04.007,\n2026-11-21 15:01:04.999,\n"
            "2026-11-21 15:01:05.000,\n2026-11-21 15:01:04.500,\n");
}

TEST_F(CsvWriterTest, IsReadBackByAStrictReader) {
  const std::vector<std::string> commands = {"A?", "1,2;3", "\"", "\"\"", "\r", "\n", " ", "", "a\"b,c"};
  for (const CsvForm form : {kCommaForm, kSemicolonForm}) {
    CsvWriter writer(form, 2);
    std::string out;
    writer.AppendHeader(out);
    const std::vector<double> fields = {1.5, -2e-9};
    for (const std::string& command : commands) writer.Append({{kAfternoonUtc, 0}, command, fields}, out);
    const auto rows = ReadCsv(out, form.separator);
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), commands.size() + 1);
    for (std::size_t i = 0; i < commands.size(); ++i) {
      EXPECT_EQ((*rows)[i + 1][1], commands[i]);
      EXPECT_EQ((*rows)[i + 1][3], "-2e-09");
      EXPECT_EQ((*rows)[i + 1][2], form.decimal_sign == ',' ? "1,5" : "1.5");
    }
  }
}

TEST(CsvReader, RefusesInvalidCsv) {
  for (const char* text : {"a", "a,b\nc\n", "\"a\n", "a\"b\n", "\"a\"b\n", "a\r\n", "a,"})
    EXPECT_EQ(ReadCsv(text, ','), std::nullopt) << text;
  EXPECT_EQ(ReadCsv("a,\"b\"\"\"\n,\n", ','), (CsvRows{{"a", "b\""}, {"", ""}}));
}

}  // namespace
}  // namespace kolvane::values
