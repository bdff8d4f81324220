#include "window/wait_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>

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

}  // namespace
}  // namespace kolvane::window
