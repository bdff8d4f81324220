// What the window shows, and when.
#include <QClipboard>
#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QImage>
#include <QSignalSpy>
#include <QTime>
#include <algorithm>
#include <cstring>

#include "gui/paint_counter.h"
#include "gui/pixels.h"
#include "pane/pane_contract.h"
#include "pane_window.h"

namespace kolvane::pane {
namespace {

TEST_F(PaneWindow, IsTheOutputPane) {
  EXPECT_EQ(pane_.objectName(), QStringLiteral("TermWin"));
  EXPECT_EQ(pane_.font().family(), QStringLiteral("Courier New"));
  EXPECT_EQ(pane_.font().pointSize(), 10);
}

// Otherwise every line would be wrapped again when it appears.
TEST_F(PaneWindow, HasAScrollBarAlthoughNothingScrolls) { EXPECT_TRUE(bar().isVisible()); }

TEST_F(PaneWindow, PlainTextHasEveryLineAtOnce) {
  pane_.AppendLine(LineKind::kAnswer, "a");
  pane_.AppendLine(LineKind::kCommand, "ä\r\nb");
  EXPECT_EQ(pane_.property("plainText").toString(), QStringLiteral("\na\nä\nb"));
  EXPECT_EQ(pane_.property("selectedText").toString(), QString());
}

TEST_F(PaneWindow, PlainTextIsWritable) {
  pane_.AppendLine(LineKind::kCommand, "red");
  pane_.setProperty("plainText", QStringLiteral("new\r\ntext"));
  EXPECT_EQ(State(), "|new/text");
  EXPECT_EQ(Colors(), "0:new/text");
}

TEST_F(PaneWindow, EveryCharacterCanBeReadBack) {
  const QString text = QStringLiteral("\uFEFFa") + QChar(0) + QStringLiteral("\x1B\x7F\u2028\U0001F600ß");
  pane_.setPlainText(text);
  EXPECT_EQ(pane_.plainText(), text);
}

TEST_F(PaneWindow, AHundredThousandLinesCanBeReadBack) {
  constexpr int kLines = 100000;
  AppendLines(kLines);
  EXPECT_EQ(pane_.plainText().count(u'\n'), kLines);
  EXPECT_TRUE(pane_.plainText().endsWith(QStringLiteral("\nline 99999\nline 100000")));
  EXPECT_GE(bar().maximum(), kLines - bar().pageStep());
  EXPECT_TRUE(IsAtEnd());
}

TEST_F(PaneWindow, FollowsNewLinesOnlyAtTheEnd) {
  AppendLines(100);
  EXPECT_TRUE(IsAtEnd());
  bar().setValue(10);
  AppendLines(100);
  EXPECT_EQ(bar().value(), 10);
  EXPECT_FALSE(IsAtEnd());
  bar().setValue(bar().maximum());
  AppendLines(1);
  EXPECT_TRUE(IsAtEnd());
}

TEST_F(PaneWindow, TheScrollBarFollowsByItself) {
  for (int i = 0; i < 100; ++i) pane_.AppendLine(LineKind::kAnswer, "line");
  EXPECT_TRUE(QTest::qWaitFor([this] { return bar().maximum() > 0 && IsAtEnd(); }));
}

TEST_F(PaneWindow, ClearingScrollsToTheTop) {
  AppendLines(100);
  pane_.Clear();
  EXPECT_EQ(State(), "|");
  EXPECT_EQ(bar().maximum(), 0);
  AppendLines(100);
  EXPECT_TRUE(IsAtEnd());
}

TEST_F(PaneWindow, ALineIsShownInTheColorOfItsKind) {
  pane_.AppendLine(LineKind::kCommand, "*IDN?");
  pane_.AppendLine(LineKind::kAnswer, "answer");
  pane_.AppendText(LineKind::kTime, "(dt = 1 ms)\r\n", 1);
  EXPECT_EQ(State(), "/*IDN?/answer(dt = 1 ms)|/");
  EXPECT_EQ(Colors(), "0:/ 255:*IDN? 0:/answer(dt = 1 ms)/");
}

using gui::Pixels;

class PanePicture : public PaneWindow {
 protected:
  // Strokes thick enough to have pixels of the full colour.
  void SetUp() override {
    PaneWindow::SetUp();
    pane_.setFont(QFont(QStringLiteral("Courier New"), 20, QFont::Bold));
  }
  QImage Picture() { return pane_.viewport()->grab().toImage(); }
  QRect RowOf(std::size_t offset) const {
    const QRect rect = pane_.CharacterRect(offset);
    return {0, rect.top(), pane_.viewport()->width(), rect.height()};
  }
};

TEST_F(PanePicture, EachLineIsPaintedInItsColor) {
  pane_.AppendLine(LineKind::kCommand, "MMMM");
  pane_.AppendLine(LineKind::kAnswer, "MMMM");
  const QImage image = Picture();
  EXPECT_GT(Pixels(image, RowOf(1), Qt::red), 10);
  EXPECT_EQ(Pixels(image, RowOf(6), Qt::red), 0);
  EXPECT_GT(Pixels(image, RowOf(6), pane_.textColor()), 10);
}

TEST_F(PanePicture, AColorWithinALineStartsAtItsCharacterInLongTextsToo) {
  PaneText text;
  for (int i = 0; i < 5000; ++i) text.AppendLine("MMMM", base::kNoColor);
  const std::size_t end = text.Length();
  text.Select(end - 2, end);
  text.SetSelectionColor(base::kCommandColor);
  text.MoveTo(end);
  pane_.SetText(std::move(text));
  const QImage image = Picture();
  EXPECT_EQ(Pixels(image, pane_.CharacterRect(end - 3), Qt::red), 0);
  EXPECT_GT(Pixels(image, pane_.CharacterRect(end - 2), Qt::red), 10);
  EXPECT_GT(Pixels(image, pane_.CharacterRect(end - 1), Qt::red), 10);
}

TEST_F(PanePicture, BoldTextIsHeavierInTheSamePosition) {
  pane_.setFont(QFont(QStringLiteral("Courier New"), 20));
  PaneText text;
  for (const Color color : {base::kNoColor, base::kBold, base::kCommandColor | base::kBold})
    text.AppendLine("lllll.", color);
  pane_.SetText(std::move(text));
  const QImage image = Picture();
  const auto ink = [&](std::size_t offset) {
    int sum = 0;
    for (int y = RowOf(offset).top(); y <= RowOf(offset).bottom(); ++y) {
      for (int x = 0; x < image.width(); ++x) sum += 255 - image.pixelColor(x, y).green();
    }
    return sum;
  };
  EXPECT_GT(ink(8), ink(1) * 5 / 4);
  EXPECT_GT(ink(15), ink(1) * 5 / 4);
  EXPECT_GT(Pixels(image, RowOf(15), Qt::red), 10);
  EXPECT_EQ(pane_.CharacterRect(6).left(), pane_.CharacterRect(13).left());
}

TEST_F(PanePicture, TextWithoutAColorFollowsThePanesOwn) {
  pane_.AppendLine(LineKind::kAnswer, "MMMM");
  pane_.setTextColor(Qt::blue);
  pane_.setBackgroundColor(Qt::yellow);
  const QImage image = Picture();
  EXPECT_GT(Pixels(image, RowOf(1), Qt::blue), 10);
  EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1), QColor(Qt::yellow));
  EXPECT_EQ(pane_.textColor(), QColor(Qt::blue));
  EXPECT_EQ(pane_.backgroundColor(), QColor(Qt::yellow));
}

