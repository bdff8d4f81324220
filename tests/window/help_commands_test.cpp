#include "window/help_commands.h"

#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

#include "base/fake_prompt.h"
#include "device/ui/connection_dialog.h"
#include "help/topics.h"
#include "window_fixture.h"

namespace kolvane::window {
namespace {

class Help : public WindowFixture {
 protected:
  Help() { std::filesystem::copy_file(KOLVANE_COMPILED_HELP, folder_.Path("Terminal.chm")); }

  help::HelpWindow* Viewer() { return window_.findChild<help::HelpWindow*>(QStringLiteral("HelpWindow")); }
  bool IsOpen() { return Viewer() != nullptr && Viewer()->isVisible(); }

  // The page shown; empty if none is.
  std::string Page() {
    return IsOpen() ? Viewer()->findChild<help::HelpPage*>()->Path().toStdString() : std::string();
  }
  std::string PageOf(std::uint32_t topic) {
    return help::HelpFile::Open(KOLVANE_COMPILED_HELP)->TopicPage(topic);
  }

  // Sent through the platform, like a key of the keyboard.
  static void PressF1(QWidget* widget, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(widget, Qt::Key_F1, modifiers);
  }
};

TEST_F(Help, ButtonOpensTopicOne) {
  Press("TB_HELP");
  EXPECT_EQ(Page(), PageOf(1));
  EXPECT_EQ(Viewer()->windowModality(), Qt::NonModal);
}

TEST_F(Help, NoPageIsWiderThanItsWindowAsItFirstOpens) {
  Press("TB_HELP");
  Viewer()->resize(help::HelpWindow::kFirstSize);
  auto* page = Viewer()->findChild<help::HelpPage*>();
  QString wide;
  for (const help::ContentsEntry& entry : page->file()->contents()) {
    page->ShowPage(QString::fromStdString(entry.page));
    QCoreApplication::processEvents();
    if (const int over = page->horizontalScrollBar()->maximum(); over > 0)
      wide += QString::fromStdString(entry.page) + QStringLiteral(" by %1\n").arg(over);
  }
  EXPECT_EQ(wide.toStdString(), "");
}

// Returns the first text whose size does not follow the page's font.
QString TextOfItsOwnSize(const QTextDocument& page) {
  for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      if (part.fragment().charFormat().hasProperty(QTextFormat::FontPointSize)) return part.fragment().text();
    }
  }
  return {};
}

TEST_F(Help, TheKeysForTheFontSizeChangeAllTextOfAPage) {
  Press("TB_HELP");
  auto* page = Viewer()->findChild<help::HelpPage*>();
  for (const help::ContentsEntry& entry : page->file()->contents()) {
    page->ShowPage(QString::fromStdString(entry.page));
    EXPECT_EQ(TextOfItsOwnSize(*page->document()), QString()) << entry.page;
  }
}

TEST_F(Help, MissingFileShowsNothing) {
  std::filesystem::remove(folder_.Path("Terminal.chm"));
  AnswerBoxes();
  Press("TB_HELP");
  PressF1(Pane());
  QCoreApplication::processEvents();
  EXPECT_EQ(Viewer(), nullptr);
  EXPECT_EQ(boxes_.texts(), QStringList());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Help, DamagedFileShowsNothing) {
  const std::string whole = base::ReadBytes(folder_.Path("Terminal.chm"));
  AnswerBoxes();
  for (const std::string& bytes :
       {std::string(), std::string("ITSF"), whole.substr(0, 3000), std::string(4000, 'x')}) {
    base::WriteBytes(folder_.Path("Terminal.chm"), bytes);
    Press("TB_HELP");
    QCoreApplication::processEvents();
    EXPECT_EQ(Viewer(), nullptr) << bytes.size();
  }
  EXPECT_EQ(boxes_.texts(), QStringList());
}

TEST_F(Help, MissingFileDoesNotChangeAnOpenWindow) {
  Press("TB_HELP");
  std::filesystem::remove(folder_.Path("Terminal.chm"));
  PressF1(Pane());
  EXPECT_EQ(Page(), PageOf(1));
}

