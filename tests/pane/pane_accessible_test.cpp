#include "pane/ui/output_pane_accessible.h"

#include <QAccessible>
#include <memory>
#include <vector>

#include "pane_window.h"

namespace kolvane::pane {
namespace {

class PaneAccessible : public PaneWindow {
 protected:
  void SetUp() override {
    PaneWindow::SetUp();
    interface_ = QAccessible::queryAccessibleInterface(&pane_);
    ASSERT_NE(interface_, nullptr);
    text_ = interface_->textInterface();
    ASSERT_NE(text_, nullptr);
  }

  using Ask = QString (QAccessibleTextInterface::*)(int, QAccessible::TextBoundaryType, int*, int*) const;
  std::string Piece(Ask ask, int offset, QAccessible::TextBoundaryType type) {
    int begin = -7;
    int end = -7;
    const QString text = (text_->*ask)(offset, type, &begin, &end);
    const std::string shown = QString(text).replace(u'\n', u'/').toStdString();
    return std::to_string(begin) + "-" + std::to_string(end) + ":" + shown;
  }
  std::string At(int offset, QAccessible::TextBoundaryType type) {
    return Piece(&QAccessibleTextInterface::textAtOffset, offset, type);
  }
  std::string Before(int offset, QAccessible::TextBoundaryType type) {
    return Piece(&QAccessibleTextInterface::textBeforeOffset, offset, type);
  }
  std::string After(int offset, QAccessible::TextBoundaryType type) {
    return Piece(&QAccessibleTextInterface::textAfterOffset, offset, type);
  }