TEST_F(PanePicture, TheLastOfManyLinesLooksLikeTheFirst) {
  const std::string line(20, 'M');
  for (int i = 0; i < 5000; ++i) pane_.AppendLine(LineKind::kAnswer, line);
  pane_.Flush();
  const auto ink = [&](std::size_t offset) {
    pane_.Select(offset, offset);
    return Pixels(Picture(), RowOf(offset), pane_.textColor());
  };
  EXPECT_GT(ink(1), 10);
  EXPECT_EQ(ink(4999 * (line.size() + 1) + 1), ink(1));
}

TEST_F(PanePicture, ControlCharactersArePaintedAsTerminalsDo) {
  const auto painted = [this](const char* text) {
    SetText(text);
    pane_.Select(0, 0);
    return Picture();
  };
  EXPECT_EQ(painted("a\x01z\x1F\x7F"), painted("a^Az^_^?"));
}

TEST_F(PanePicture, AnEmptyPaneShowsItsPlaceholder) {
  pane_.setTextColor(Qt::black);
  pane_.setBackgroundColor(Qt::white);
  pane_.clearFocus();
  const QImage empty = Picture();
  pane_.setPlaceholderText(QStringLiteral("MMMM"));
  EXPECT_NE(Picture(), empty);
  EXPECT_EQ(pane_.plainText(), QString());
  EXPECT_EQ(pane_.property("placeholderText").toString(), QStringLiteral("MMMM"));
  SetText("\n");
  EXPECT_EQ(Picture(), empty);
  pane_.clear();
  EXPECT_NE(Picture(), empty);
}