TEST_F(Help, FileIsFoundWithoutRegardToCase) {
  std::filesystem::rename(folder_.Path("Terminal.chm"), folder_.Path("TERMINAL.CHM"));
  Press("TB_HELP");
  EXPECT_EQ(Page(), PageOf(1));
}

TEST_F(Help, OpensTheNamedFileInsteadOfItsOwn) {
  const std::string other = folder_.Path("other.chm");
  std::filesystem::rename(folder_.Path("Terminal.chm"), other);
  base::FakePrompt prompt;
  HelpCommands commands(&window_, {folder_.Path("")}, prompt);
  commands.ShowHelp(help::kStartTopic);
  EXPECT_FALSE(IsOpen());
  commands.ShowHelp(help::kStartTopic, other);
  EXPECT_EQ(Page(), PageOf(1));
  std::filesystem::rename(other, folder_.Path("Terminal.chm"));
  commands.Close();
  commands.ShowHelp(200);
  EXPECT_EQ(Page(), PageOf(200)) << "the file is searched for at each call";
}

TEST_F(Help, ClosesWithTheTerminal) {
  Press("TB_HELP");
  ASSERT_TRUE(IsOpen());
  window_.close();
  EXPECT_FALSE(IsOpen());
}

TEST_F(Help, LeavesTheTerminalOpenWhenItCloses) {
  Press("TB_HELP");
  Viewer()->close();
  EXPECT_TRUE(window_.isVisible());
}

TEST_F(Help, F1OpensThePageOfWhatHasTheFocus) {
  PressF1(Find<QComboBox>("cmbCommand")->lineEdit());
  EXPECT_EQ(Page(), PageOf(200));
  PressF1(Pane());
  EXPECT_EQ(Page(), PageOf(11));
  PressF1(Find<QAbstractItemView>("CommandScript"));
  EXPECT_EQ(Page(), PageOf(12));
  PressF1(Find<QLineEdit>("ReceiveTimo"));
  EXPECT_EQ(Page(), PageOf(210));
}

TEST_F(Help, F1InAListOfCompletionsOpensThePageOfItsField) {
  auto* grid = Find<QAbstractItemView>("CommandScript");
  PressF1(grid);
  const std::string page = Page();
  Viewer()->close();
  grid->edit(grid->model()->index(0, 1));
  QTest::keyClicks(grid->findChild<QLineEdit*>(), QStringLiteral("$RE"));
  QWidget* completions = QApplication::activePopupWidget();
  ASSERT_NE(completions, nullptr);
  PressF1(completions);
  EXPECT_EQ(Page(), page);
  EXPECT_FALSE(completions->isVisible());
}

TEST_F(Help, F1OnAToolbarButtonOpensThePageOfThatButton) {
  auto* bar = Find<QToolBar>("Toolbar1");
  PressF1(bar->widgetForAction(Find<QAction>("TB_CONNECT")));
  EXPECT_EQ(Page(), PageOf(120));
}

TEST_F(Help, F1InAMenuOpensThePageOfTheActiveItemAndClosesTheMenu) {
  auto* menu = Find<QMenu>("mnuFile");
  menu->popup(QPoint(0, 0));
  menu->setActiveAction(Find<QAction>("mnuOpenLog"));
  PressF1(menu);
  EXPECT_FALSE(menu->isVisible());
  EXPECT_EQ(Page(), PageOf(122));
}

TEST_F(Help, AfterF1InAMenuOpenedByKeyboardTheFocusIsWhereItWas) {
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  Pane()->setFocus();
  QTest::keyClick(Pane(), Qt::Key_V, Qt::AltModifier);
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_EQ(menu, Find<QMenu>("mnuCon"));
  ASSERT_EQ(window_.focusWidget(), window_.menuBar());
  PressF1(menu);
  EXPECT_TRUE(IsOpen());
  Viewer()->close();
  EXPECT_EQ(window_.focusWidget(), Pane());
}

TEST_F(Help, F1InAMenuWithoutAnActiveItemOpensThePageOfTheMenu) {
  auto* menu = Find<QMenu>("mnuPOP1");
  menu->popup(QPoint(0, 0));
  PressF1(menu);
  EXPECT_EQ(Page(), PageOf(103));
}

