#include "window/progress.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>

namespace kolvane::window {
namespace {

TEST(Progress, TheUserCanCancel) {
  QWidget window;
  window.show();
  Progress progress(&window, "Arbeit", 0);
  QTimer::singleShot(0, &window, [] {
    auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->labelText(), "Arbeit");
    auto* cancel = dialog->findChild<QPushButton*>();
    EXPECT_EQ(cancel->text(), "Abbrechen");
    cancel->click();
  });
  std::size_t steps = 0;
  while (progress.Advance(steps, 100000000) && steps < 100000000) ++steps;
  EXPECT_LT(steps, 100000000u);
}

TEST(Progress, ShortWorkShowsNothing) {
  QWidget window;
  window.show();
  Progress progress(&window, "Arbeit", 1000000);
  for (std::size_t step = 0; step < 1000; ++step) EXPECT_TRUE(progress.Advance(step, 1000));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(Progress, OfAnUnknownTotalNothingIsDone) {
  QWidget window;
  Progress progress(&window, "Arbeit", 1000000);
  const auto* dialog = window.findChild<QProgressDialog*>();
  // The display follows only at intervals.
  const auto shows = [&](std::size_t done, std::size_t whole, auto expected) {
    for (int step = 0; step < 100000000; ++step) {
      EXPECT_TRUE(progress.Advance(done, whole));
      if (expected(dialog->value())) return true;
    }
    return false;
  };
  EXPECT_TRUE(shows(1, 2, [](int value) { return value > 0; }));
  EXPECT_TRUE(shows(5, 0, [](int value) { return value == 0; }));
}

}  // namespace
}  // namespace kolvane::window