TEST_F(PanePicture, AFrameShowsTheFocus) {
  pane_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&pane_));
  const QColor highlight = pane_.palette().color(QPalette::Highlight);
  const auto corner = [this] { return pane_.grab().toImage().pixelColor(0, 0); };
  pane_.setFocus();
  EXPECT_EQ(corner(), highlight);
  pane_.clearFocus();
  EXPECT_NE(corner(), highlight);
}

TEST_F(PanePicture, TheSelectionHasItsOwnBackground) {
  SetText("abc\ndef");
  pane_.Select(1, 5);
  const QImage image = Picture();
  const QColor background = pane_.palette().color(QPalette::Highlight);
  EXPECT_EQ(Pixels(image, pane_.CharacterRect(0), background), 0);
  EXPECT_GT(Pixels(image, pane_.CharacterRect(1), background), 10);
  EXPECT_GT(Pixels(image, pane_.CharacterRect(3), background), 10) << "the selected line break";
  EXPECT_GT(Pixels(image, pane_.CharacterRect(4), background), 10);
  EXPECT_EQ(Pixels(image, pane_.CharacterRect(6), background), 0);
}

TEST_F(PaneWindow, AWindowOfAnotherWidthKeepsTheTextAtItsTop) {
  for (int i = 0; i < 100; ++i)
    pane_.AppendLine(LineKind::kAnswer, std::string(100, static_cast<char>('a' + i % 26)));
  pane_.Flush();
  bar().setValue(bar().maximum() / 2);
  const std::size_t top = pane_.RowAround(pane_.OffsetAt({0, 0})).begin;
  pane_.resize(300, 200);
  const std::size_t now = pane_.RowAround(pane_.OffsetAt({0, 0})).begin;
  EXPECT_LE(now, top);
  EXPECT_GT(now + 100, top);
  EXPECT_EQ(pane_.RowAround(top).begin, now);
}

TEST_F(PaneWindow, APaintAsksForNoFurtherPaint) {
  gui::PaintCounter counter;
  AppendLines(100);
  pane_.viewport()->installEventFilter(&counter);
  pane_.viewport()->update();
  QElapsedTimer since;
  since.start();
  for (int turn = 0; turn < 1000; ++turn) {
    pane_.AppendLine(LineKind::kAnswer, "line");
    QCoreApplication::processEvents();
  }
  // One for the update and a few for each frame of 33 ms; a paint that requests another one would cause one
  // each turn.
  EXPECT_LE(counter.paints, 10 + since.elapsed() / 10);
}

TEST_F(PaneWindow, FlushedLinesArePaintedAlsoWhereNothingScrolls) {
  gui::PaintCounter counter;
  QCoreApplication::processEvents();
  pane_.viewport()->installEventFilter(&counter);
  pane_.AppendLine(LineKind::kAnswer, "line");
  pane_.Flush();
  EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }));
}

