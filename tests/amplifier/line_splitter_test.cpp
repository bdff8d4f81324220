#include "amplifier/stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kolvane::amplifier {
namespace {

constexpr std::string_view kTooLong = "(too long)";

// Feeds the packets one after the other and collects the lines; an overlong one shows as kTooLong.
std::vector<std::string> Split(const std::vector<std::string>& packets) {
  LineSplitter splitter;
  std::vector<std::string> lines;
  for (std::string_view rest : packets) {
    while (!rest.empty()) {
      const auto space = splitter.Space();
      const std::size_t count = std::min(space.size(), rest.size());
      std::copy_n(rest.data(), count, space.data());
      splitter.Commit(count);
      rest.remove_prefix(count);
      while (const auto line = splitter.Next()) lines.emplace_back(line->too_long ? kTooLong : line->text);
    }
  }
  return lines;
}

using Lines = std::vector<std::string>;

TEST(LineSplitter, EndsLinesAtLfCrAndCrLf) {
  EXPECT_EQ(Split({"a\nb\rc\r\nd"}), (Lines{"a", "b", "c"}));
  EXPECT_EQ(Split({"\n\n"}), (Lines{"", ""}));
  EXPECT_EQ(Split({"\r\r\n\r"}), (Lines{"", "", ""}));
  EXPECT_EQ(Split({"\n\r"}), (Lines{"", ""}));
  EXPECT_EQ(Split({""}), Lines{});
}

TEST(LineSplitter, TakesCrLfInTwoPacketsAsOneEnd) {
  EXPECT_EQ(Split({"a\r", "\nb\n"}), (Lines{"a", "b"}));
  EXPECT_EQ(Split({"a\r", "\n", "\n"}), (Lines{"a", ""}));
  EXPECT_EQ(Split({"a\r", "b\r", "\r", "\n"}), (Lines{"a", "b", ""}));
}

TEST(LineSplitter, PutsALineTogetherFromSingleBytes) {
  EXPECT_EQ(Split({"M", "S", "V", "?", "\r", "\n", "x", "\n"}), (Lines{"MSV?", "x"}));
}

TEST(LineSplitter, KeepsNulAndAllOtherBytes) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    if (byte != '\n' && byte != '\r') all += static_cast<char>(byte);
  }
  EXPECT_EQ(Split({all + "\n"}), Lines{all});
}

TEST(LineSplitter, BoundsTheLine) {
  const std::string longest(LineSplitter::kMaxLine, 'x');
  EXPECT_EQ(Split({longest + "\r\nb\n"}), (Lines{longest, "b"}));
  EXPECT_EQ(Split({longest + "x\nb\n"}), (Lines{std::string(kTooLong), "b"}));
  EXPECT_EQ(Split({longest, "\n", longest, "x", "\r", "\nb\n"}),
            (Lines{longest, std::string(kTooLong), "b"}));
}

TEST(LineSplitter, DiscardsAMebibyteWithoutLineEnd) {
  EXPECT_EQ(Split({std::string(1 << 20, 'x')}), Lines{});
  EXPECT_EQ(Split({std::string(1 << 20, 'x') + "\nb\n"}), (Lines{std::string(kTooLong), "b"}));
}

TEST(LineSplitter, SurvivesManyLinesAtOnce) {
  std::string stream;
  for (int i = 0; i < 20'000; ++i) stream += "line\r\n";
  const Lines lines = Split({stream});
  EXPECT_EQ(lines.size(), 20'000u);
  EXPECT_EQ(std::ranges::count(lines, "line"), 20'000);
}

}  // namespace
}  // namespace kolvane::amplifier