TEST_F(Help, F1InTheConnectionDialogOpensAHelpWindowThatCanBeUsed) {
  OnDialog<device::ConnectionDialog>([this](QDialog& dialog) {
    PressF1(dialog.findChild<QWidget*>(QStringLiteral("GPIBAddr")));
    EXPECT_EQ(Page(), PageOf(303));
    PressF1(dialog.findChild<QWidget*>(QStringLiteral("Port_8")));
    EXPECT_EQ(Page(), PageOf(315));
    QTest::keyClick(Viewer()->windowHandle(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Page(), PageOf(303));
    dialog.reject();
  });
  Press("TB_PORTCONFIGURE");
  QCoreApplication::processEvents();
  EXPECT_EQ(dialogs_, 1);
  QTest::keyClick(Viewer()->windowHandle(), Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(Page(), PageOf(315));
}

TEST_F(Help, F1WorksInFileDialogsAndMessages) {
  OnDialog<QFileDialog>([this](QFileDialog& dialog) {
    PressF1(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")));
    EXPECT_EQ(Page(), PageOf(17));
    static_cast<QDialog&>(dialog).reject();
  });
  Press("TB_OPENLOG");
  OnDialog<QMessageBox>([this](QMessageBox& box) {
    PressF1(box.button(QMessageBox::Ok));
    EXPECT_EQ(Page(), PageOf(22));
    box.accept();
  });
  MessagePrompt(&window_).ShowError("x");
  EXPECT_EQ(dialogs_, 2);
}

TEST_F(Help, F1InAMessageOpensWhatExplainsIt) {
  OnDialog<QMessageBox>([this](QMessageBox& box) {
    PressF1(box.button(QMessageBox::Ok));
    EXPECT_EQ(Page(), PageOf(602));
    EXPECT_EQ(Viewer()->findChild<help::HelpPage*>()->source().fragment(), "s22");
    box.accept();
  });
  MessagePrompt(&window_).ShowError("Fehler beim Verbindungsaufbau: -22 (-22)");
  EXPECT_EQ(dialogs_, 1);
}

TEST_F(Help, TheButtonOfFileDialogsOpensTheirPage) {
  for (const char* command : {"TB_OPENLOG", "mnuOpenCommandFile"}) {
    OnDialog<QFileDialog>([this](QFileDialog& dialog) {
      auto* button = dialog.findChild<QPushButton*>(QStringLiteral("HelpButton"));
      ASSERT_NE(button, nullptr);
      EXPECT_EQ(button->text(), "&Hilfe");
      button->click();
      EXPECT_EQ(Page(), PageOf(17));
      EXPECT_TRUE(dialog.isVisible());
      static_cast<QDialog&>(dialog).reject();
    });
    Press(command);
  }
  EXPECT_EQ(dialogs_, 2);
}

TEST_F(Help, AMessageWithAStatusHasAButtonThatDoesWhatF1Does) {
  OnDialog<QMessageBox>([this](QMessageBox& box) {
    PressF1(box.button(QMessageBox::Ok));
    const std::string page = Page();
    const QUrl source = Viewer()->findChild<help::HelpPage*>()->source();
    Viewer()->close();
    auto* button = box.findChild<QPushButton*>(QStringLiteral("HelpButton"));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), "&Hilfe");
    button->click();
    EXPECT_TRUE(box.isVisible());
    EXPECT_NE(Page(), "");
    EXPECT_EQ(Page(), page);
    EXPECT_EQ(Viewer()->findChild<help::HelpPage*>()->source(), source);
    EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Ok));
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_FALSE(box.isVisible());
  });
  library_.results["OpenPort"] = {-10};
  Press("TB_CONNECT");
  EXPECT_EQ(dialogs_, 1);
}

TEST_F(Help, AMessageWithoutAStatusHasNoSuchButton) {
  for (const char* text : {"x", "Fehler (10)", "Fehler (-)", "Fehler (-10) x", "(-1a)"}) {
    OnDialog<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.findChild<QPushButton*>(QStringLiteral("HelpButton")), nullptr);
      box.accept();
    });
    MessagePrompt(&window_).ShowError(text);
  }
  EXPECT_EQ(dialogs_, 5);
}

