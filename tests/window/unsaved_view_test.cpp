#include "window/unsaved_view.h"

#include <QAccessible>

#include "script/list_text.h"
#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

/// Terminal windows, one after the other or at the same time, whose lists have copies in one folder.
class UnsavedViewTest : public testing::Test, protected WindowRecords {
 protected:
  std::unique_ptr<MainWindow> Open() {
    WindowContext context = ContextWith(source_, temp_.path());
    context.unsaved = temp_.Path("Unsaved");
    auto window = std::make_unique<MainWindow>(std::move(context));
    window->Load();
    window->show();
    return window;
  }
  static script::CommandList& List(MainWindow& window) {
    return window.findChild<script::CommandGrid*>()->list();
  }
  static QWidget* Bar(MainWindow& window) { return window.findChild<QWidget*>("UnsavedBar"); }
  static QString Offer(MainWindow& window) {
    return Bar(window)->isVisible() ? window.findChild<QLabel*>("UnsavedText")->text() : QString();
  }
  static void Click(MainWindow& window, const char* button) {
    window.findChild<QPushButton*>(QLatin1String(button))->click();
  }
  /// A window that is closed with an unsaved list.
  void AbandonList(const std::string& row) {
    const auto window = Open();
    List(*window).SetText(1, row);
    window->close();
  }

  base::TempFolder temp_;
  device::FakePortLibrary library_;
  device::FakePortLibrarySource source_{&library_};
};

TEST_F(UnsavedViewTest, WithNothingLeftThereIsNoBar) {
  const auto window = Open();
  EXPECT_FALSE(Bar(*window)->isVisible());
  window->close();
  EXPECT_TRUE(temp_.Names().empty());
}

TEST_F(UnsavedViewTest, TheNextWindowOffersAnUnsavedListAndRestoresIt) {
  AbandonList("MSV?");
  const auto window = Open();
  EXPECT_TRUE(Offer(*window).startsWith("Nicht gespeicherte Befehlsliste: 1 Zeile vom "))
      << Offer(*window).toStdString();
  EXPECT_EQ(script::ListText(List(*window)), "") << "nothing is restored without a click";
  Click(*window, "cmdRestore");
  EXPECT_EQ(script::ListText(List(*window)), ">MSV?");
  EXPECT_TRUE(window->isWindowModified());
  EXPECT_FALSE(Bar(*window)->isVisible());
  EXPECT_EQ(window->focusWidget()->objectName(), "CommandScript");
}

TEST_F(UnsavedViewTest, TheBarIsAboveTheList) {
  AbandonList("MSV?");
  const auto window = Open();
  auto* grid = window->findChild<script::CommandGrid*>();
  QApplication::processEvents();
  EXPECT_GT(Bar(*window)->height(), 0);
  EXPECT_EQ(grid->y(), Bar(*window)->y() + Bar(*window)->height());
}

TEST_F(UnsavedViewTest, RestoringIsAStepOfUndo) {
  AbandonList("MSV?");
  const auto window = Open();
  List(*window).SetText(1, "anderes");
  Click(*window, "cmdRestore");
  EXPECT_EQ(List(*window).Undo(), 1);
  EXPECT_EQ(script::ListText(List(*window)), ">anderes");
}

TEST_F(UnsavedViewTest, AListThatCannotBeKeptIsReportedWhenTheWindowCloses) {
  base::WriteBytes(temp_.Path("Unsaved"), "");
  AbandonList("MSV?");
  ASSERT_EQ(close_.messages.errors.size(), 1u);
  EXPECT_EQ(close_.messages.errors[0],
            "Die geänderte Befehlsliste kann nicht für den nächsten Start aufbewahrt werden: "
            "Ein Teil des Pfades ist kein Ordner");
}

TEST_F(UnsavedViewTest, WhatIsBeingTypedIsTakenBeforeRestoring) {
  AbandonList("MSV?");
  const auto window = Open();
  auto* grid = window->findChild<script::CommandGrid*>();
  grid->setFocus();
  QTest::keyClicks(grid, "1");
  ASSERT_NE(grid->findChild<QLineEdit*>(), nullptr);
  Click(*window, "cmdRestore");
  QApplication::processEvents();
  EXPECT_EQ(script::ListText(List(*window)), ">MSV?");
  List(*window).Undo();
  EXPECT_EQ(script::ListText(List(*window)), ">1");
}

