#include "help/ui/help_window.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

#include "compiled_help.h"

namespace kolvane::help {
namespace {

class HelpWindowTest : public testing::Test {
 protected:
  HelpWindowTest() {
    terminal_.setObjectName(QStringLiteral("frmTerminal"));
    terminal_.setWindowModality(Qt::ApplicationModal);
    terminal_.show();
  }

  void Show(std::uint32_t topic, const std::string& anchor = {}) { help_.ShowTarget(file_, {topic, anchor}); }
  HelpPage* Page() { return help_.findChild<HelpPage*>(QStringLiteral("HelpPage")); }
  ContentsTree* Contents() { return help_.findChild<ContentsTree*>(QStringLiteral("HelpContents")); }
  QListWidget* Results() { return help_.findChild<QListWidget*>(QStringLiteral("HelpResults")); }
  QLineEdit* SearchField() { return help_.findChild<QLineEdit*>(QStringLiteral("HelpSearch")); }
  QAction* Action(const char* name) { return help_.findChild<QAction*>(QLatin1String(name)); }
  std::string Path() { return Page()->Path().toStdString(); }

  // A click that comes from the platform, where modality is checked.
  void ClickOn(QWidget* widget, const QPoint& where) {
    QWindow* window = widget->window()->windowHandle();
    QTest::mouseClick(window, Qt::LeftButton, {}, widget->mapTo(widget->window(), where));
  }
  void ClickContents(int row) {
    QTreeWidgetItem* item = Contents()->topLevelItem(row);
    ClickOn(Contents()->viewport(), Contents()->visualItemRect(item).center());
  }

  // Runs `work` while a modal dialog of the terminal is open.
  void DuringDialog(const std::function<void(QDialog&)>& work) {
    QDialog dialog(&terminal_);
    bool done = false;
    QTimer::singleShot(0, &dialog, [&] {
      work(dialog);
      done = true;
      dialog.accept();
    });
    dialog.exec();
    QCoreApplication::processEvents();
    EXPECT_TRUE(done);
  }