TEST_F(Help, F1InTheHelpWindowOpensItsOwnPage) {
  Press("TB_HELP");
  PressF1(Viewer()->findChild<help::HelpPage*>());
  EXPECT_EQ(Page(), PageOf(16));
}

TEST_F(Help, F1WithAnotherKeyIsSomethingElse) {
  for (const Qt::KeyboardModifier modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier})
    PressF1(Pane(), modifier);
  EXPECT_FALSE(IsOpen());
}

// A window of the host, which uses F1 itself.
struct HostWindow final : QWidget {
  void keyPressEvent(QKeyEvent* event) override { keys += event->key() == Qt::Key_F1 ? 1 : 0; }
  int keys = 0;
};

TEST_F(Help, DoesNotTakeTheHostsF1) {
  HostWindow host;
  host.show();
  PressF1(&host);
  EXPECT_EQ(host.keys, 1);
  EXPECT_FALSE(IsOpen());
}

TEST_F(Help, PageIsPrintedToAFileIfThereIsNoPrinter) {
  Press("TB_HELP");
  ChooseFile(folder_.Path("hilfe"));
  Viewer()->findChild<QAction*>(QStringLiteral("HelpPrint"))->trigger();
  EXPECT_EQ(dialogs_, 1);
  EXPECT_TRUE(base::ReadBytes(folder_.Path("hilfe.PDF")).starts_with("%PDF"));
}

TEST_F(Help, KnowsEachActionOfTheWindow) {
  for (const QAction* action : window_.findChildren<QAction*>()) {
    const std::string name = action->objectName().toStdString();
    const bool has_our_name = name.starts_with("mnu") || name.starts_with("TB_");
    // The popup menu's commands on the pane's or list's text are explained on the menu's page.
    const bool of_popup = action->parent() == Find<QMenu>("mnuPOP1");
    if (has_our_name && !of_popup) {
      EXPECT_TRUE(help::WidgetTopic(name).has_value()) << name;
    }
  }
}

// Every named widget in a window must lead to a topic below the window's own.
void ExpectTopics(const QWidget& window) {
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->objectName().isEmpty() || widget->objectName().startsWith(QLatin1String("qt_"))) continue;
    if (widget->focusPolicy() == Qt::NoFocus) continue;
    bool known = false;
    for (const QWidget* one = widget; one != nullptr && one != &window && !known; one = one->parentWidget())
      known = help::WidgetTopic(one->objectName().toStdString()).has_value();
    EXPECT_TRUE(known) << widget->objectName().toStdString();
  }
}

TEST_F(Help, KnowsEachNamedWidgetOfTheWindow) { ExpectTopics(window_); }

TEST_F(Help, KnowsEachNamedFieldOfTheConnectionDialog) {
  OnDialog<device::ConnectionDialog>([](QDialog& dialog) {
    for (const QWidget* field : dialog.findChildren<QWidget*>()) {
      if (field->objectName().isEmpty() || field->objectName().startsWith(QLatin1String("qt_"))) continue;
      EXPECT_NE(help::HelpKey::TargetOf(field).topic, 10u) << field->objectName().toStdString();
      EXPECT_NE(help::HelpKey::TargetOf(field).topic, help::kStartTopic) << field->objectName().toStdString();
    }
    dialog.reject();
  });
  Press("TB_PORTCONFIGURE");
  EXPECT_EQ(dialogs_, 1);
}

TEST(HelpAfterTheTerminal, F1IsTheHostsAgain) {
  HostWindow host;
  host.show();
  QWidget terminal;
  int shown = 0;
  {
    const help::HelpKey key(&terminal, [&shown](const help::HelpTarget&) { ++shown; });
    QTest::keyClick(&terminal, Qt::Key_F1);
  }
  QTest::keyClick(&terminal, Qt::Key_F1);
  EXPECT_EQ(shown, 1);
}

}  // namespace
}  // namespace kolvane::window
