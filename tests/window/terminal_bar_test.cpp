#include "window/terminal_bar.h"

#include <QAbstractItemView>
#include <QInputDialog>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <QWheelEvent>

#include "base/ui/qt_look.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

constexpr const char* kLists[] = {"cmbReceiveMode", "cmbReceiveFormat", "RcvTermChar", "SendTermChar"};

class TerminalBarTest : public WindowFixture {
 protected:
  void Activate() {
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  // One step towards the user, which selects the next entry.
  static void TurnWheel(QWidget* widget) {
    QWheelEvent event(QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
  }

  void PickWithMouse(QComboBox* list, int index) {
    list->showPopup();
    QAbstractItemView* view = list->view();
    const QRect row = view->visualRect(view->model()->index(index, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, {row.left() + 5, row.center().y()});
  }
};

TEST_F(TerminalBarTest, TheWheelNeedsTheFocus) {
  Activate();
  for (const char* name : {"cmbReceiveMode", "cmbReceiveFormat", "RcvTermChar", "SendTermChar"}) {
    auto* list = Find<QComboBox>(name);
    list->setCurrentIndex(0);
    Find<QWidget>("cmdSend")->setFocus();
    TurnWheel(list);
    EXPECT_EQ(list->currentIndex(), 0) << name;
    EXPECT_FALSE(list->focusPolicy() & Qt::WheelFocus & ~Qt::StrongFocus) << name;
    list->setFocus();
    TurnWheel(list);
    EXPECT_EQ(list->currentIndex(), 1) << name;
  }
}

TEST_F(TerminalBarTest, TheWheelDoesNotChangeTheCommandLineEither) {
  Activate();
  auto* box = Find<QComboBox>("cmbCommand");
  box->addItems({"B?", "A?"});
  box->setCurrentIndex(0);
  Find<QWidget>("cmdSend")->setFocus();
  TurnWheel(box);
  EXPECT_EQ(box->currentText(), "B?");
  box->setFocus();
  TurnWheel(box);
  EXPECT_EQ(box->currentText(), "A?");
}

TEST_F(TerminalBarTest, PickingWithTheMouseReturnsTheFocusToTheCommandLine) {
  Activate();
  for (const char* name : kLists) {
    auto* list = Find<QComboBox>(name);
    list->setFocus();
    PickWithMouse(list, 1);
    EXPECT_EQ(list->currentIndex(), 1) << name;
    EXPECT_EQ(window_.focusWidget(), Find<QComboBox>("cmbCommand")) << name;
  }
}

TEST_F(TerminalBarTest, ASelectedCommandStaysSelectedOverAMenuAndAList) {
  Activate();
  auto* line = Find<QComboBox>("cmbCommand")->lineEdit();
  line->setText("MSV? 1");
  for (const bool selected : {true, false}) {
    line->parentWidget()->setFocus();
    line->setSelection(0, selected ? 6 : 3);
    window_.menuBar()->setFocus(Qt::MenuBarFocusReason);
    line->parentWidget()->setFocus(Qt::MenuBarFocusReason);
    EXPECT_EQ(line->selectedText(), selected ? "MSV? 1" : "");
  }
  line->selectAll();
  auto* list = Find<QComboBox>("cmbReceiveMode");
  list->setFocus(Qt::MouseFocusReason);
  PickWithMouse(list, 1);
  EXPECT_EQ(line->selectedText(), "MSV? 1");
}

TEST_F(TerminalBarTest, PickingByKeyKeepsTheFocus) {
  Activate();
  auto* list = Find<QComboBox>("cmbReceiveMode");
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(list->currentIndex(), 1);
  EXPECT_EQ(window_.focusWidget(), list);
  list->showPopup();
  QTest::keyClick(list->view(), Qt::Key_Down);
  QTest::keyClick(list->view(), Qt::Key_Return);
  EXPECT_EQ(list->currentIndex(), 2);
  EXPECT_EQ(window_.focusWidget(), list);
}

TEST_F(TerminalBarTest, APickOfTheItemShownCountsAfterAChangeOfTheOtherList) {
  Activate();
  // A change that does not come from the user's pick.
  Find<QComboBox>("cmbReceiveFormat")->setCurrentIndex(1);
  Find<QComboBox>("cmbReceiveFormat")->setCurrentIndex(0);
  auto* list = Find<QComboBox>("cmbReceiveMode");
  ASSERT_EQ(list->currentText(), "Auto");
  ASSERT_EQ(terminal_.receive.mode, terminal::receive_mode::kTerminator);
  PickWithMouse(list, 1);
  EXPECT_EQ(terminal_.receive.mode, terminal::receive_mode::kAuto);
  EXPECT_EQ(Find<QComboBox>("RcvTermChar")->currentText(), "Kein");
}

TEST_F(TerminalBarTest, EachFieldSaysWhatItIs) {
  for (const char* name : {"cmbCommand", "cmdSend", "cmbReceiveMode", "cmbReceiveFormat", "RcvTermChar",
                           "SendTermChar", "ReceiveTimo", "BinChars"})
    EXPECT_GT(Find<QWidget>(name)->toolTip().size(), 15) << name;
}

TEST_F(TerminalBarTest, TheEditsWithinListsHaveTheirNames) {
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->lineEdit()->accessibleName(), "Befehl");
  EXPECT_EQ(Find<QComboBox>("RcvTermChar")->lineEdit()->accessibleName(), "Endezeichen Empfang");
  EXPECT_EQ(Find<QComboBox>("SendTermChar")->lineEdit()->accessibleName(), "Endezeichen Senden");
}

TEST_F(TerminalBarTest, AFileDroppedOnTheCommandLineTypesNothing) {
  QLineEdit* edit = Find<QComboBox>("cmbCommand")->lineEdit();
  QMimeData file;
  file.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.TXT"))});
  file.setText(QStringLiteral("file:///tmp/a.TXT"));
  QMimeData text;
  text.setText(QStringLiteral("MSV?"));
  for (const auto& [data, taken] : {std::pair{&file, false}, {&text, true}}) {
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(edit, &enter);
    EXPECT_EQ(enter.isAccepted(), taken);
    QDropEvent drop({5, 5}, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(edit, &drop);
    EXPECT_EQ(edit->text(), taken ? "MSV?" : "");
  }
}

TEST_F(TerminalBarTest, TheCommentBoxIsWideEnoughForALine) {
  OnDialog<QInputDialog>([](QInputDialog& question) {
    const int line = question.fontMetrics().horizontalAdvance(QString(60, QLatin1Char('n')));
    EXPECT_GE(question.findChild<QLineEdit*>()->width(), line * 3 / 4);
    EXPECT_GT(question.width(), 350);
    question.reject();
  });
  Press("mnuInsertComment");
  EXPECT_EQ(dialogs_, 1);
}

TEST_F(TerminalBarTest, HintsInEmptyFieldsStandOut) {
  const auto hint = [] { return QLineEdit().palette().color(QPalette::PlaceholderText); };
  const QPalette usual = QApplication::palette();
  const QColor before = hint();
  base::EnsureReadableHints();
  EXPECT_EQ(hint(), before);
  QPalette dark = usual;
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
  QApplication::setPalette(dark);
  base::EnsureReadableHints();
  EXPECT_EQ(hint(), QColor(255, 255, 255, 128));
  EXPECT_EQ(QApplication::palette().color(QPalette::Base), QColor(Qt::black));
  QApplication::setPalette(usual);
}

}  // namespace
}  // namespace kolvane::window
