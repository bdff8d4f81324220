#include <QMimeData>
#include <QSignalSpy>
#include <QUrl>

#include "pane_window.h"

namespace kolvane::pane {
namespace {

class PaneMouse : public PaneWindow {
 protected:
  QPoint LeftOf(std::size_t offset) const {
    const QRect rect = pane_.CharacterRect(offset);
    return {rect.left() + 1, rect.center().y()};
  }
  void Press(QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mousePress(pane_.viewport(), Qt::LeftButton, modifiers, point);
  }
  void Release(QPoint point) { QTest::mouseRelease(pane_.viewport(), Qt::LeftButton, {}, point); }
  void Drag(QPoint point) {
    QMouseEvent move(QEvent::MouseMove, point, pane_.viewport()->mapToGlobal(point), Qt::NoButton,
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
  QTest::mouseClick(pane_.viewport(), Qt::LeftButton, {}, QPoint(300, PointOf(1).y()));
  EXPECT_EQ(State(), "abc|/def") << "a click to the right of a line goes to its end";
  QTest::mouseClick(pane_.viewport(), Qt::LeftButton, {}, QPoint(300, 190));
  EXPECT_EQ(State(), "abc/def|") << "a click below the text goes to its end";
}

TEST_F(PaneMouse, DraggingSelects) {
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

TEST_F(PaneMouse, AddedLinesKeepTheSelection) {
  AppendLines(3);
  Press(LeftOf(1));
  AppendLines(1);
  Drag(LeftOf(5));
  AppendLines(2);
  EXPECT_EQ(pane_.selectedText(), QStringLiteral("line"));
  Release(LeftOf(5));
  EXPECT_EQ(pane_.selectedText(), QStringLiteral("line"));
  EXPECT_TRUE(pane_.plainText().endsWith(QStringLiteral("line 3\nline 1\nline 1\nline 2")));
  AppendLines(1);
  EXPECT_EQ(pane_.selectedText(), QStringLiteral("line")) << "also after the button was released";
}

TEST_F(PaneMouse, TheViewDoesNotMoveWhileTheButtonIsDown) {
  AppendLines(100);
  ASSERT_TRUE(IsAtEnd());
  const int value = bar().value();
  const std::size_t top = pane_.OffsetAt(QPoint(0, 0));
  Press(LeftOf(top));
  AppendLines(100);
  EXPECT_EQ(bar().value(), value);
  Release(LeftOf(top));
  pane_.Flush();
  EXPECT_TRUE(IsAtEnd());
}

TEST_F(PaneMouse, AViewScrolledBackStaysThereAfterTheButtonIsReleased) {
  AppendLines(100);
  bar().setValue(10);
  Press(QPoint(5, 5));
  AppendLines(100);
  Release(QPoint(5, 5));
  pane_.Flush();
  EXPECT_EQ(bar().value(), 10);
}

TEST_F(PaneMouse, AButtonReleasedElsewhereEndsTheSelecting) {
  AppendLines(100);
  Press(QPoint(5, 5));
  QFocusEvent gone(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QCoreApplication::sendEvent(&pane_, &gone);
  AppendLines(1);
  EXPECT_TRUE(IsAtEnd());
  EXPECT_EQ(pane_.text().caret(), pane_.text().Length());
}

class PaneDrop : public PaneMouse {
 protected:
  // Whether the drop is accepted.
  bool Drop(const QMimeData& data, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction) {
    QDragEnterEvent enter({5, 5}, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(pane_.viewport(), &enter);
    if (!enter.isAccepted()) return false;
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    QDragMoveEvent move({5, 5}, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(pane_.viewport(), &move);
    EXPECT_TRUE(move.isAccepted());
    QDropEvent drop({5, 5}, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(pane_.viewport(), &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    return drop.isAccepted();
  }

  QSignalSpy dropped_{&pane_, &OutputPane::fileDropped};
};

TEST_F(PaneDrop, AFileIsReported) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/größe.TXT"))});
  EXPECT_TRUE(Drop(data));
  ASSERT_EQ(dropped_.size(), 1);
  EXPECT_EQ(dropped_[0][0].toString(), QStringLiteral("/tmp/größe.TXT"));
  EXPECT_EQ(State(), "|");
}

TEST_F(PaneDrop, AnythingElseIsRefused) {
  QMimeData text;
  text.setText(QStringLiteral("text"));
  QMimeData remote;
  remote.setUrls({QUrl(QStringLiteral("http://example.com/a.txt"))});
  QMimeData several;
  several.setUrls({QUrl::fromLocalFile(QStringLiteral("/a")), QUrl::fromLocalFile(QStringLiteral("/b"))});
  for (const QMimeData* data : {&text, &remote, &several}) EXPECT_FALSE(Drop(*data));
  QMimeData file;
  file.setUrls({QUrl::fromLocalFile(QStringLiteral("/a"))});
  EXPECT_FALSE(Drop(file, Qt::MoveAction)) << "a move would delete the file";
  EXPECT_EQ(dropped_.size(), 0);
}

TEST_F(PaneMouse, AClickWithShiftExtendsTheSelection) {
  SetText("abcdef");
  Click(2);
  Click(5, Qt::ShiftModifier);
  EXPECT_EQ(State(), "ab[cde|]f");
  Click(0, Qt::ShiftModifier);
  EXPECT_EQ(State(), "[|ab]cdef");
}

TEST_F(PaneMouse, ADoubleClickSelectsTheWordAndDraggingWholeWords) {
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

TEST_F(PaneMouse, AThirdClickSelectsTheLine) {
  SetText("one\ntwo words\nthree");
  DoubleClick(5);
  Click(5);
  EXPECT_EQ(State(), "one/[two words/|]three");
  Click(5);
  EXPECT_EQ(pane_.selectedText(), "") << "a fourth click starts again";
}

TEST_F(PaneMouse, DraggingScrollsFromTheFirstPixelOutside) {
  AppendLines(30);
  bar().setValue(3);
  Press(QPoint(5, 5));
  Drag(QPoint(5, 0));
  Drag(QPoint(5, pane_.viewport()->height() - 1));
  EXPECT_EQ(bar().value(), 3);
  Drag(QPoint(5, pane_.viewport()->height()));
  EXPECT_EQ(bar().value(), 4);
  Drag(QPoint(5, -1));
  EXPECT_EQ(bar().value(), 3);
  Release(QPoint(5, 0));
}

TEST_F(PaneMouse, DraggingBelowTheWindowScrolls) {
  AppendLines(30);
  bar().setValue(0);
  Press(LeftOf(1));
  Drag(QPoint(5, pane_.viewport()->height() + 20));
  EXPECT_TRUE(QTest::qWaitFor([this] { return IsAtEnd(); })) << "by itself";
  Release(QPoint(5, pane_.viewport()->height() + 20));
  EXPECT_EQ(pane_.text().anchor(), 1u);
  EXPECT_GT(pane_.text().caret(), pane_.text().store().LineStart(25));
}

TEST_F(PaneMouse, ReleasingTheRightButtonAsksForThePopup) {
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
  EXPECT_FALSE(IsAtEnd());
}

}  // namespace
}  // namespace kolvane::pane