TEST_F(PaneWindow, AnotherFontWrapsDifferently) {
  AppendLines(100);
  const int before = bar().pageStep();
  pane_.setFont(QFont(QStringLiteral("Courier New"), 20));
  EXPECT_LT(bar().pageStep(), before);
  EXPECT_TRUE(IsAtEnd());
}

TEST_F(PaneWindow, AMebibyteInOneLineIsWrappedAndShown) {
  pane_.AppendLine(LineKind::kAnswer, std::string(1 << 20, 'x'));
  pane_.Flush();
  EXPECT_GT(bar().maximum(), 10000);
  EXPECT_TRUE(IsAtEnd());
  EXPECT_FALSE(pane_.viewport()->grab().isNull());
  pane_.EnsureVisible(500000);
  EXPECT_TRUE(pane_.viewport()->rect().contains(PointOf(500000)));
}

TEST_F(PaneWindow, EachCharacterHasItsWidth) {
  pane_.setFont(QFont(QStringLiteral("DejaVu Sans"), 20));
  for (const char* character : {"i", "W", "ü", "¼", "Ω", "Щ", "€", "漢"}) {
    SetText((std::string(character) + "x").c_str());
    const int width = pane_.CharacterRect(std::strlen(character)).left() - pane_.CharacterRect(0).left();
    const qreal expected = QFontMetricsF(pane_.font()).horizontalAdvance(QString::fromUtf8(character));
    EXPECT_NEAR(width, expected, 1) << character;
  }
}