  const std::shared_ptr<const HelpFile> file_ = HelpFile::Open(KOLVANE_TEST_HELP);
  QWidget terminal_;
  QStringList printed_;
  HelpWindow help_{{[](const char*) { return QIcon(); },
                    [this](const QTextDocument& page, const QString& title, QWidget* parent) {
                      EXPECT_EQ(parent, &help_);
                      EXPECT_FALSE(page.isEmpty());
                      printed_ << title;
                    }},
                   &terminal_};
};

TEST_F(HelpWindowTest, OpensAtATopicAndNamesItInItsTitle) {
  Show(400);
  EXPECT_TRUE(help_.isVisible());
  EXPECT_EQ(help_.windowModality(), Qt::NonModal);
  EXPECT_EQ(Path(), "befehl-loop.html");
  EXPECT_TRUE(Page()->toPlainText().contains(QStringLiteral("Wiederholt Zeilen.")));
  EXPECT_EQ(help_.windowTitle(), QStringLiteral("$LOOP – Hilfe zum Kolvane Terminal"));
}

TEST_F(HelpWindowTest, APageOfTheSameNameInAnotherFileIsRead) {
  Show(11);
  const QString text = Page()->toPlainText();
  help_.ShowTarget(HelpFile::FromBytes(HelpWithoutPages()), {11, {}});
  EXPECT_EQ(Path(), "ausgabe.html");
  EXPECT_EQ(Page()->toPlainText().toStdString(),
            "Diese Seite kann nicht angezeigt werden, die Hilfedatei ist beschädigt.");
  Show(11);
  EXPECT_EQ(Page()->toPlainText(), text);
  ASSERT_NE(Contents()->currentItem(), nullptr);
  EXPECT_EQ(Contents()->currentItem()->text(0), "Ausgabe \"TermWin\"");
}

TEST_F(HelpWindowTest, FitsTheScreenAtFirst) {
  Show(1);
  EXPECT_EQ(help_.size(), QSize(1000, 680).boundedTo(help_.screen()->availableSize() * 0.9));
}

// The tool bar has no menu entry that would show it again.
TEST_F(HelpWindowTest, ItsToolBarCannotBeHidden) {
  Show(1);
  QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, help_.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(&help_, &event);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(HelpWindowTest, OpensTheStartPageForATopicThatTheFileLacks) {
  Show(999);
  EXPECT_EQ(Path(), "start.html");
}

TEST_F(HelpWindowTest, OpensAPageAtAnAnchorElseAtItsTop) {
  Show(11, "nirgends");
  EXPECT_EQ(Path(), "ausgabe.html");
  EXPECT_EQ(Page()->verticalScrollBar()->value(), 0);
  Show(11, "farben");
  EXPECT_GT(Page()->verticalScrollBar()->value(), 0);
}

TEST_F(HelpWindowTest, ShowsTheContentsAsATreeAndSelectsThePageOnDisplay) {
  Show(11);
  ASSERT_EQ(Contents()->topLevelItemCount(), 3);
  QTreeWidgetItem* first = Contents()->topLevelItem(0);
  EXPECT_EQ(first->text(0), QStringLiteral("Überblick"));
  EXPECT_EQ(first->child(0)->text(0), QStringLiteral("Hauptfenster & Menüs"));
  EXPECT_EQ(Contents()->currentItem(), first->child(0)->child(0));
}

TEST_F(HelpWindowTest, OpensAPageFromTheContents) {
  Show(1);
  ClickContents(1);
  EXPECT_EQ(Path(), "verbindung.html");
}

TEST_F(HelpWindowTest, OpensTheAnchorThatTheContentsName) {
  Show(1);
  Contents()->ShowEntries({{0, "Ausgabe", "ausgabe.html"}, {0, "Farben", "ausgabe.html", "farben"}});
  ClickContents(1);
  EXPECT_EQ(Path(), "ausgabe.html");
  EXPECT_GT(Page()->verticalScrollBar()->value(), 0);
  EXPECT_EQ(Contents()->currentItem(), Contents()->topLevelItem(1));
}

TEST_F(HelpWindowTest, GoesBackAndForwardAndToTheStartPage) {
  Show(1);
  EXPECT_FALSE(Action("HelpBack")->isEnabled());
  Show(300);
  Show(400);
  Action("HelpBack")->trigger();
  EXPECT_EQ(Path(), "verbindung.html");
  EXPECT_TRUE(Action("HelpForward")->isEnabled());
  Action("HelpForward")->trigger();
  EXPECT_EQ(Path(), "befehl-loop.html");
  EXPECT_FALSE(Action("HelpForward")->isEnabled());
  Action("HelpHome")->trigger();
  EXPECT_EQ(Path(), "start.html");
}

TEST_F(HelpWindowTest, ReturnsToThePositionWhereAPageWasLeft) {
  Show(11);
  Page()->verticalScrollBar()->setValue(200);
  Show(400);
  Action("HelpBack")->trigger();
  EXPECT_EQ(Page()->verticalScrollBar()->value(), 200);
}

TEST_F(HelpWindowTest, FollowsALinkByKeyboard) {
  Show(1);
  Page()->setFocus();
  QTest::keyClick(Page(), Qt::Key_Tab);
  QTest::keyClick(Page(), Qt::Key_Return);
  EXPECT_EQ(Path(), "hauptfenster.html");
}

TEST_F(HelpWindowTest, FollowsALinkToAnAnchor) {
  Show(1);
  Q_EMIT Page()->anchorClicked(QUrl(QStringLiteral("chm:/ausgabe.html#farben")));
  EXPECT_EQ(Path(), "ausgabe.html");
  EXPECT_GT(Page()->verticalScrollBar()->value(), 0);
}

TEST_F(HelpWindowTest, ShowsAnOutsideAddressInsteadOfFollowingIt) {
  Show(1);
  for (const char* address :
       {"https://example.invalid/handbuch", "file:///etc/hostname", "mailto:a@example.invalid"}) {
    Q_EMIT Page()->anchorClicked(QUrl(QLatin1String(address)));
    EXPECT_EQ(Path(), "start.html");
    EXPECT_EQ(help_.statusBar()->currentMessage(),
              QStringLiteral("Adresse außerhalb der Hilfe: ") + QLatin1String(address));
  }
}

TEST_F(HelpWindowTest, StaysOnThePageIfALinkHasNoTarget) {
  Show(1);
  Q_EMIT Page()->anchorClicked(QUrl(QStringLiteral("chm:/nirgends.html")));
  EXPECT_EQ(Path(), "start.html");
  EXPECT_FALSE(Action("HelpBack")->isEnabled());
}

TEST_F(HelpWindowTest, ShowsPicturesAndTheStyleOfTheFile) {
  Show(1);
  const QVariant picture =
      Page()->document()->resource(QTextDocument::ImageResource, QUrl(QStringLiteral("images/punkt.png")));
  const QImage image =
      picture.value<QImage>().isNull() ? QImage::fromData(picture.toByteArray()) : picture.value<QImage>();
  EXPECT_EQ(image.size(), QSize(8, 8));
  EXPECT_EQ(Page()->document()->begin().begin().fragment().charFormat().foreground().color(),
            QColor(0, 0x33, 0x66));
}

TEST_F(HelpWindowTest, ReadsNothingButItsFile) {
  Show(1);
  for (const char* url : {"file://" KOLVANE_TEST_HELP, "/etc/passwd", "https://example.invalid/a.png",
                          ":/qt-project.org/styles/commonstyle/images/file-16.png"}) {
    const QVariant resource =
        Page()->document()->resource(QTextDocument::ImageResource, QUrl(QLatin1String(url)));
    EXPECT_TRUE(resource.toByteArray().isEmpty()) << url;
    EXPECT_TRUE(resource.value<QImage>().isNull()) << url;
  }
}

TEST_F(HelpWindowTest, FindingAgainReplacesTheLastWords) {
  Show(1);
  Action("HelpFind")->trigger();
  QTest::keyClicks(SearchField(), QStringLiteral("ausgabe"));
  Action("HelpFind")->trigger();
  QTest::keyClicks(SearchField(), QStringLiteral("loop"));
  EXPECT_EQ(SearchField()->text(), QStringLiteral("loop"));
}

TEST_F(HelpWindowTest, SearchesAsWordsAreTyped) {
  Show(1);
  Action("HelpFind")->trigger();
  QTest::keyClicks(SearchField(), QStringLiteral("ausgabe"));
  ASSERT_EQ(Results()->count(), 2);
  EXPECT_EQ(Results()->item(0)->text(), QStringLiteral("Ausgabe \"TermWin\""));
  EXPECT_EQ(help_.findChild<QLabel*>(QStringLiteral("HelpHits"))->text(), QStringLiteral("2 Seiten"));
  QTest::keyClick(SearchField(), Qt::Key_Return);
  EXPECT_EQ(Path(), "ausgabe.html");
  EXPECT_EQ(Page()->textCursor().selectedText(), QStringLiteral("Ausgabe"));
}

TEST_F(HelpWindowTest, OpensAResultThatIsClicked) {
  Show(1);
  Action("HelpFind")->trigger();
  SearchField()->setText(QStringLiteral("ausgabe"));
  ClickOn(Results()->viewport(), Results()->visualItemRect(Results()->item(1)).center());
  EXPECT_EQ(Path(), "hauptfenster.html");
}

TEST_F(HelpWindowTest, GoesFromHitToHitAndOnToTheNextPage) {
  Show(1);
  Action("HelpFind")->trigger();
  SearchField()->setText(QStringLiteral("ausgabe"));
  QTest::keyClick(SearchField(), Qt::Key_Return);
  ASSERT_EQ(Path(), "ausgabe.html");
  const int first = Page()->textCursor().selectionStart();
  Action("HelpFindNext")->trigger();
  EXPECT_EQ(Path(), "ausgabe.html");
  EXPECT_GT(Page()->textCursor().selectionStart(), first);
  Action("HelpFindPrevious")->trigger();
  EXPECT_EQ(Page()->textCursor().selectionStart(), first);
  Page()->moveCursor(QTextCursor::End);
  Action("HelpFindNext")->trigger();
  EXPECT_EQ(Path(), "hauptfenster.html");
  EXPECT_EQ(Results()->currentRow(), 1);
  EXPECT_EQ(Page()->textCursor().selectedText().toLower(), QStringLiteral("ausgabe"));
  Page()->moveCursor(QTextCursor::Start);
  Action("HelpFindPrevious")->trigger();
  EXPECT_EQ(Path(), "ausgabe.html") << "past the end of the list";
  EXPECT_GT(Page()->textCursor().selectionStart(), first) << "from the page's end";
}

TEST_F(HelpWindowTest, FindsUmlautsThatAreSpelledOut) {
  Show(1);
  SearchField()->setText(QStringLiteral("GROESSE"));
  ASSERT_EQ(Results()->count(), 1);
  QTest::keyClick(SearchField(), Qt::Key_Return);
  EXPECT_EQ(Page()->textCursor().selectedText().toLower(), QStringLiteral("größe"));
  SearchField()->setText(QStringLiteral("größe"));
  QTest::keyClick(SearchField(), Qt::Key_Return);
  EXPECT_EQ(Page()->textCursor().selectedText().toLower(), QStringLiteral("größe"));
}

TEST_F(HelpWindowTest, F3StaysOnThePageIfNothingIsFound) {
  Show(1);
  const std::string page = Path();
  SearchField()->setText(QStringLiteral("steht nirgends xyzzy"));
  ASSERT_EQ(Results()->count(), 0);
  Action("HelpFindNext")->trigger();
  Action("HelpFindPrevious")->trigger();
  EXPECT_EQ(Path(), page);
}

TEST_F(HelpWindowTest, WithoutASearchF3OpensTheSearch) {
  Show(1);
  Action("HelpFindNext")->trigger();
  EXPECT_TRUE(SearchField()->isVisible());
  EXPECT_EQ(help_.focusWidget(), SearchField());
}

TEST_F(HelpWindowTest, ReportsThatNothingIsFoundOnlyAfterASearch) {
  Show(1);
  SearchField()->setText(QStringLiteral("xyzzy"));
  auto* hits = help_.findChild<QLabel*>(QStringLiteral("HelpHits"));
  EXPECT_EQ(hits->text(), QStringLiteral("Nichts gefunden"));
  QTest::keyClick(SearchField(), Qt::Key_Return);
  EXPECT_EQ(Path(), "start.html");
  SearchField()->clear();
  EXPECT_EQ(hits->text(), QString());
}

TEST_F(HelpWindowTest, PrintsThePageOnDisplay) {
  Show(300);
  Action("HelpPrint")->trigger();
  EXPECT_EQ(printed_, QStringList{QStringLiteral("Verbindung – Hilfe zum Kolvane Terminal")});
}

TEST_F(HelpWindowTest, ChangesItsFontSize) {
  Show(1);
  const int normal = Page()->font().pointSize();
  Action("HelpLarger")->trigger();
  EXPECT_EQ(Page()->font().pointSize(), normal + 1);
  Action("HelpSmaller")->trigger();
  Action("HelpSmaller")->trigger();
  EXPECT_EQ(Page()->font().pointSize(), normal - 1);
  Action("HelpNormal")->trigger();
  EXPECT_EQ(Page()->font().pointSize(), normal);
}

TEST_F(HelpWindowTest, HasItsKeys) {
  const std::pair<const char*, QKeySequence> keys[] = {{"HelpBack", Qt::ALT | Qt::Key_Left},
                                                       {"HelpForward", Qt::ALT | Qt::Key_Right},
                                                       {"HelpFind", Qt::CTRL | Qt::Key_F},
                                                       {"HelpFindNext", Qt::Key_F3},
                                                       {"HelpFindPrevious", Qt::SHIFT | Qt::Key_F3},
                                                       {"HelpLarger", Qt::CTRL | Qt::Key_Plus},
                                                       {"HelpSmaller", Qt::CTRL | Qt::Key_Minus},
                                                       {"HelpNormal", Qt::CTRL | Qt::Key_0},
                                                       {"HelpPrint", Qt::CTRL | Qt::Key_P},
                                                       {"HelpHome", Qt::ALT | Qt::Key_Home},
                                                       {"HelpClose", Qt::Key_Escape}};
  for (const auto& [name, key] : keys) EXPECT_TRUE(Action(name)->shortcuts().contains(key)) << name;
}

TEST_F(HelpWindowTest, NamesItsButtonsInGerman) {
  QStringList texts;
  for (const QAction* action : help_.findChild<QToolBar*>(QStringLiteral("HelpToolbar"))->actions())
    texts << action->text();
  EXPECT_EQ(texts.join(QLatin1Char('|')), QStringLiteral("Zurück|Vor|Startseite|Drucken…"));
}

TEST_F(HelpWindowTest, IsHiddenByEscapeAndReturnsWithItsHistory) {
  Show(1);
  Action("HelpClose")->trigger();
  EXPECT_FALSE(help_.isVisible());
  Show(300);
  EXPECT_TRUE(help_.isVisible());
  Action("HelpBack")->trigger();
  EXPECT_EQ(Path(), "start.html");
}

TEST_F(HelpWindowTest, TakesInputWhileTheTerminalIsModal) {
  Show(1);
  ClickContents(1);
  EXPECT_EQ(Path(), "verbindung.html");
}

TEST_F(HelpWindowTest, TakesInputWhileADialogIsOpenedAboveTheTerminal) {
  Show(1);
  DuringDialog([this](QDialog&) {
    ClickContents(1);
    EXPECT_EQ(Path(), "verbindung.html");
  });
  ClickContents(2);
  EXPECT_EQ(Path(), "befehl-loop.html");
}

TEST_F(HelpWindowTest, TakesInputWhenItIsOpenedFromADialog) {
  DuringDialog([this](QDialog&) {
    Show(1);
    ClickContents(1);
    EXPECT_EQ(Path(), "verbindung.html");
  });
  EXPECT_TRUE(help_.isVisible());
  ClickContents(2);
  EXPECT_EQ(Path(), "befehl-loop.html");
}

TEST_F(HelpWindowTest, TakesInputUnderADialogOfADialogAndAfterwards) {
  Show(1);
  DuringDialog([this](QDialog& outer) {
    {
      QDialog inner(&outer);
      QTimer::singleShot(0, &inner, [&] {
        ClickContents(1);
        EXPECT_EQ(Path(), "verbindung.html");
        inner.accept();
      });
      inner.exec();
    }
    QCoreApplication::processEvents();
    ClickContents(2);
    EXPECT_EQ(Path(), "befehl-loop.html");
  });
}

TEST_F(HelpWindowTest, IsBlockedByItsOwnDialog) {
  Show(1);
  QDialog own(&help_);
  QTimer::singleShot(0, &own, [&] {
    ClickContents(1);
    EXPECT_EQ(Path(), "start.html");
    own.accept();
  });
  own.exec();
  ClickContents(1);
  EXPECT_EQ(Path(), "verbindung.html");
}

TEST_F(HelpWindowTest, LeavesTheTerminalBlockedByADialog) {
  auto* button = new QPushButton(&terminal_);
  button->resize(40, 20);
  button->show();
  QSignalSpy clicks(button, &QPushButton::clicked);
  Show(1);
  DuringDialog([&](QDialog&) { ClickOn(button, QPoint(10, 10)); });
  EXPECT_EQ(clicks.count(), 0);
  ClickOn(button, QPoint(10, 10));
  EXPECT_EQ(clicks.count(), 1);
}

TEST_F(HelpWindowTest, FitsTheScreenWhenItIsFirstShown) {
  Show(1);
  const QSize screen = help_.screen()->availableSize();
  EXPECT_LT(help_.width(), screen.width());
  EXPECT_LT(help_.height(), screen.height());
}

TEST_F(HelpWindowTest, ThePageKeepsMostOfANarrowWindow) {
  Show(1);
  help_.resize(500, 350);
  QCoreApplication::processEvents();
  EXPECT_EQ(help_.width(), 500);
  EXPECT_GE(Page()->width(), 300);
  EXPECT_TRUE(Contents()->isVisible());
}

TEST_F(HelpWindowTest, StartsANewHistoryWithAnotherFile) {
  Show(1);
  Show(300);
  help_.ShowTarget(HelpFile::Open(KOLVANE_TEST_HELP), {300, {}});
  EXPECT_EQ(Path(), "verbindung.html");
  EXPECT_TRUE(Page()->toPlainText().contains(QStringLiteral("Schnittstelle")));
  EXPECT_FALSE(Action("HelpBack")->isEnabled());
}

TEST_F(HelpWindowTest, SearchesAnotherFileForTheSameWords) {
  Show(1);
  SearchField()->setText("schnittstelle");
  ASSERT_GT(Results()->count(), 0);
  const std::shared_ptr<const HelpFile> without_pages = HelpFile::FromBytes(HelpWithoutPages());
  ASSERT_NE(without_pages, nullptr);
  help_.ShowTarget(without_pages, {});
  EXPECT_EQ(Results()->count(), 0);
  Show(1);
  EXPECT_GT(Results()->count(), 0);
}

}  // namespace
}  // namespace kolvane::help