  QAccessibleInterface* interface_ = nullptr;
  QAccessibleTextInterface* text_ = nullptr;
};

TEST_F(PaneAccessible, IsAnEditableText) {
  EXPECT_EQ(interface_->role(), QAccessible::EditableText);
  EXPECT_EQ(interface_->object(), &pane_);
  EXPECT_TRUE(interface_->state().editable);
  EXPECT_TRUE(interface_->state().multiLine);
  EXPECT_TRUE(interface_->state().selectableText);
  EXPECT_TRUE(interface_->state().focusable);
  EXPECT_NE(interface_->editableTextInterface(), nullptr);
  pane_.setReadOnly(true);
  EXPECT_TRUE(interface_->state().readOnly);
  EXPECT_FALSE(interface_->state().editable);
  EXPECT_EQ(interface_->editableTextInterface(), nullptr);
}

TEST_F(PaneAccessible, CountsUtf16UnitsWithOneForABreak) {
  pane_.AppendLine(LineKind::kAnswer, "ä\U0001F600b");
  EXPECT_EQ(text_->characterCount(), 5);
  EXPECT_EQ(text_->text(0, 5), QStringLiteral("\nä\U0001F600b"));
  EXPECT_EQ(text_->text(4, 5), QStringLiteral("b"));
  EXPECT_EQ(text_->text(1, -1), QStringLiteral("ä\U0001F600b"));
  EXPECT_EQ(text_->text(5, 2), QString());
  EXPECT_EQ(text_->cursorPosition(), 5);
  EXPECT_EQ(interface_->text(QAccessible::Value), QStringLiteral("\nä\U0001F600b"));
}

TEST_F(PaneAccessible, SetsCaretAndSelection) {
  SetText("abcdef");
  text_->setCursorPosition(2);
  EXPECT_EQ(State(), "ab|cdef");
  EXPECT_EQ(text_->selectionCount(), 0);
  text_->addSelection(1, 4);
  EXPECT_EQ(State(), "a[bcd|]ef");
  int begin = -1;
  int end = -1;
  text_->selection(0, &begin, &end);
  EXPECT_EQ(text_->selectionCount(), 1);
  EXPECT_EQ(begin, 1);
  EXPECT_EQ(end, 4);
  text_->selection(1, &begin, &end);
  EXPECT_EQ(begin, 0) << "there is only one";
  EXPECT_EQ(end, 0);
  text_->setSelection(0, 2, 3);
  EXPECT_EQ(State(), "ab[c|]def");
  text_->removeSelection(0);
  EXPECT_EQ(State(), "abc|def");
}

TEST_F(PaneAccessible, EditsThroughTheEditableText) {
  SetText("abcdef");
  QAccessibleEditableTextInterface* edit = interface_->editableTextInterface();
  edit->insertText(3, QStringLiteral("ü"));
  EXPECT_EQ(State(), "|abcüdef");
  edit->deleteText(0, 2);
  EXPECT_EQ(State(), "|cüdef");
  edit->replaceText(1, 3, QStringLiteral("\n"));
  EXPECT_EQ(State(), "|c/ef");
  interface_->setText(QAccessible::Value, QStringLiteral("new"));
  EXPECT_EQ(State(), "|new");
}

TEST_F(PaneAccessible, AnEmptyPaneIsDescribedByItsPlaceholder) {
  pane_.setPlaceholderText(QStringLiteral("start here"));
  EXPECT_EQ(interface_->text(QAccessible::Description), QStringLiteral("start here"));
  EXPECT_EQ(interface_->text(QAccessible::Value), QString());
  SetText("a");
  EXPECT_EQ(interface_->text(QAccessible::Description), QString());
}

TEST_F(PaneAccessible, ReportsColorsAndFont) {
  pane_.setTextColor(Qt::black);
  pane_.setBackgroundColor(Qt::white);
  pane_.AppendLine(LineKind::kCommand, "*IDN?");
  pane_.AppendLine(LineKind::kAnswer, "answer");
  int begin = -1;
  int end = -1;
  EXPECT_EQ(text_->attributes(3, &begin, &end),
            QStringLiteral("color:rgb(255,0,0);background-color:rgb(255,255,255);font-family:\"Courier New\";"
                           "font-size:10pt;font-weight:normal;font-style:normal;"));
  EXPECT_EQ(begin, 1);
  EXPECT_EQ(end, 6);
  EXPECT_TRUE(text_->attributes(8, &begin, &end).startsWith(QStringLiteral("color:rgb(0,0,0);")));
  EXPECT_EQ(begin, 6);
  EXPECT_EQ(end, 13);
  pane_.InsertComment(QStringLiteral("c"));
  EXPECT_TRUE(text_->attributes(14, &begin, &end).startsWith(QStringLiteral("color:rgb(0,128,0);")));
}

TEST_F(PaneAccessible, ReportsWhatIsBold) {
  pane_.setTextColor(Qt::black);
  PaneText text;
  text.AppendLine("bold", base::kBold);
  text.AppendLine("plain", base::kNoColor);
  pane_.SetText(std::move(text));
  int begin = -1;
  int end = -1;
  const QString attributes = text_->attributes(2, &begin, &end);
  EXPECT_TRUE(attributes.startsWith(QStringLiteral("color:rgb(0,0,0);")));
  EXPECT_TRUE(attributes.contains(QStringLiteral("font-weight:bold;")));
  EXPECT_EQ(begin, 1);
  EXPECT_EQ(end, 5);
  EXPECT_TRUE(text_->attributes(6, &begin, &end).contains(QStringLiteral("font-weight:normal;")));
}

TEST_F(PaneAccessible, ReportsWhereCharactersAre) {
  SetText("abc\ndef");
  const QRect rect = text_->characterRect(5);
  EXPECT_EQ(rect.topLeft(), pane_.viewport()->mapToGlobal(pane_.CharacterRect(5).topLeft()));
  EXPECT_EQ(text_->offsetAtPoint(rect.topLeft() + QPoint(1, 1)), 5);
  EXPECT_EQ(text_->offsetAtPoint(pane_.mapToGlobal(QPoint(-10, -10))), -1);
  EXPECT_GT(text_->characterRect(5).left(), text_->characterRect(4).left());
  EXPECT_GT(text_->characterRect(4).top(), text_->characterRect(0).top());
}

TEST_F(PaneAccessible, ScrollsToAPosition) {
  AppendLines(100);
  text_->scrollToSubstring(0, 3);
  EXPECT_EQ(bar().value(), 0);
}

TEST_F(PaneAccessible, ReportsThePieceAroundAPosition) {
  SetText("one two\nthree\n");
  EXPECT_EQ(At(4, QAccessible::CharBoundary), "4-5:t");
  EXPECT_EQ(At(4, QAccessible::WordBoundary), "4-7:two");
  EXPECT_EQ(At(7, QAccessible::WordBoundary), "7-8:/");
  EXPECT_EQ(At(4, QAccessible::LineBoundary), "0-8:one two/");
  EXPECT_EQ(At(4, QAccessible::ParagraphBoundary), "0-8:one two/");
  EXPECT_EQ(At(4, QAccessible::NoBoundary), "0-14:one two/three/");
  EXPECT_EQ(At(14, QAccessible::LineBoundary), "-1--1:");
}

TEST_F(PaneAccessible, ReportsThePiecesBeforeAndAfterAPosition) {
  SetText("one two\nthree\n");
  EXPECT_EQ(Before(4, QAccessible::CharBoundary), "3-4: ");
  EXPECT_EQ(After(4, QAccessible::CharBoundary), "5-6:w");
  EXPECT_EQ(Before(4, QAccessible::WordBoundary), "3-4: ");
  EXPECT_EQ(After(4, QAccessible::WordBoundary), "7-8:/");
  EXPECT_EQ(Before(9, QAccessible::LineBoundary), "0-8:one two/");
  EXPECT_EQ(After(1, QAccessible::LineBoundary), "8-14:three/");
  EXPECT_EQ(Before(0, QAccessible::LineBoundary), "-1--1:");
  EXPECT_EQ(After(9, QAccessible::LineBoundary), "-1--1:");
}

TEST_F(PaneAccessible, WrappedLinesAreTheRowsOfTheWindow) {
  pane_.setPlainText(QString(100, u'x'));
  const int second = pane_.ToUnits(pane_.RowAround(0).end);
  EXPECT_EQ(At(0, QAccessible::LineBoundary),
            "0-" + std::to_string(second) + ":" + std::string(static_cast<std::size_t>(second), 'x'));
  EXPECT_EQ(At(0, QAccessible::ParagraphBoundary), "0-100:" + std::string(100, 'x'));
}

class RecordingAnnouncer : public PaneAnnouncer {
 public:
  std::vector<std::string> sent;

