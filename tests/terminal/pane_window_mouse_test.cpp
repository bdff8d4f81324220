#include <QSignalSpy>

#include "pane_window.h"

namespace kolvane::terminal {
namespace {

class PaneMouse : public PaneWindow {
 protected:
  QPoint LeftOf(std::size_t offset) const {
    const QRect place = pane_.CharacterRect(offset);
    return {place.left() + 1, place.center().y()};
  }
  void Press(QPoint place, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mousePress(pane_.viewport(), Qt::LeftButton, modifiers, place);
  }
  void Release(QPoint place) { QTest::mouseRelease(pane_.viewport(), Qt::LeftButton, {}, place); }
  void Drag(QPoint place) {
    QMouseEvent move(QEvent::MouseMove, place, pane_.viewport()->mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(pane_.viewport(), &move);
  }
  void Click(std::size_t offset, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Press(LeftOf(offset), modifiers);
    Release(LeftOf(offset));
  }
  void DoubleClick(std::size_t offset) {
    QTest::mouseDClick(pane_.viewport(), Qt::LeftButton, {}, LeftOf(offset));
  }
};

TEST_F(PaneMouse, AClickSetsTheCaret) {
  SetText("abc\ndef");
  Click(5);
  EXPECT_EQ(State(), "abc/d|ef");
  QTest::mouseClick(pane_.viewport(), Qt::LeftButton, {}, QPoint(300, PlaceOf(1).y()));
  EXPECT_EQ(State(), "abc|/def") << "beside the line is its end";
  QTest::mouseClick(pane_.viewport(), Qt::LeftButton, {}, QPoint(300, 190));
  EXPECT_EQ(State(), "abc/def|") << "below the text is its end";
}

TEST_F(PaneMouse, DraggingMarks) {
  SetText("abc\ndef");
  Press(LeftOf(1));
  Drag(LeftOf(6));
  EXPECT_EQ(State(), "a[bc/de|]f");
  Drag(LeftOf(0));
  EXPECT_EQ(State(), "[|a]bc/def");
  Release(LeftOf(0));
  Drag(LeftOf(0));
  EXPECT_EQ(State(), "[|a]bc/def");
}

TEST_F(PaneMouse, AClickWithShiftStretchesTheSelection) {
  SetText("abcdef");
  Click(2);
  Click(5, Qt::ShiftModifier);
  EXPECT_EQ(State(), "ab[cde|]f");
  Click(0, Qt::ShiftModifier);
  EXPECT_EQ(State(), "[|ab]cdef");
}

TEST_F(PaneMouse, ADoubleClickMarksTheWordAndDraggingWholeWords) {
  SetText("one two three four");
  DoubleClick(5);
  EXPECT_EQ(State(), "one [two|] three four");
  Press(LeftOf(5));
  QTest::mouseRelease(pane_.viewport(), Qt::LeftButton, {}, LeftOf(5));
  DoubleClick(5);
  Drag(LeftOf(9));
  EXPECT_EQ(State(), "one [two three|] four");
  Drag(LeftOf(1));
  EXPECT_EQ(State(), "[|one two] three four");
  Release(LeftOf(1));
}

TEST_F(PaneMouse, AThirdClickMarksTheLine) {
  SetText("one\ntwo words\nthree");
  DoubleClick(5);
  Click(5);
  EXPECT_EQ(State(), "one/[two words/|]three");
}

TEST_F(PaneMouse, DraggingBelowTheWindowScrolls) {
  AppendLines(30);
  bar().setValue(0);
  Press(LeftOf(1));
  Drag(QPoint(5, pane_.viewport()->height() + 20));
  EXPECT_TRUE(QTest::qWaitFor([this] { return StandsAtEnd(); })) << "by itself";
  Release(QPoint(5, pane_.viewport()->height() + 20));
  EXPECT_EQ(pane_.text().anchor(), 1u);
  EXPECT_GT(pane_.text().caret(), pane_.text().store().LineStart(25));
}

TEST_F(PaneMouse, LettingTheRightButtonGoAsksForThePopup) {
  SetText("abcdef");
  pane_.Select(1, 3);
  QSignalSpy popups(&pane_, &OutputPane::popupRequested);
  QTest::mousePress(pane_.viewport(), Qt::RightButton, {}, QPoint(50, 60));
  EXPECT_EQ(popups.count(), 0);
  QTest::mouseRelease(pane_.viewport(), Qt::RightButton, {}, QPoint(50, 60));
  ASSERT_EQ(popups.count(), 1);
  EXPECT_EQ(popups.first().first().toPoint(), pane_.viewport()->mapToGlobal(QPoint(50, 60)));
  EXPECT_EQ(State(), "a[bc|]def") << "the selection stays";
}

TEST_F(PaneMouse, OtherButtonsAskForNothing) {
  SetText("abcdef");
  QSignalSpy popups(&pane_, &OutputPane::popupRequested);
  QTest::mouseClick(pane_.viewport(), Qt::MiddleButton, {}, QPoint(20, 5));
  QTest::mouseDClick(pane_.viewport(), Qt::MiddleButton, {}, QPoint(20, 5));
  QTest::mouseClick(pane_.viewport(), Qt::LeftButton, {}, LeftOf(0));
  EXPECT_EQ(popups.count(), 0);
  EXPECT_EQ(State(), "|abcdef");
}

TEST_F(PaneMouse, TheWheelScrolls) {
  AppendLines(100);
  const int before = bar().value();
  QWheelEvent wheel(QPointF(50, 50), pane_.viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, 120},
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(pane_.viewport(), &wheel);
  EXPECT_LT(bar().value(), before);
  AppendLines(1);
  EXPECT_FALSE(StandsAtEnd());
}

}  // namespace
}  // namespace kolvane::terminal
