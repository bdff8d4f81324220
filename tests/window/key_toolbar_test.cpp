// The commands of the toolbars by keyboard.
#include <gtest/gtest.h>

#include <QToolButton>

#include "base/scope_exit.h"
#include "window/grid_fixture.h"

namespace kolvane::window {
namespace {

class KeyToolbarTest : public GridFixture {
 protected:
  KeyToolbarTest() {
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QToolButton* ButtonOf(const char* key) {
    for (const char* bar : {"Toolbar1", "Toolbar3"}) {
      auto* button = qobject_cast<QToolButton*>(Find<QToolBar>(bar)->widgetForAction(Find<QAction>(key)));
      if (button != nullptr) return button;
    }
    return nullptr;
  }
  /// The key of the button that has the focus.
  QString Focused() {
    const auto* button = qobject_cast<QToolButton*>(QApplication::focusWidget());
    return button == nullptr || button->defaultAction() == nullptr ? QString()
                                                                   : button->defaultAction()->objectName();
  }
  /// The arrow behind which the list's bar hides what does not fit.
  QToolButton* Extension() {
    return Find<QToolBar>("Toolbar3")->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
  }
  /// The Tab order, from the command line on: names of widgets, keys of buttons.
  QStringList TabOrder() {
    QStringList order;
    Find<QWidget>("cmbCommand")->setFocus();
    for (int step = 0; step < 30; ++step) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      const QWidget* now = QApplication::focusWidget();
      const QString name = Focused().isEmpty() ? now->objectName() : Focused();
      if (now == Find<QWidget>("cmbCommand") || order.contains(name)) break;
      order << name;
    }
    return order;
  }
  static void PressKey(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
  }
};

TEST_F(KeyToolbarTest, EachBarIsOneStopInTheTabOrder) {
  EXPECT_EQ(TabOrder().join(' ').toStdString(),
            (QStringList{"cmdSend", "cmbReceiveMode", "cmbReceiveFormat", "RcvTermChar", "ReceiveTimo",
                         "SendTermChar", "TB_SAVETERMWIN", "TermWin", "CommandScript", "TB_PLAY"}
                 .join(' ')
                 .toStdString()));
}

TEST_F(KeyToolbarTest, TheArrowKeysGoFromButtonToButton) {
  ButtonOf("TB_PLAY")->setFocus();
  PressKey(ButtonOf("TB_PLAY"), Qt::Key_Down);
  EXPECT_EQ(Focused(), "TB_SINGLESTEP");
  PressKey(ButtonOf("TB_SINGLESTEP"), Qt::Key_Up);
  EXPECT_EQ(Focused(), "TB_PLAY");
  PressKey(ButtonOf("TB_PLAY"), Qt::Key_Up);
  EXPECT_EQ(Focused(), "TB_PLAY");
  PressKey(ButtonOf("TB_PLAY"), Qt::Key_End);
  EXPECT_EQ(Focused(), "TB_SPECIALCOMMANDS");
  PressKey(ButtonOf("TB_SPECIALCOMMANDS"), Qt::Key_Down);
  EXPECT_EQ(Focused(), "TB_SPECIALCOMMANDS");
  PressKey(ButtonOf("TB_SPECIALCOMMANDS"), Qt::Key_Left);
  EXPECT_EQ(Focused(), "TB_PASTE");
  PressKey(ButtonOf("TB_PASTE"), Qt::Key_Home);
  EXPECT_EQ(Focused(), "TB_PLAY");
}

TEST_F(KeyToolbarTest, TabReturnsToTheLastFocusedButton) {
  ButtonOf("TB_PLAY")->setFocus();
  PressKey(ButtonOf("TB_PLAY"), Qt::Key_Down);
  EXPECT_TRUE(TabOrder().contains("TB_SINGLESTEP"));
  EXPECT_FALSE(TabOrder().contains("TB_PLAY"));
}

TEST_F(KeyToolbarTest, ButtonsThatAreDisabledAreSkipped) {
  ButtonOf("TB_SAVETERMWIN")->setFocus();
  PressKey(ButtonOf("TB_SAVETERMWIN"), Qt::Key_Right);
  Find<QAction>("TB_PORTCONFIGURE")->setEnabled(false);
  PressKey(ButtonOf("TB_PRINT"), Qt::Key_Right);
  EXPECT_EQ(Focused(), "TB_CONNECT");
}

TEST_F(KeyToolbarTest, AButtonDisabledByItsPressKeepsTheFocusOnItsBar) {
  ButtonOf("TB_OPENLOG")->setFocus();
  PressKey(ButtonOf("TB_FLUSH"), Qt::Key_Right);
  ASSERT_EQ(Focused(), "TB_OPENLOG");
  ChooseFile(folder_.Path("a.LOG"));
  PressKey(ButtonOf("TB_OPENLOG"), Qt::Key_Return);
  EXPECT_FALSE(Enabled("TB_OPENLOG"));
  EXPECT_EQ(window_.focusWidget()->parentWidget()->objectName(), "Toolbar1");
}

TEST_F(KeyToolbarTest, AButtonDisabledWhileTheFocusIsElsewhereDoesNotTakeIt) {
  ButtonOf("TB_FLUSH")->setFocus();
  PressKey(ButtonOf("TB_FLUSH"), Qt::Key_Right);
  ASSERT_EQ(Focused(), "TB_OPENLOG");
  auto* pane = Find<QWidget>("TermWin");
  pane->setFocus();
  Find<QAction>("TB_OPENLOG")->setEnabled(false);
  EXPECT_EQ(window_.focusWidget(), pane);
}

TEST_F(KeyToolbarTest, EnterAndTheSpaceBarPress) {
  ButtonOf("TB_RECORD")->setFocus();
  PressKey(ButtonOf("TB_RECORD"), Qt::Key_Return);
  EXPECT_EQ(script_.record.tag, 1);
  PressKey(ButtonOf("TB_RECORD"), Qt::Key_Space);
  EXPECT_EQ(script_.record.tag, 0);
}

TEST_F(KeyToolbarTest, TheArrowOfHiddenButtonsIsTheLastStop) {
  window_.resize(700, 430);
  QApplication::processEvents();
  QToolButton* more = Extension();
  ASSERT_TRUE(more->isVisible());
  ButtonOf("TB_PLAY")->setFocus();
  PressKey(ButtonOf("TB_PLAY"), Qt::Key_Up);
  EXPECT_EQ(Focused(), "TB_PLAY");
  PressKey(ButtonOf("TB_PLAY"), Qt::Key_End);
  ASSERT_EQ(QApplication::focusWidget(), more);
  bool opened = false;
  QTimer::singleShot(0, &window_, [&opened] {
    QWidget* menu = QApplication::activePopupWidget();
    opened = menu != nullptr && menu->close();
  });
  PressKey(more, Qt::Key_Return);
  EXPECT_TRUE(opened);
  PressKey(more, Qt::Key_Up);
  const auto* stop = qobject_cast<QToolButton*>(window_.focusWidget());
  ASSERT_NE(stop, nullptr);
  EXPECT_EQ(stop->parentWidget(), Find<QToolBar>("Toolbar3"));
  EXPECT_NE(stop, more);
  for (QAction* action : Find<QToolBar>("Toolbar3")->actions()) {
    const QWidget* button = Find<QToolBar>("Toolbar3")->widgetForAction(action);
    EXPECT_LE(button->isVisible() ? button->y() : 0, stop->y()) << action->text().toStdString();
  }
}

TEST_F(KeyToolbarTest, ABarStaysInTheTabOrderWhenItsStopIsHidden) {
  const auto stop_of_list_bar = [this] { return TabOrder().back(); };
  ButtonOf("TB_SPECIALCOMMANDS")->setFocus();
  PressKey(ButtonOf("TB_SPECIALCOMMANDS"), Qt::Key_End);
  ASSERT_EQ(stop_of_list_bar(), "TB_SPECIALCOMMANDS");
  window_.resize(700, 430);
  QApplication::processEvents();
  EXPECT_EQ(stop_of_list_bar(), "TB_PLAY");
  ButtonOf("TB_PLAY")->setFocus();
  PressKey(ButtonOf("TB_PLAY"), Qt::Key_End);
  ASSERT_EQ(QApplication::focusWidget(), Extension());
  window_.resize(1160, 740);
  QApplication::processEvents();
  EXPECT_EQ(stop_of_list_bar(), "TB_PLAY");
}

TEST_F(KeyToolbarTest, EachCommandOfTheListHasItsOwnKey) {
  // Ctrl+X, C and V are keys of the grid itself.
  const std::pair<const char*, QKeySequence> keys[] = {{"TB_PLAY", Qt::Key_F5},
                                                       {"TB_SINGLESTEP", Qt::Key_F10},
                                                       {"TB_STOP", Qt::SHIFT | Qt::Key_F5},
                                                       {"TB_BREAK", Qt::Key_F6},
                                                       {"TB_RECORD", Qt::CTRL | Qt::Key_R},
                                                       {"TB_PRINTSCRIPT", Qt::CTRL | Qt::Key_P},
                                                       {"TB_SPECIALCOMMANDS", Qt::CTRL | Qt::Key_F1},
                                                       {"mnuNewCommandFile", Qt::CTRL | Qt::Key_N},
                                                       {"mnuOpenCommandFile", Qt::CTRL | Qt::Key_O},
                                                       {"mnuSaveCommandFile", Qt::CTRL | Qt::Key_S}};
  for (const auto& [name, key] : keys) EXPECT_EQ(Find<QAction>(name)->shortcut(), key) << name;
  EXPECT_TRUE(Find<QAction>("TB_BREAK")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Pause)));
}

