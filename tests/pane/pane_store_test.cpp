#include "pane/pane_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace kolvane::pane {
namespace {

// The same text as bytes with one colour each, edited in the simplest way.
struct Model {
  std::string text;
  std::vector<Color> colors;

  void Insert(std::size_t at, const std::string& added, Color color) {
    text.insert(at, added);
    colors.insert(colors.begin() + static_cast<std::ptrdiff_t>(at), added.size(), color);
  }
  void Erase(std::size_t begin, std::size_t end) {
    text.erase(begin, end - begin);
    colors.erase(colors.begin() + static_cast<std::ptrdiff_t>(begin),
                 colors.begin() + static_cast<std::ptrdiff_t>(end));
  }
  void SetColor(std::size_t begin, std::size_t end, Color color) {
    for (std::size_t i = begin; i < end; ++i) colors[i] = color;
  }
};

std::vector<Color> ColorsOf(const PaneStore& store) {
  std::vector<Color> colors;
  while (colors.size() < store.Length()) {
    const ColorStretch stretch = StretchAt(store, colors.size());
    EXPECT_EQ(stretch.begin, colors.size()) << "ranges are as long as possible";
    if (stretch.end <= colors.size()) break;
    colors.resize(stretch.end, stretch.color);
  }
  return colors;
}

void ExpectSame(const PaneStore& store, const Model& model) {
  ASSERT_EQ(store.Text(0, store.Length(), "\n"), model.text);
  ASSERT_EQ(store.LineCount(),
            1u + static_cast<std::size_t>(std::count(model.text.begin(), model.text.end(), '\n')));
  ASSERT_EQ(ColorsOf(store), model.colors);
}

void ExpectLinesAddUp(const PaneStore& store) {
  std::size_t at = 0;
  for (std::size_t line = 0; line < store.LineCount(); ++line) {
    ASSERT_EQ(store.LineStart(line), at);
    ASSERT_EQ(store.LineAt(at), line);
    at += store.Line(line).size() + 1;
    ASSERT_EQ(store.LineAt(at - 1), line);
  }
  ASSERT_EQ(at, store.Length() + 1);
}

class RandomSource {
 public:
  std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

  std::string Text(std::size_t at_most) {
    static const std::vector<std::string> kPieces = {"a", "12.5,", "\n", "long words ", "ä", "\U0001F600"};
    std::string text;
    const std::size_t size = Below(at_most);
    while (text.size() < size) text += kPieces[Below(kPieces.size())];
    return text;
  }

 private:
  std::mt19937 random_{20240229};
};

// The nearest position at which a character starts.
std::size_t Snap(const std::string& text, std::size_t at) {
  while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) ++at;
  return at;
}

TEST(PaneStore, RandomEditsMatchAPlainString) {
  PaneStore store;
  Model model;
  RandomSource random;
  for (int round = 0; round < 600; ++round) {
    const std::size_t a = Snap(model.text, random.Below(model.text.size() + 1));
    const std::size_t b =
        Snap(model.text, std::min(model.text.size(), a + random.Below(round % 9 == 0 ? 60000 : 300)));
    const auto color = static_cast<Color>(random.Below(3));
    switch (random.Below(5)) {
      case 0:
        store.Erase(a, b);
        model.Erase(a, b);
        break;
      case 1:
        store.SetColor(a, b, color);
        model.SetColor(a, b, color);
        break;
      default: {
        const std::string added = random.Text(round % 10 == 0 ? 90000 : 2000);
        store.Insert(a, added, color);
        model.Insert(a, added, color);
      }
    }
    if (round % 20 == 0) ExpectSame(store, model);
    if (HasFatalFailure()) return;
  }
  ExpectSame(store, model);
  ExpectLinesAddUp(store);
  EXPECT_GT(store.ChunkCount(), 4u);
}

TEST(PaneStore, AppendedLinesFillManyChunks) {
  PaneStore store;
  constexpr std::size_t kLines = 20000;
  for (std::size_t i = 1; i <= kLines; ++i) store.AppendLine(std::to_string(i), i % 2 == 0 ? 255 : kNoColor);
  EXPECT_EQ(store.LineCount(), kLines + 1);
  EXPECT_EQ(store.Line(0), "");
  EXPECT_EQ(store.Line(kLines), "20000");
  EXPECT_EQ(store.Line(12345), "12345");
  EXPECT_EQ(store.ColorAt(store.LineStart(12346)), 255);
  EXPECT_EQ(store.ColorAt(store.LineStart(12345)), kNoColor);
  EXPECT_GT(store.ChunkCount(), 3u);
  ExpectLinesAddUp(store);
}

TEST(PaneStore, EmptyLinesAlsoFillChunks) {
  PaneStore store;
  for (int i = 0; i < 10000; ++i) store.AppendLine("", kNoColor);
  EXPECT_EQ(store.Text(0, store.Length(), "\r\n").size(), 20000u);
  EXPECT_GT(store.ChunkCount(), 2u);
  ExpectLinesAddUp(store);
}

