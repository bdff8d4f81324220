#pragma once

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include "window/window_fixture.h"

namespace kolvane::window {

/// The terminal window with the focus on its grid.
class GridFixture : public WindowFixture {
 protected:
  GridFixture() {
    device_.connected = true;
    Grid()->setFocus();
  }

  script::CommandGrid* Grid() { return window_.findChild<script::CommandGrid*>(); }
  QString Row(int row) { return Grid()->model()->index(row - 1, 1).data().toString(); }
  QVariant CellData(int row, int role) { return Grid()->model()->index(row - 1, 1).data(role); }
  int CurrentRow() { return Grid()->currentIndex().row() + 1; }
  void GoTo(int row) { Grid()->setCurrentIndex(Grid()->model()->index(row - 1, 1)); }
  QString Status() { return window_.findChild<QLabel*>("StatusBar2_2")->text(); }

  void Fill(const QStringList& rows) {
    GoTo(1);
    QApplication::clipboard()->setText(rows.join('\n'));
    Grid()->paste();
  }
  /// A list that takes seconds, so that a run that does not end fails its test instead of blocking it.
  void FillLongList() { Fill({"$REPEAT 20000000", "$ENDREPEAT"}); }
  /// Whether a run of that list was ended early.
  bool WasEndedEarly() { return script_.interpreter.RepeatLevel == 1; }

  /// Replaces the list by a new one, and that by the only one of the menu of recent lists.
  void OpenOnlyRecentList() {
    Press("mnuNewCommandFile");
    EXPECT_EQ(Row(1), "");
    const QList<QAction*> recent = Find<QMenu>("mnuRecent")->actions();
    ASSERT_EQ(recent.size(), 1);
    recent.front()->trigger();
    QApplication::processEvents();
  }

  // Starts typing into the cell of the current row.
  QLineEdit* StartTyping(const QString& text) {
    QTest::keyClicks(Grid(), text.left(1));
    auto* editor = Grid()->findChild<QLineEdit*>();
    if (editor != nullptr) QTest::keyClicks(editor, text.mid(1));
    return editor;
  }

  // Types into the cell of the current row, like a user.
  void Type(const QString& text) {
    QLineEdit* editor = StartTyping(text);
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();  // the editor commits its text in a separate event
  }
};

}  // namespace kolvane::window
