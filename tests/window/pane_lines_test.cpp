#include "window/print_page.h"

#include <gtest/gtest.h>

#include "pane/pane_text.h"

namespace kolvane::window {
namespace {

/// Lines joined by "/", each run as "start+length:#colour", with "b" before it if it is bold.
QString Dump(const PrintSource& source) {
  QStringList lines;
  for (std::size_t i = 0; i < source.LineCount(); ++i) {
    const PrintLine line = source.Line(i);
    QString out = line.text;
    for (const PrintRun& run : line.runs)
      out += QStringLiteral(" %1+%2:%3%4")
                 .arg(run.begin)
                 .arg(run.length)
                 .arg(QLatin1String(run.bold ? "b" : ""), run.color.isValid() ? run.color.name() : QString());
    lines << out;
  }
  return lines.join('/');
}

class PaneLinesTest : public testing::Test {
 protected:
  QString WholeText() { return Dump(PaneLines(text_.store(), {0, text_.Length()})); }

  pane::PaneText text_;
};

TEST_F(PaneLinesTest, AnEmptyTextIsOneEmptyLine) { EXPECT_EQ(WholeText(), ""); }

TEST_F(PaneLinesTest, KeepsColours) {
  text_.AppendLine("größer", base::kCommandColor);
  text_.AppendLine("answer", base::kNoColor);
  text_.AppendLine("note", base::kCommentColor);
  EXPECT_EQ(WholeText(), "/größer 0+6:#ff0000/answer/note 0+4:#008000");
}

TEST_F(PaneLinesTest, KeepsBold) {
  text_.AppendLine("title", base::kBold);
  text_.AppendLine("$STOP", base::kBold | 0xFF0000);
  EXPECT_EQ(WholeText(), "/title 0+5:b/$STOP 0+5:b#0000ff");
}

TEST_F(PaneLinesTest, ALineMayHoldSeveralColours) {
  text_.SetText("abcdef");
  text_.Select(2, 4);
  text_.SetSelectionColor(255);
  EXPECT_EQ(WholeText(), "abcdef 2+2:#ff0000");
}

TEST_F(PaneLinesTest, ReadsARangeOfTheText) {
  text_.AppendLine("first", base::kCommandColor);
  text_.AppendLine("second", base::kNoColor);
  EXPECT_EQ(Dump(PaneLines(text_.store(), {3, 10})), "rst 0+3:#ff0000/sec");
  EXPECT_EQ(Dump(PaneLines(text_.store(), {7, 7})), "");
  EXPECT_EQ(Dump(PaneLines(text_.store(), {1, 3})), "fi 0+2:#ff0000")
      << "nothing of the lines after the range";
}

TEST_F(PaneLinesTest, ShowsControlCharactersAsThePaneDoes) {
  text_.SetText(std::string_view("a\0\x1B\tb", 5));
  EXPECT_EQ(WholeText(), "a^@^[\tb");
}

TEST_F(PaneLinesTest, ATextThatBecomesShorterHasFewerLines) {
  for (int i = 0; i < 5; ++i) text_.AppendLine("x", base::kNoColor);
  const PaneLines late(text_.store(), {8, 10});
  const PaneLines all(text_.store(), {0, text_.Length()});
  text_.SetText("short");
  EXPECT_EQ(late.LineCount(), 0u);
  EXPECT_EQ(all.LineCount(), 1u);
}

}  // namespace
}  // namespace kolvane::window