TEST_F(PaneWindow, ZoomsByKeysAndWheel) {
  const double points = pane_.font().pointSizeF();
  Key(Qt::Key_Plus, Qt::ControlModifier);
  Key(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
  EXPECT_EQ(pane_.zoom(), 2);
  EXPECT_GT(pane_.font().pointSizeF(), points);
  Key(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(pane_.zoom(), 1);
  Key(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(pane_.font().pointSizeF(), points);
  const auto turn = [this](int angle, Qt::KeyboardModifiers modifiers, int sideways = 0) {
    QWheelEvent event(QPointF(5, 5), pane_.mapToGlobal(QPointF(5, 5)), {}, {sideways, angle}, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(pane_.viewport(), &event);
  };
  turn(120, Qt::ControlModifier);
  EXPECT_EQ(pane_.zoom(), 1);
  turn(120, Qt::NoModifier);
  EXPECT_EQ(pane_.zoom(), 1);
  turn(0, Qt::ControlModifier, 120);
  EXPECT_EQ(pane_.zoom(), 1);
  turn(-120, Qt::ControlModifier);
  EXPECT_EQ(pane_.font().pointSizeF(), points);
}

TEST_F(PaneWindow, ANewFontKeepsTheZoom) {
  pane_.SetZoom(3);
  QFont font = pane_.font();
  font.setPointSizeF(20);
  pane_.SetBaseFont(font);
  EXPECT_GT(pane_.font().pointSizeF(), 20);
  pane_.SetZoom(0);
  EXPECT_EQ(pane_.font().pointSizeF(), 20);
}

TEST_F(PaneWindow, AddedLinesKeepWhatIsSelected) {
  SetText("one two");
  pane_.Select(0, 3);
  pane_.AppendLine(LineKind::kAnswer, "three");
  EXPECT_EQ(pane_.selectedText(), "one");
  pane_.Select(2, 2);
  pane_.AppendLine(LineKind::kAnswer, "four");
  EXPECT_EQ(pane_.text().caret(), pane_.text().Length()) << "without a selection the caret goes to the end";
}

TEST_F(PaneWindow, TextInsertedAfterAddedLinesReplacesNothing) {
  const auto add_line = [this] {
    pane_.setPlainText(QStringLiteral("old block"));
    pane_.Select(0, 3);
    pane_.AppendLine(LineKind::kAnswer, "new");
  };
  add_line();
  pane_.InsertComment(QStringLiteral("comment"));
  EXPECT_EQ(State(), "old block/new/comment/|");
  add_line();
  QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
  pane_.paste();
  EXPECT_EQ(State(), "old block/newpasted|");
  add_line();
  QTest::keyClicks(&pane_, QStringLiteral("x"));
  EXPECT_EQ(State(), "old block/newx|");
  add_line();
  pane_.AppendText(LineKind::kTime, "(dt = 1 ms)\r\n", 1);
  QTest::keyClicks(&pane_, QStringLiteral("x"));
  EXPECT_EQ(State(), "old block/new(dt = 1 ms)x|/");
}

TEST_F(PaneWindow, TheRememberedBlockIsThatOfTheAddedLines) {
  SetText("old block");
  pane_.Select(0, 3);
  pane_.AppendLine(LineKind::kAnswer, "new");
  pane_.SetRememberedBlockLength(3);
  QTest::keyClick(&pane_, Qt::Key_Right);
  EXPECT_EQ(pane_.selectedText(), "new");
}

TEST_F(PaneWindow, WhatStaysSelectedCanBeDeletedAndReplacedOnceItIsSelectedAgain) {
  SetText("old block");
  pane_.Select(0, 3);
  pane_.AppendLine(LineKind::kAnswer, "new");
  pane_.deleteSelection();
  EXPECT_EQ(State(), "| block/new");
  pane_.Select(1, 6);
  pane_.AppendLine(LineKind::kAnswer, "newer");
  pane_.Select(1, 6);
  QTest::keyClicks(&pane_, QStringLiteral("x"));
  EXPECT_EQ(State(), " x|/new/newer");
}

TEST_F(PaneWindow, ThePointerOverItIsThatOfText) {
  EXPECT_EQ(pane_.viewport()->cursor().shape(), Qt::IBeamCursor);
}

TEST_F(PaneWindow, TheMarginShowsTheTimeOfEachLine) {
  const int width = pane_.viewport()->width();
  pane_.AppendLine(LineKind::kAnswer, "a");
  pane_.setProperty("timeStamps", true);
  EXPECT_LT(pane_.viewport()->width(), width);
  QString time;
  QMetaObject::invokeMethod(&pane_, "lineTime", Q_RETURN_ARG(QString, time), Q_ARG(int, 1));
  EXPECT_TRUE(QTime::fromString(time, "HH:mm:ss.zzz").isValid()) << time.toStdString();
  EXPECT_EQ(pane_.lineTime(0), "") << "nothing has been sent before the first break";
  EXPECT_EQ(pane_.lineTime(7), "");
  pane_.selectAll();
  EXPECT_EQ(pane_.SelectedTextWithTimes().section(u'\n', 1, 1), time + " a");
  const QImage shown = pane_.grab().toImage();
  const QRect below(2, pane_.viewport()->y() + 2 * pane_.fontMetrics().height(), 40, 40);
  EXPECT_EQ(gui::Pixels(shown, below, shown.pixelColor(below.center())), 40 * 40) << "no time without a line";
  pane_.setProperty("timeStamps", false);
  EXPECT_EQ(pane_.viewport()->width(), width);
}

TEST_F(PaneWindow, AWrappedLineHasItsTimeOnlyBesideItsFirstRow) {
  pane_.setTimeStamps(true);
  pane_.AppendLine(LineKind::kAnswer, std::string(200, 'x'));
  const QImage shown = pane_.grab().toImage();
  const int row_height = pane_.CharacterRect(150).height();
  const int first_row = pane_.viewport()->y() + pane_.CharacterRect(1).top();
  const QRect margin(2, first_row, pane_.viewport()->x() - 4, row_height);
  const auto has_text = [&](const QRect& part) {
    return gui::Pixels(shown, part, pane_.palette().color(QPalette::Base)) < part.width() * part.height();
  };
  EXPECT_TRUE(has_text(margin));
  EXPECT_EQ(gui::Pixels(shown, margin, pane_.textColor()), 0) << "paler than the text";
  EXPECT_FALSE(has_text(margin.translated(0, row_height)));
}

class WindowCase {
 public:
  Pane& pane() { return pane_; }
  std::string Text() const { return pane_.text().Text("\n").substr(1); }

 private:
  OutputPane pane_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Window, PaneContract, WindowCase);

}  // namespace
}  // namespace kolvane::pane
