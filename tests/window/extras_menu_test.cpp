#include "window/extras_menu.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QMessageBox>
#include <QStyle>

#include "base/runtime_error.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

/// A separate menu in an otherwise empty window.
class ExtrasMenuTest : public testing::Test {
 protected:
  QStringList Names() {
    QStringList names;
    for (const QAction* item : window_.findChild<QMenu*>("mnuExtras")->actions()) {
      if (!item->isSeparator()) names << (item->menu() ? item->menu()->objectName() : item->objectName());
    }
    return names;
  }

  QMainWindow window_;
  MessagePrompt prompt_{&window_};
  ExtrasMenu menu_{&window_, prompt_};
};

TEST_F(ExtrasMenuTest, AnItemIsInsertedAtItsPositionInAnyOrder) {
  menu_.AddMenu("mnuRecent");
  menu_.On("mnuReadAnswer", [] {});
  menu_.On("mnuUtf8", [] {});
  menu_.On("mnuFind", [] {});
  EXPECT_EQ(Names(), QStringList({"mnuFind", "mnuReadAnswer", "mnuUtf8", "mnuRecent"}));
}

TEST_F(ExtrasMenuTest, ACheckMarkShowsItsFlagAndTogglesIt) {
  bool flag = true;
  int changes = 0;
  QAction* item = menu_.OnToggle("mnuUtf8", flag, [&] { ++changes; });
  EXPECT_TRUE(item->isChecked());
  item->trigger();
  EXPECT_FALSE(flag);
  EXPECT_EQ(changes, 1);
}

TEST_F(ExtrasMenuTest, WhileAListRunsOnlyHarmlessItemsAreEnabled) {
  const std::vector<const char*> harmless = {"mnuFind", "mnuFindNext", "mnuFindPrevious", "mnuTimeStamps"};
  for (const char* name : harmless) menu_.On(name, [] {});
  for (const char* name : {"mnuReadAnswer", "mnuListen", "mnuValues"}) menu_.On(name, [] {});
  menu_.SetAllowed("mnuListen", false);
  menu_.Lock(true);
  for (const char* name : harmless) EXPECT_TRUE(menu_.Item(name)->isEnabled()) << name;
  EXPECT_FALSE(menu_.Item("mnuReadAnswer")->isEnabled());
  EXPECT_FALSE(menu_.Item("mnuValues")->isEnabled());
  menu_.Lock(false);
  EXPECT_TRUE(menu_.Item("mnuReadAnswer")->isEnabled());
  EXPECT_FALSE(menu_.Item("mnuListen")->isEnabled()) << "refused for another reason";
}

TEST_F(ExtrasMenuTest, ARefusedItemIsDisabledAtOnce) {
  menu_.On("mnuListen", [] {});
  for (const bool allowed : {true, false, true}) {
    menu_.SetAllowed("mnuListen", allowed);
    EXPECT_EQ(menu_.Item("mnuListen")->isEnabled(), allowed);
  }
}

TEST_F(ExtrasMenuTest, ScrollsOnALowScreen) {
  const auto* menu = window_.findChild<QMenu*>("mnuExtras");
  EXPECT_NE(menu->style()->styleHint(QStyle::SH_Menu_Scrollable, nullptr, menu), 0);
}

TEST_F(ExtrasMenuTest, AnItemThatIsNotInTheMenuIsNotFound) { EXPECT_EQ(menu_.Item("mnuFind"), nullptr); }

class ExtrasInTheWindow : public WindowFixture {};

TEST_F(ExtrasInTheWindow, ItemsAreInGroups) {
  EXPECT_EQ(
      Groups("mnuExtras"),
      QStringList(
          {"Find FindNext FindPrevious ",
           "ReadAnswer Listen QueriesOnly Blocks DeviceWords Reconnect TimeStamps LogTimeStamps Utf8 ",
           "Values ", "CheckList Breakpoint PlayFromRow RunToRow DuplicateRow ToggleComment MoveUp MoveDown ",
           "Ports CopyWithTimes Recent "}));
}

TEST_F(ExtrasInTheWindow, CheckMarksAreThoseOfTheState) {
  EXPECT_FALSE(Find<QAction>("mnuQueriesOnly")->isChecked());
  EXPECT_TRUE(Find<QAction>("mnuDeviceWords")->isChecked());
  Press("mnuQueriesOnly");
  Press("mnuDeviceWords");
  EXPECT_TRUE(terminal_.extras.queries_only);
  EXPECT_FALSE(terminal_.extras.device_words);
}

TEST_F(ExtrasInTheWindow, WithoutASelectionTheClipboardKeepsWhatItHolds) {
  QApplication::clipboard()->setText("kept");
  Press("mnuCopyWithTimes");
  EXPECT_EQ(QApplication::clipboard()->text(), "kept");
  Pane()->AppendLine(LineKind::kAnswer, "12.5");
  Pane()->selectAll();
  Press("mnuCopyWithTimes");
  EXPECT_TRUE(QApplication::clipboard()->text().endsWith(" 12.5\n"));
}

TEST_F(ExtrasInTheWindow, TimeStampsAreShownAtOnce) {
  EXPECT_FALSE(Pane()->timeStamps());
  Press("mnuTimeStamps");
  EXPECT_TRUE(Pane()->timeStamps());
  Press("mnuTimeStamps");
  EXPECT_FALSE(Pane()->timeStamps());
}

}  // namespace
}  // namespace kolvane::window
