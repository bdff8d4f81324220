#include "window/lock_gui.h"

#include <QTest>

#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

class LockGuiTest : public WindowFixture {
 protected:
  /// Which of `names`, widgets or actions, are enabled.
  QStringList Enabled(const QStringList& names) {
    QStringList enabled;
    for (const QString& name : names) {
      const auto* found = window_.findChild<QObject*>(name);
      EXPECT_NE(found, nullptr) << name.toStdString();
      if (found->property("enabled").toBool()) enabled << name;
    }
    return enabled;
  }

  GuiLock lock_{window_};
  const QStringList locked_ = {"cmdSend",           "Toolbar1",       "mnuFile",          "mnuCon",
                               "mnuOptions",        "cmbReceiveMode", "cmbReceiveFormat", "SendTermChar",
                               "RcvTermChar",       "TB_OPENSCRIPT",  "TB_SAVESCRIPT",    "TB_PRINTSCRIPT",
                               "TB_NEWSCRIPT",      "TB_CUT",         "TB_COPY",          "TB_PASTE",
                               "TB_SPECIALCOMMANDS"};
  const QStringList free_ = {"cmbCommand",    "TermWin", "CommandScript", "TB_PLAY",
                             "TB_SINGLESTEP", "TB_STOP", "TB_BREAK",      "TB_RECORD"};
};

TEST_F(LockGuiTest, LocksOnlyTheListedControls) {
  lock_.LockGUI(true);
  EXPECT_EQ(Enabled(locked_), QStringList());
  EXPECT_EQ(Enabled(free_), free_);
  EXPECT_FALSE(Find<QMenu>("mnuFile")->menuAction()->isEnabled());
}

TEST_F(LockGuiTest, UnlockingEnablesThemAllWhateverTheirStateBefore) {
  Find<QWidget>("cmbReceiveMode")->setEnabled(false);
  Find<QAction>("TB_CUT")->setEnabled(false);
  lock_.LockGUI(true);
  lock_.LockGUI(false);
  EXPECT_EQ(Enabled(locked_), locked_);
  EXPECT_TRUE(Find<QMenu>("mnuFile")->menuAction()->isEnabled());
}

TEST_F(LockGuiTest, TheKeysOfALockedMenuDoNothing) {
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  lock_.LockGUI(true);
  QTest::keyClick(&window_, Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(window_.isVisible());
  lock_.LockGUI(false);
  QTest::keyClick(&window_, Qt::Key_Q, Qt::ControlModifier);
  EXPECT_FALSE(window_.isVisible());
}

TEST_F(LockGuiTest, TheButtonsOfALockedBarKeepTheirStates) {
  lock_.LockGUI(true);
  lock_.LockGUI(false);
  EXPECT_FALSE(Find<QAction>("TB_CLOSELOG")->isEnabled());
  EXPECT_TRUE(Find<QAction>("TB_OPENLOG")->isEnabled());
}

TEST_F(LockGuiTest, AControlThatLosesTheFocusGetsItBack) {
  auto* send = Find<QWidget>("cmdSend");
  send->setFocus();
  lock_.LockGUI(true);
  EXPECT_NE(window_.focusWidget(), send);
  lock_.LockGUI(false);
  EXPECT_EQ(window_.focusWidget(), send);
}

TEST_F(LockGuiTest, AFocusMovedDuringTheLockStaysThere) {
  Find<QWidget>("cmdSend")->setFocus();
  lock_.LockGUI(true);
  auto* grid = Find<QWidget>("CommandScript");
  grid->setFocus();
  lock_.LockGUI(false);
  EXPECT_EQ(window_.focusWidget(), grid);
}

}  // namespace
}  // namespace kolvane::window