TEST_F(UnsavedViewTest, WhatIsDiscardedIsGone) {
  AbandonList("MSV?");
  {
    const auto window = Open();
    Click(*window, "cmdDiscard");
    EXPECT_FALSE(Bar(*window)->isVisible());
    // As a button does 0.1 s after its key was pressed.
    for (auto* button : Bar(*window)->findChildren<QPushButton*>()) Q_EMIT button->clicked();
    EXPECT_EQ(script::ListText(List(*window)), "");
  }
  EXPECT_FALSE(Bar(*Open())->isVisible());
}

TEST_F(UnsavedViewTest, AnUnansweredOfferIsMadeAgain) {
  AbandonList("MSV?");
  Open()->close();
  EXPECT_NE(Offer(*Open()), "");
}

TEST_F(UnsavedViewTest, SeveralAreOfferedOneAfterTheOther) {
  AbandonList("eins");
  AbandonList("zwei");
  const auto window = Open();
  EXPECT_TRUE(Offer(*window).endsWith("(danach 1 weitere)"));
  Click(*window, "cmdDiscard");
  EXPECT_FALSE(Offer(*window).contains("danach")) << Offer(*window).toStdString();
  Click(*window, "cmdRestore");
  EXPECT_FALSE(Bar(*window)->isVisible());
}

TEST_F(UnsavedViewTest, WindowsThatAreOpenAtOnceDoNotMix) {
  const auto first = Open();
  List(*first).SetText(1, "eins");
  Bar(*first)->findChild<QTimer*>()->setInterval(0);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !temp_.Names().empty(); }));
  const auto second = Open();
  EXPECT_FALSE(Bar(*second)->isVisible());
}

TEST_F(UnsavedViewTest, TheCopyIsWrittenSomeTimeAfterTheFirstChange) {
  const auto window = Open();
  const auto* timer = Bar(*window)->findChild<QTimer*>();
  EXPECT_FALSE(timer->isActive());
  List(*window).HighlightLine(1, 1, 2, true);
  EXPECT_FALSE(timer->isActive()) << "there is nothing to keep";
  List(*window).SetText(1, "A");
  EXPECT_TRUE(timer->isActive());
  EXPECT_EQ(timer->interval(), 2000);
  EXPECT_TRUE(temp_.Names().empty());
}

TEST_F(UnsavedViewTest, ASavedListLeavesNoCopy) {
  const std::string file = temp_.Path("a.CMD");
  base::WriteBytes(file, "A\r\n");
  {
    const auto window = Open();
    window->OpenCommandFile(file);
    List(*window).SetText(1, "B");
    window->findChild<QAction*>("mnuSaveCommandFile")->trigger();
    window->close();
  }
  EXPECT_FALSE(Bar(*Open())->isVisible());
  EXPECT_EQ(temp_.Names(), std::vector<std::string>{"a.CMD"});
}

TEST_F(UnsavedViewTest, WhatIsBeingTypedIsAlsoKept) {
  {
    const auto window = Open();
    auto* grid = window->findChild<script::CommandGrid*>();
    QTest::keyClicks(grid, "M");
    QTest::keyClicks(grid->findChild<QLineEdit*>(), "SV?");
    window->close();
  }
  const auto window = Open();
  Click(*window, "cmdRestore");
  EXPECT_EQ(script::ListText(List(*window)), ">MSV?");
}

TEST_F(UnsavedViewTest, ARunKeepsItsListAndTheOffer) {
  AbandonList("MSV?");
  const auto window = Open();
  script_.run.ScriptRunning = 1;
  Click(*window, "cmdRestore");
  script_.run.ScriptRunning = 0;
  EXPECT_EQ(script::ListText(List(*window)), "");
  EXPECT_NE(Offer(*window), "");
}

TEST_F(UnsavedViewTest, AScreenReaderReadsTheOffer) {
  AbandonList("MSV?");
  const auto window = Open();
  EXPECT_EQ(QAccessible::queryAccessibleInterface(Bar(*window))->text(QAccessible::Name), Offer(*window));
}

}  // namespace
}  // namespace kolvane::window
