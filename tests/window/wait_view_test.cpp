#include "window/wait_view.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCompleter>
#include <QDialog>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMimeData>
#include <QTimer>

namespace kolvane::window {
namespace {

TEST(WaitView, KeysPressedAfterItsLastCallAreDroppedToo) {
  QMainWindow window;
  StatusBars bars(&window);
  QLineEdit field(&window);
  window.show();
  WaitView wait(window, bars, [] {});
  const auto type = [&field] {
    QCoreApplication::postEvent(&field, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a"));
  };
  EXPECT_TRUE(wait.Waiting(device::Operation::kAnswer, 0.05));
  type();
  wait.WaitEnded();
  QApplication::processEvents();
  EXPECT_EQ(field.text(), "");
  type();
  QApplication::processEvents();
  EXPECT_EQ(field.text(), "a");
}

TEST(WaitView, DragsAreRefused) {
  QMainWindow window;
  StatusBars bars(&window);
  QLineEdit field(&window);
  window.show();
  WaitView wait(window, bars, [] {});
  QMimeData data;
  data.setText(QStringLiteral("a"));
  QDragEnterEvent enter({1, 1}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QDragMoveEvent move({1, 1}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&field, &enter);
  ASSERT_TRUE(enter.isAccepted());
  move.accept();
  QTimer::singleShot(0, &window, [&] {
    enter.ignore();
    QApplication::sendEvent(&field, &enter);
    QApplication::sendEvent(&field, &move);
  });
  EXPECT_TRUE(wait.Waiting(device::Operation::kAnswer, 0.05));
  EXPECT_FALSE(enter.isAccepted());
  EXPECT_FALSE(move.isAccepted());
}

class BesideTest : public testing::Test {
 protected:
  BesideTest() {
    beside_.addAction(&action_);
    action_.setShortcut(Qt::Key_F8);
    QObject::connect(&action_, &QAction::triggered, [this] { ++triggered_; });
    window_.show();
    beside_.show();
    dialog_.show();
    wait_.SetBeside(&beside_);
  }
  static void Post(QWidget& widget, int key) {
    const QString text = key == Qt::Key_A ? QStringLiteral("a") : QString();
    QCoreApplication::postEvent(&widget, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
  }
  bool Wait() { return wait_.Waiting(device::Operation::kAnswer, 0.05); }

  QMainWindow window_;
  StatusBars bars_{&window_};
  QLineEdit field_{&window_};
  QMainWindow beside_{&window_};
  QAction action_{&beside_};
  QLineEdit name_{&beside_};
  QDialog dialog_{&beside_};
  QLineEdit answer_{&dialog_};
  int triggered_ = 0;
  WaitView wait_{window_, bars_, [] {}};
};

TEST_F(BesideTest, TheWindowBesideAndItsDialogsAreUsedDuringAWait) {
  Post(field_, Qt::Key_A);
  Post(name_, Qt::Key_A);
  Post(answer_, Qt::Key_A);
  EXPECT_TRUE(Wait());
  EXPECT_EQ(field_.text(), "");
  EXPECT_EQ(name_.text(), "a");
  EXPECT_EQ(answer_.text(), "a");
}

// The list takes all keys while it is open.
TEST_F(BesideTest, ListsOfCompletionsTakeKeys) {
  QCompleter completer(QStringList{"abc"});
  answer_.setCompleter(&completer);
  completer.setCompletionPrefix("a");
  completer.complete();
  ASSERT_TRUE(completer.popup()->isVisible());
  Post(*completer.popup(), Qt::Key_A);
  EXPECT_TRUE(Wait());
  EXPECT_EQ(answer_.text(), "a");
}

TEST_F(BesideTest, ItsShortcutsAreCarriedOut) {
  QCoreApplication::postEvent(&action_, new QShortcutEvent(action_.shortcut(), 0));
  EXPECT_TRUE(Wait());
  EXPECT_EQ(triggered_, 1);
}

TEST_F(BesideTest, ShortcutsOfTheWindowAreDropped) {
  QAction connects(&window_);
  connects.setShortcut(Qt::Key_F9);
  int connected = 0;
  QObject::connect(&connects, &QAction::triggered, [&connected] { ++connected; });
  QCoreApplication::postEvent(&connects, new QShortcutEvent(connects.shortcut(), 0));
  EXPECT_TRUE(Wait());
  EXPECT_EQ(connected, 0);
}

TEST_F(BesideTest, EscGivesUpTheWaitButClosesADialog) {
  Post(answer_, Qt::Key_Escape);
  EXPECT_TRUE(Wait());
  EXPECT_FALSE(dialog_.isVisible());
  Post(name_, Qt::Key_Escape);
  EXPECT_FALSE(Wait());
}

TEST_F(BesideTest, ItsContextMenusDoNotHoldUpTheWait) {
  beside_.setContextMenuPolicy(Qt::CustomContextMenu);
  int menus = 0;
  QObject::connect(&beside_, &QWidget::customContextMenuRequested, [&menus] { ++menus; });
  QCoreApplication::postEvent(&beside_, new QContextMenuEvent(QContextMenuEvent::Mouse, {}, {}));
  EXPECT_TRUE(Wait());
  EXPECT_EQ(menus, 0);
}

TEST(WaitView, GivingUpWhileNothingWaitsDoesNotEndTheNextWait) {
  QMainWindow window;
  StatusBars bars(&window);
  WaitView wait(window, bars, [] {});
  wait.GiveUp();
  EXPECT_TRUE(wait.Waiting(device::Operation::kAnswer, 0.05));
  QMetaObject::invokeMethod(
      &window, [&wait] { wait.GiveUp(); }, Qt::QueuedConnection);
  EXPECT_FALSE(wait.Waiting(device::Operation::kAnswer, 0.1));
  wait.WaitEnded();
  wait.GiveUp();
  EXPECT_TRUE(wait.Serve()) << "dialling";
}

}  // namespace
}  // namespace kolvane::window