TEST_F(KeyToolbarTest, TheKeysWorkFromListPaneAndCommandLine) {
  for (const char* name : {"CommandScript", "TermWin", "cmbCommand"}) {
    auto* widget = Find<QWidget>(name);
    widget->setFocus();
    const int before = script_.record.tag;
    PressKey(widget, Qt::Key_R, Qt::ControlModifier);
    EXPECT_NE(script_.record.tag, before) << name;
    Grid()->list().SetText(1, name);
    PressKey(widget, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(Row(1), "") << name;
  }
}

TEST_F(KeyToolbarTest, ABreakByKeyEndsARun) {
  FillLongList();
  QTimer::singleShot(20, &window_, [&] { PressKey(Grid(), Qt::Key_F6); });
  Press("TB_PLAY");
  EXPECT_TRUE(WasEndedEarly());
  EXPECT_EQ(script_.run.ScriptRunning, 0);
}

TEST_F(KeyToolbarTest, TheListIsSavedByKey) {
  const std::string file = folder_.Path("a.CMD");
  base::WriteBytes(file, "");
  window_.OpenCommandFile(file);
  ASSERT_NE(StartTyping("eins"), nullptr);
  PressKey(Grid()->findChild<QLineEdit*>(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(base::ReadBytes(file).substr(0, 6), "eins\r\n");
}

TEST_F(KeyToolbarTest, StopAndBreakStayInViewInTheSmallestWindow) {
  const auto in_view = [this](const char* key) {
    const QToolButton* button = ButtonOf(key);
    const auto* bar = Find<QToolBar>("Toolbar3");
    return button->isVisible() && bar->rect().contains(button->geometry());
  };
  for (const QSize size : {QSize(1160, 740), QSize(700, 430), QSize(320, 380)}) {
    window_.resize(size);
    QApplication::processEvents();
    for (const char* key : {"TB_PLAY", "TB_SINGLESTEP", "TB_BREAK", "TB_STOP"})
      EXPECT_TRUE(in_view(key)) << key << ' ' << size.width() << 'x' << size.height();
  }
  EXPECT_FALSE(in_view("TB_SPECIALCOMMANDS"));
  window_.resize(1160, 740);
  QApplication::processEvents();
  EXPECT_TRUE(in_view("TB_SPECIALCOMMANDS"));
  EXPECT_EQ(Find<QToolBar>("Toolbar3")->iconSize(), QSize(22, 22));
}

TEST_F(KeyToolbarTest, StopStaysInViewBesideTheFindBar) {
  const QFont usual = QApplication::font();
  const base::ScopeExit restore([&usual] { QApplication::setFont(usual); });
  QFont large = usual;
  large.setPointSize(14);
  QApplication::setFont(large);
  for (int height = 380; height < 600; height += 10) {
    window_.resize(700, height);
    Press("mnuFind");
    QApplication::processEvents();
    const QToolButton* stop = ButtonOf("TB_STOP");
    EXPECT_TRUE(stop->isVisible() && Find<QToolBar>("Toolbar3")->rect().contains(stop->geometry())) << height;
  }
}

TEST_F(KeyToolbarTest, WhatIsHiddenIsBehindAnArrowThatCanBeSeenOnADarkBar) {
  const QPalette usual = QApplication::palette();
  const base::ScopeExit restore([&usual] { QApplication::setPalette(usual); });
  QPalette dark = usual;
  dark.setColor(QPalette::Window, QColor(0x2B, 0x2B, 0x2B));
  dark.setColor(QPalette::Button, QColor(0x2B, 0x2B, 0x2B));
  dark.setColor(QPalette::ButtonText, Qt::white);
  dark.setColor(QPalette::WindowText, Qt::white);
  QApplication::setPalette(dark);
  window_.resize(700, 430);
  QApplication::processEvents();
  QToolButton* more = Extension();
  ASSERT_TRUE(more->isVisible());
  EXPECT_EQ(more->accessibleName(), QStringLiteral("Weitere Schaltflächen"));
  const QImage image = more->grab().toImage();
  int lightest = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) lightest = std::max(lightest, image.pixelColor(x, y).lightness());
  }
  EXPECT_GT(lightest, 0x80);
}

}  // namespace
}  // namespace kolvane::window
