#include "inspect/decode.h"

#include <gtest/gtest.h>

#include "base/temp_folder.h"
#include "faults/failing_new.h"
#include "inspect/hex_dump.h"
#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

using namespace std::string_literals;

class DecodeTest : public testing::Test {
 protected:
  void Show(std::string_view bytes) {
    dump_ = DumpOf(bytes);
    view_ = {dump_, 5, 0};
  }

  std::string Caption(int format_code) {
    state_.format_code = format_code;
    return InspectBytePattern("", ",", view_, state_).caption.value_or("none");
  }

  std::string dump_;
  DumpView view_;
  InspectorState state_;
};

TEST_F(DecodeTest, ABlockIsDecodedInEveryFormat) {
  Show("\x01\x02\x49\x40\0\0\0\0\x01"s);
  EXPECT_EQ(Caption(format::kByte), "1");
  EXPECT_EQ(view_.selected, 2);
  EXPECT_EQ(Caption(format::kShort), "513");
  EXPECT_EQ(view_.selected, 4);
  EXPECT_EQ(Caption(format::kLong), "1078526465");
  EXPECT_EQ(view_.selected, 8);
  EXPECT_EQ(Caption(format::kFloat), "3,140747");
  EXPECT_EQ(view_.selected, 8);
  EXPECT_EQ(Caption(format::kDouble), "5,32862874487102E-315");
  EXPECT_EQ(view_.selected, 17);
}

TEST_F(DecodeTest, NetworkOrderAppliesToAllButDoubles) {
  state_.network_order = true;
  Show("\x01\x02\x03\x04\0\0\0\0"s);
  EXPECT_EQ(Caption(format::kByte), "1");
  EXPECT_EQ(Caption(format::kShort), "258");
  EXPECT_EQ(Caption(format::kLong), "16909060");
  Show("\x3F\x80\0\0"s);
  EXPECT_EQ(Caption(format::kFloat), "1");
  Show("\0\0\0\0\0\0\xF0\x3F"s);
  EXPECT_EQ(Caption(format::kDouble), "1");
}

TEST_F(DecodeTest, OnlyNegativeNumbersHaveASign) {
  Show("\xFF\xFF\xFF\xFF"s);
  EXPECT_EQ(Caption(format::kByte), "255");
  EXPECT_EQ(Caption(format::kShort), "-1");
  EXPECT_EQ(Caption(format::kLong), "-1");
}

TEST_F(DecodeTest, LargeAndSmallFloatsHaveAnExponent) {
  Show("\x28\x6B\x6E\x4E\0\0\0\0"s);
  EXPECT_EQ(Caption(format::kFloat), "1E+09");
  Show("\x95\xBF\xD6\x33"s);
  EXPECT_EQ(Caption(format::kFloat), "1E-07");
  Show("\xCD\xCC\xCC\x3D"s);
  EXPECT_EQ(Caption(format::kFloat), "0,1");
}

TEST_F(DecodeTest, MissingBytesKeepEarlierValues) {
  Show(Ramp(16));
  EXPECT_EQ(Caption(format::kLong), "50462976");
  view_.MoveTo(38);
  EXPECT_EQ(Caption(format::kLong), std::to_string(0x0302000F));
}

TEST_F(DecodeTest, AnEmptyDumpDecodesAsZero) {
  for (int code = 0; code < format::kTemplate; ++code) EXPECT_EQ(Caption(code), "0");
}

TEST_F(DecodeTest, ATemplateGivesLinesAndNoValue) {
  const base::TempFolder folder;
  base::WriteBytes(folder.Path("a.BNS"), "BYTECOUNT=2\r\na;SHORT;0\r\n");
  Show("\x01\x02"s);
  state_.format_code = format::kTemplate;
  const Decoded decoded = InspectBytePattern(folder.Path("a.BNS"), ",", view_, state_);
  EXPECT_EQ(decoded.caption, std::nullopt);
  EXPECT_EQ(decoded.lines, std::vector<std::string>{"a=513"});
  EXPECT_EQ(view_.selected, 4);
}

TEST_F(DecodeTest, ATemplateThatCannotBeOpenedGivesNoLines) {
  const base::TempFolder folder;
  Show("\x01"s);
  view_.selected = 4;
  state_.format_code = format::kTemplate + 3;
  for (const std::string& path : {folder.Path("missing.BNS"), folder.Path(""), "/dev/zero"s, ""s}) {
    EXPECT_EQ(InspectBytePattern(path, ",", view_, state_).lines, std::vector<std::string>{});
    EXPECT_EQ(view_.selected, 0);
  }
}

TEST_F(DecodeTest, AFileBeyondTheLargestSizeIsNotOpened) {
  const base::TempFolder folder;
  const std::string path = folder.Path("a.BNS");
  state_.format_code = format::kTemplate;
  base::WriteBytes(path, "a;BYTE;0\n");
  std::filesystem::resize_file(path, kLargestTemplate);
  EXPECT_EQ(InspectBytePattern(path, ",", view_, state_).lines, std::vector<std::string>{"a=0"});
  std::filesystem::resize_file(path, kLargestTemplate + 1);
  EXPECT_EQ(InspectBytePattern(path, ",", view_, state_).lines, std::vector<std::string>{});
  std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
  EXPECT_EQ(InspectBytePattern(path, ",", view_, state_).lines, std::vector<std::string>{});
}

TEST_F(DecodeTest, WithoutMemoryATemplateListsNothing) {
  const base::TempFolder folder;
  base::WriteBytes(folder.Path("a.BNS"),
                   "BYTECOUNT=2\nA field whose name is long;BYTE;0\nAnother field with a long name;BYTE;1\n");
  state_.format_code = format::kTemplate;
  Show("\x01\x02"s);
  bool hit = true;
  int empty = 0;
  for (int nth = 1; hit; ++nth) {
    const std::string file = folder.Path("a.BNS");
    Decoded decoded;
    {
      const faults::FailingNew failing(nth);
      decoded = InspectBytePattern(file, ",", view_, state_);
      hit = failing.hit();
    }
    ASSERT_TRUE(decoded.lines);
    ASSERT_EQ(decoded.lines->size(), decoded.fields.size()) << nth;
    empty += decoded.lines->empty() ? 1 : 0;
    EXPECT_EQ(decoded.lines->size(), decoded.lines->empty() && hit ? 0u : 2u);
  }
  EXPECT_GT(empty, 5);
}

}  // namespace
}  // namespace kolvane::inspect
