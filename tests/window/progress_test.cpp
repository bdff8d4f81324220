#include "window/text_file.h"

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

TEST(Progress, ATotalOfZeroIsNotAnError) {
  Progress progress(nullptr, "Arbeit", 1000000);
  EXPECT_TRUE(progress.Advance(0, 0));
  EXPECT_TRUE(progress.Advance(5, 1));
}

}  // namespace
}  // namespace kolvane::window
