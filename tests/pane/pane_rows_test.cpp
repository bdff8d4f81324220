// Where lines break into rows, and which part of the text is in which row.
#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <string>

#include "pane/pane_text.h"
#include "pane/ui/output_pane_rows.h"

namespace kolvane::pane {
namespace {

QFont Fixed() { return QFont(QStringLiteral("Courier New"), 10); }
QFont Proportional() { return QFont(QStringLiteral("Liberation Serif"), 10); }

// The rows of a text at a width of `columns` spaces, "|" between them and "/" for line breaks.
std::string Wrapped(std::string_view text, int columns, const QFont& font = Fixed()) {
  PaneText pane;
  pane.SetText(text);
  const OutputPaneMetrics metrics(font);
  OutputPaneRows rows(pane.store(), metrics);
  rows.SetLayout(metrics, columns * metrics.space_width());
  rows.Sync();
  std::string out;
  for (std::size_t i = 0; i < rows.Total(); ++i) {
    const PaneRow row = rows.RowAt(i);
    EXPECT_EQ(rows.RowOf(row.begin), i);
    out += pane.store().Text(row.begin, row.end, "") + (row.ends_line ? "/" : "|");
  }
  return out;
}

TEST(PaneRows, ShortLinesAreOneRowEach) {
  EXPECT_EQ(Wrapped("", 10), "/");
  EXPECT_EQ(Wrapped("\nab\n\ncd", 10), "/ab//cd/");
}

TEST(PaneRows, ARowHoldsWhatFits) {
  EXPECT_EQ(Wrapped("abcdefghij", 10), "abcdefghij/");
  EXPECT_EQ(Wrapped("abcdefghijk", 10), "abcdefghij|k/");
  EXPECT_EQ(Wrapped("abcdefghijabcdefghijk", 10), "abcdefghij|abcdefghij|k/");
}

TEST(PaneRows, RowsEndAfterWordsIfPossible) {
  EXPECT_EQ(Wrapped("one two three four", 10), "one two |three four/");
  EXPECT_EQ(Wrapped("1.25,2.50,3.75", 8), "1.25,|2.50,|3.75/");
  EXPECT_EQ(Wrapped("<0D><0A><41>", 10), "<0D><0A>|<41>/");
}

TEST(PaneRows, ASpaceAtTheEdgeHangsOver) {
  EXPECT_EQ(Wrapped("abcdefghij klm", 10), "abcdefghij |klm/");
  EXPECT_EQ(Wrapped("abcdefghij ", 10), "abcdefghij /");
  EXPECT_EQ(Wrapped("abcdefghij  ", 10), "abcdefghij | /");
}

TEST(PaneRows, OtherLettersBreakByTheSameRules) {
  EXPECT_EQ(Wrapped("ein größerer Wert", 10), "ein |größerer |Wert/");
  EXPECT_EQ(Wrapped("größergrößergrößer", 12), "größergrößer|größer/");
  EXPECT_EQ(Wrapped("ääääääääää b", 10), "ääääääääää |b/");
  EXPECT_EQ(Wrapped("ab\tcd", 9), "ab\t|cd/") << "a tab ends at column 8";
}

TEST(PaneRows, AWindowTooNarrowShowsACharacterARow) {
  EXPECT_EQ(Wrapped("abc", 0), "a|b|c/");
  EXPECT_EQ(Wrapped("äbc", 0), "ä|b|c/");
}

TEST(PaneRows, ProportionalFontsWrapByWidth) {
  const std::string narrow(30, 'i');
  const std::string wide(30, 'W');
  EXPECT_LT(Wrapped(narrow, 20, Proportional()).find('|'), narrow.size());
  EXPECT_LT(Wrapped(wide, 20, Proportional()).find('|'), Wrapped(narrow, 20, Proportional()).find('|'));
}

TEST(PaneRows, PositionsAddUpToWhatThePainterDraws) {
  for (const QFont& font : {Fixed(), Proportional()}) {
    const OutputPaneMetrics metrics(font);
    const std::string text = "AVATAR To fi ffl 12.5 größer";
    const qreal drawn = QFontMetricsF(metrics.plain_font()).horizontalAdvance(QString::fromStdString(text));
    EXPECT_NEAR(metrics.X(text, text.size()), drawn, 0.01);
  }
}

TEST(PaneRows, FindsTheByteNearestToAPosition) {
  const OutputPaneMetrics metrics(Fixed());
  const std::string text = "aäe\u0301b";
  for (const std::size_t at : {0u, 1u, 3u, 6u, 7u}) {
    EXPECT_EQ(metrics.ByteAt(text, metrics.X(text, at)), at);
  }
  EXPECT_EQ(metrics.ByteAt(text, metrics.space_width() * 0.4), 0u);
  EXPECT_EQ(metrics.ByteAt(text, metrics.space_width() * 0.6), 1u);
  EXPECT_EQ(metrics.ByteAt(text, -5), 0u);
  EXPECT_EQ(metrics.ByteAt(text, 1e6), text.size());
}

TEST(PaneRows, FindsAnyCharacterThatIsNotShownAsItIs) {
  const std::string line(200, 'a');
  EXPECT_TRUE(OutputPaneMetrics::IsOrdinary(line));
  for (std::size_t at = 0; at < line.size(); ++at)
    EXPECT_FALSE(OutputPaneMetrics::IsOrdinary(std::string(line).replace(at, 1, "\t"))) << at;
}

TEST(PaneRows, ShowsControlCharactersAsTerminalsDo) {
  EXPECT_EQ(OutputPaneMetrics::Shown(std::string_view("\0", 1)), QStringLiteral("^@"));
  EXPECT_EQ(OutputPaneMetrics::Shown("\x1B"), QStringLiteral("^["));
  EXPECT_EQ(OutputPaneMetrics::Shown("\x7F"), QStringLiteral("^?"));
  EXPECT_EQ(OutputPaneMetrics::Shown("\xC2\x81"), QString(QChar(QChar::ReplacementCharacter)));
  EXPECT_EQ(OutputPaneMetrics::Shown("ä"), QStringLiteral("ä"));
  const OutputPaneMetrics metrics(Proportional());
  for (const char* const control : {"\xC2\x80", "\xC2\x9F"})
    EXPECT_EQ(metrics.X(control, 2), metrics.X("\uFFFD", 3));
  EXPECT_EQ(metrics.X("\x7F", 1), metrics.X("^?", 2));
}

TEST(PaneRows, CountsStayRightThroughEditsInManyChunks) {
  PaneText pane;
  const OutputPaneMetrics metrics(Fixed());
  OutputPaneRows rows(pane.store(), metrics);
  rows.SetLayout(metrics, 20 * metrics.space_width());
  for (int i = 0; i < 5000; ++i)
    pane.AppendLine(std::string(static_cast<std::size_t>(i % 50), 'x'), kNoColor);
  rows.Sync();
  const std::size_t before = rows.Total();
  // A line of 0 to 20 characters is one row, of 21 to 40 two, of 41 to 49 three.
  EXPECT_EQ(before, 1u + 100u * (21 + 2 * 20 + 3 * 9));
  pane.Insert(pane.store().LineStart(2500), "one\ntwo\n");
  rows.Sync();
  EXPECT_EQ(rows.Total(), before + 2);
  EXPECT_EQ(rows.RowOf(pane.Length()), rows.Total() - 1);
  pane.Erase({pane.store().LineStart(1), pane.Length()});
  rows.Sync();
  EXPECT_EQ(rows.Total(), 2u);
}

}  // namespace
}  // namespace kolvane::pane