 protected:
  void Send(QAccessibleEvent& event) override {
    if (event.type() == QAccessible::TextInserted) {
      const auto& inserted = static_cast<QAccessibleTextInsertEvent&>(event);
      Add("+", inserted.changePosition(), inserted.textInserted());
    } else if (event.type() == QAccessible::TextRemoved) {
      const auto& removed = static_cast<QAccessibleTextRemoveEvent&>(event);
      Add("-", removed.changePosition(), removed.textRemoved());
    } else if (event.type() == QAccessible::TextUpdated) {
      const auto& updated = static_cast<QAccessibleTextUpdateEvent&>(event);
      Add("=", updated.changePosition(), updated.textRemoved() + u'>' + updated.textInserted());
    } else if (event.type() == QAccessible::TextCaretMoved) {
      Add("|", static_cast<QAccessibleTextCursorEvent&>(event).cursorPosition(), QString());
    }
  }

 private:
  void Add(const char* kind, int at, QString text) {
    sent.push_back(kind + std::to_string(at) + ":" + text.replace(u'\n', u'/').toStdString());
  }
};

class PaneAnnouncements : public testing::Test {
 protected:
  void SetUp() override { QAccessible::setActive(true); }
  void TearDown() override { QAccessible::setActive(false); }

  // Owned by the pane.
  RecordingAnnouncer& announcer_ = *new RecordingAnnouncer;
  OutputPane pane_{nullptr, std::unique_ptr<PaneAnnouncer>(&announcer_)};
};

TEST_F(PaneAnnouncements, LinesAreAnnouncedTogether) {
  pane_.AppendLine(LineKind::kAnswer, "a");
  pane_.AppendLine(LineKind::kAnswer, "b");
  EXPECT_TRUE(announcer_.sent.empty());
  pane_.Flush();
  pane_.AppendText(LineKind::kTime, "c\r\n", 1);
  pane_.Flush();
  EXPECT_EQ(announcer_.sent, (std::vector<std::string>{"+0:/a/b", "|4:", "+4:c/", "|5:"}));
}

TEST_F(PaneAnnouncements, EditsAreAnnouncedAfterTheLinesBefore) {
  pane_.AppendLine(LineKind::kAnswer, "ab");
  QTest::keyClicks(&pane_, QStringLiteral("c"));
  QTest::keyClick(&pane_, Qt::Key_Left);
  pane_.Select(1, 3);
  QTest::keyClicks(&pane_, QStringLiteral("x"));
  pane_.Clear();
  EXPECT_EQ(announcer_.sent, (std::vector<std::string>{"+0:/ab", "|3:", "+3:c", "|4:", "|3:", "|3:",
                                                       "=1:ab>x", "|2:", "-0:/xc", "|0:"}));
}

TEST_F(PaneAnnouncements, ATextShownAsideIsAnnouncedAsAWhole) {
  pane_.AppendLine(LineKind::kAnswer, "ab");
  pane_.Flush();
  announcer_.sent.clear();
  PaneText aside;
  aside.SetText("x");
  pane_.ShowAside(std::move(aside));
  pane_.EndAside();
  EXPECT_EQ(announcer_.sent, (std::vector<std::string>{"=0:/ab>x", "|0:", "=0:x>/ab", "|3:"}));
}

TEST_F(PaneAnnouncements, NothingIsAnnouncedWithoutAListener) {
  QAccessible::setActive(false);
  pane_.AppendLine(LineKind::kAnswer, "a");
  pane_.Select(0, 1);
  pane_.Clear();
  EXPECT_TRUE(announcer_.sent.empty());
}

}  // namespace
}  // namespace kolvane::pane
