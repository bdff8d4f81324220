#include "inspect/hex_dump.h"

#include <gtest/gtest.h>

#include "inspect/marked_bytes.h"

namespace kolvane::inspect {
namespace {

TEST(BoxPositionsTest, EachLineOfTheDumpIsOnePositionShorterInTheBox) {
  const BoxPositions positions(DumpOf(Ramp(48)));
  EXPECT_EQ(positions.ToBox(5), 5);
  EXPECT_EQ(positions.ToBox(60), 60);
  EXPECT_EQ(positions.ToBox(62), 61);
  EXPECT_EQ(positions.ToBox(67), 66);
  EXPECT_EQ(positions.ToBox(2 * 62 + 5), 2 * 61 + 5);
  EXPECT_EQ(positions.ToBox(3 * 62), 3 * 61);
}

TEST(BoxPositionsTest, InsideALineEndIsTheNextLinesStart) {
  const BoxPositions positions(DumpOf(Ramp(48)));
  EXPECT_EQ(positions.ToBox(61), 61);
  EXPECT_EQ(positions.FromBox(61), 62);
}

TEST(BoxPositionsTest, PositionsSurviveConversionToTheBoxAndBack) {
  const std::string texts[] = {DumpOf(Ramp(48)), "a\rb\nc\r\n\r\r\n\nd", "\r\n\r\n", "\n\r", ""};
  for (const std::string& text : texts) {
    const BoxPositions positions(text);
    for (std::size_t at = 0; at <= text.size(); ++at) {
      const bool inside = at > 0 && at < text.size() && text[at - 1] == '\r' && text[at] == '\n';
      const auto position = static_cast<Position>(at);
      EXPECT_EQ(positions.FromBox(positions.ToBox(position)), inside ? position + 1 : position) << text << at;
    }
  }
}

}  // namespace
}  // namespace kolvane::inspect