TEST(PaneStore, ALineOfAMebibyteIsStoredBesideShortOnes) {
  PaneStore store;
  const std::string large(1 << 20, 'x');
  store.AppendLine("before", kNoColor);
  store.AppendLine(large, 255);
  store.AppendLine("after", kNoColor);
  EXPECT_EQ(store.Line(2), large);
  EXPECT_EQ(store.Line(3), "after");
  store.Insert(store.LineStart(2) + 500000, "\n", kNoColor);
  EXPECT_EQ(store.Line(2).size(), 500000u);
  EXPECT_EQ(store.Line(3).size(), large.size() - 500000u);
  ExpectLinesAddUp(store);
}

TEST(PaneStore, AHugeInsertionSplitsAndItsRemovalLeavesNothing) {
  PaneStore store;
  store.Insert(0, "ab", kNoColor);
  std::string lines;
  for (int i = 0; i < 10000; ++i) lines += "a line among many\n";
  store.Insert(1, lines, 255);
  EXPECT_EQ(store.LineCount(), 10001u);
  EXPECT_GT(store.ChunkCount(), 5u);
  store.Erase(1, 1 + lines.size());
  EXPECT_EQ(store.Text(0, store.Length(), "\n"), "ab");
  EXPECT_EQ(store.LineCount(), 1u);
  EXPECT_EQ(store.ChunkCount(), 1u);
}

TEST(PaneStore, ErasingFromLineStartToLineStartAcrossChunksKeepsTheRest) {
  PaneStore store;
  for (int i = 1; i <= 5000; ++i) store.AppendLine(std::to_string(i), kNoColor);
  store.Erase(store.LineStart(1), store.LineStart(5000));
  EXPECT_EQ(store.Text(0, store.Length(), "\n"), "\n5000");
  store.Erase(0, store.Length());
  EXPECT_EQ(store.Length(), 0u);
  EXPECT_EQ(store.LineCount(), 1u);
}

TEST(PaneStore, CountsUnitsAcrossChunks) {
  PaneStore store;
  for (int i = 0; i < 3000; ++i) store.AppendLine("ä\U0001F600 is two and four bytes", kNoColor);
  constexpr std::size_t kUnits = 26;
  constexpr std::size_t kLine = 2500;
  const std::size_t start = store.LineStart(kLine);
  EXPECT_EQ(store.ToUnits(start), 1 + (kLine - 1) * kUnits);
  EXPECT_EQ(store.FromUnits(store.ToUnits(start)), start);
  EXPECT_EQ(store.ToRichUnits(start), 2 + (kLine - 1) * (kUnits + 1));
  EXPECT_EQ(store.FromRichUnits(store.ToRichUnits(start)), start);
  EXPECT_EQ(store.FromRichUnits(store.ToRichUnits(start) - 1), start - 1) << "inside the break";
  EXPECT_EQ(store.FromUnits(1u << 30), store.Length());
  EXPECT_EQ(store.FromRichUnits(1u << 30), store.Length());
  EXPECT_EQ(store.FromUnits(store.ToUnits(store.Length())), store.Length());
}

TEST(PaneStore, EveryEditGivesItsChunkANewVersion) {
  PaneStore store;
  std::vector<std::uint64_t> versions = {store.Chunk(0).version};
  const auto changed = [&] {
    const bool is_new = std::find(versions.begin(), versions.end(), store.Chunk(0).version) == versions.end();
    versions.push_back(store.Chunk(0).version);
    return is_new;
  };
  store.AppendLine("a", kNoColor);
  EXPECT_TRUE(changed());
  store.Insert(0, "b", kNoColor);
  EXPECT_TRUE(changed());
  store.SetColor(0, 1, 255);
  EXPECT_TRUE(changed());
  store.Erase(0, 1);
  EXPECT_TRUE(changed());
  store.Clear();
  EXPECT_TRUE(changed());
}

TEST(PaneStoreOrigins, StayWithTheirLinesThroughEditsAndSplits) {
  PaneStore store;
  constexpr int kLines = 5000;
  for (int i = 1; i <= kLines; ++i) {
    store.SetOrigin({i, i % 3 == 0});
    store.AppendLine(std::to_string(i), kNoColor);
  }
  store.SetOrigin({});
  store.Insert(store.LineStart(10), "typed\nby hand\n", kNoColor);
  store.Erase(store.LineStart(100), store.LineStart(3000));
  EXPECT_EQ(store.Origin(0).at_ms(), 0);
  int checked = 0;
  for (std::size_t line = 13; line < store.LineCount(); ++line, ++checked) {
    const int number = std::stoi(std::string(store.Line(line)));
    EXPECT_EQ(store.Origin(line).at_ms(), number) << line;
    EXPECT_EQ(store.Origin(line).failure(), number % 3 == 0) << line;
  }
  EXPECT_GT(checked, 2000);
}

}  // namespace
}  // namespace kolvane::pane
