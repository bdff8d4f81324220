#include "window/main_window.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "window/sending_fixture.h"

namespace kolvane::window {
namespace {

class MainWindowTest : public SendingFixture {
 protected:
  QString StatusText() { return Find<QLabel>("StatusBar1_1")->text(); }

  void Pick(const char* list, int index) { Find<QComboBox>(list)->setCurrentIndex(index); }
};

TEST_F(MainWindowTest, ShowsTheDefaults) {
  EXPECT_EQ(window_.objectName(), "frmTerminal");
  EXPECT_EQ(window_.windowTitle(), "Kolvane Terminal");
  EXPECT_FALSE(window_.windowIcon().isNull());
  EXPECT_EQ(Find<QComboBox>("cmbReceiveMode")->currentText(), "Endezeichen");
  EXPECT_EQ(Find<QComboBox>("cmbReceiveFormat")->currentText(), "ASCII");
  EXPECT_EQ(Find<QComboBox>("RcvTermChar")->currentText(), "CRLF");
  EXPECT_EQ(Find<QComboBox>("SendTermChar")->currentText(), "LF");
  EXPECT_EQ(Find<QLineEdit>("ReceiveTimo")->text(), "3000");
  EXPECT_FALSE(Find<QLineEdit>("BinChars")->isVisible());
  EXPECT_TRUE(Find<QAction>("mnuOption_0")->isChecked());
  EXPECT_FALSE(Find<QAction>("mnuOption_1")->isChecked());
  EXPECT_FALSE(Find<QAction>("mnuOption_2")->isChecked());
  EXPECT_EQ(StatusText(), "Nicht verbunden");
  EXPECT_EQ(Find<QLabel>("StatusBar2_1")->text(), "Logdatei: Keine");
  EXPECT_EQ(Find<QLabel>("StatusBar2_2")->text(), "Befehlsliste: Unbenannt");
}

TEST_F(MainWindowTest, HasAnEmptyListOf1024Rows) {
  const auto* model = Find<QAbstractItemView>("CommandScript")->model();
  EXPECT_EQ(model->rowCount(), 1024);
  EXPECT_EQ(model->columnCount(), 2);
  EXPECT_EQ(model->headerData(1, Qt::Horizontal).toString(), "Befehlsliste");
  EXPECT_EQ(model->headerData(0, Qt::Horizontal).toString(), " ");
}

TEST_F(MainWindowTest, LabelsTheTerminatorLists) {
  QStringList labels;
  for (const QLabel* label : window_.findChildren<QLabel*>()) {
    if (label->buddy() == Find<QComboBox>("RcvTermChar") || label->buddy() == Find<QComboBox>("SendTermChar"))
      labels << label->text().remove(u'&');
  }
  EXPECT_EQ(labels, QStringList({"Endezeichen Empfang", "Endezeichen Senden"}));
}

TEST_F(MainWindowTest, ListsTheToolbarsButtonsInOrder) {
  QStringList keys;
  for (const QAction* action : Find<QToolBar>("Toolbar1")->actions()) {
    if (!action->isSeparator()) keys << action->objectName();
  }
  EXPECT_EQ(
      keys.join(' '),
      "TB_SAVETERMWIN TB_PRINT TB_PORTCONFIGURE TB_CONNECT TB_FLUSH TB_OPENLOG TB_CLOSELOG TB_RECORDLOG "
      "TB_INSPECT TB_HELP");
}

TEST_F(MainWindowTest, ConnectsAndDisconnects) {
  Press("TB_CONNECT");
  EXPECT_EQ(StatusText(), "TCP/IP: 10.0.0.5, Port 7");
  EXPECT_EQ(Find<QAction>("TB_CONNECT")->property("Tag").toString(), "1");
  EXPECT_EQ(Find<QAction>("TB_CONNECT")->property("Image").toInt(), 20);
  EXPECT_EQ(Find<QAction>("TB_CONNECT")->toolTip(), "Verbindung trennen");
  EXPECT_TRUE(PaneText().endsWith("  Verbindung hergestellt mit TCP/IP: 10.0.0.5, Port 7"));
  Press("TB_CONNECT");
  EXPECT_EQ(StatusText(), "Nicht verbunden");
  EXPECT_EQ(Find<QAction>("TB_CONNECT")->property("Image").toInt(), 21);
  EXPECT_TRUE(PaneText().endsWith("  Verbindung getrennt von TCP/IP: 10.0.0.5, Port 7"));
}

TEST_F(MainWindowTest, AFailedConnectShowsAMessageAndChangesNothing) {
  library_.results["OpenPort"] = {-14};
  EXPECT_EQ(MessageDuring([&] { Press("TB_CONNECT"); }), "Fehler beim Verbindungsaufbau: -14 (-14)");
  EXPECT_EQ(StatusText(), "Nicht verbunden");
  const auto* button = Find<QAction>("TB_CONNECT");
  EXPECT_EQ(button->property("Tag").toString(), "0");
  EXPECT_EQ(button->property("Image").toInt(), 21);
  EXPECT_EQ(button->toolTip(), "Verbindung aufbauen");
  EXPECT_EQ(PaneText(), "");
}

TEST_F(MainWindowTest, AMissingPortLibraryIsNamed) {
  source_.library = nullptr;
  EXPECT_TRUE(MessageDuring([&] {
                Press("TB_CONNECT");
              }).startsWith("Fehler beim Verbindungsaufbau: Die Portbibliothek fehlt."));
}

TEST_F(MainWindowTest, AnExchangeShowsCommandAndAnswer) {
  Connect();
  library_.replies = {{"12.5\r\n"}};
  const QString before = PaneText();
  Send("MSV?");
  EXPECT_EQ(PaneText(), before + "\nMSV?\n12.5");
  EXPECT_EQ(Count("WritePort(\"MSV?\n\")"), 1);
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->lineEdit()->selectedText(), "MSV?");
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->count(), 1);
}

TEST_F(MainWindowTest, TheSendButtonAlsoSends) {
  Connect();
  library_.replies = {{"1\r\n"}};
  Find<QComboBox>("cmbCommand")->setCurrentText("ONE?");
  QTest::mouseClick(Find<QPushButton>("cmdSend"), Qt::LeftButton);
  EXPECT_TRUE(PaneText().endsWith("ONE?\n1"));
}

TEST_F(MainWindowTest, EnterOnAnEmptyBoxSendsNothing) {
  Connect();
  Send("");
  EXPECT_TRUE(library_.calls.empty());
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->count(), 0);
}

TEST_F(MainWindowTest, TheHistoryIsNewestFirstAndFullAt256) {
  Connect();
  for (int i = 0; i < 257; ++i) Send(QStringLiteral("C%1").arg(i));
  const auto* box = Find<QComboBox>("cmbCommand");
  EXPECT_EQ(box->count(), 256);
  EXPECT_EQ(box->itemText(0), "C256");
  EXPECT_EQ(box->itemText(255), "C1");
  Send("c256");
  EXPECT_EQ(box->itemText(0), "C256");
  EXPECT_EQ(box->count(), 256);
}

TEST_F(MainWindowTest, ATimeoutThatIsNotANumberIsReportedAndNothingIsSentTwice) {
  Connect();
  Find<QLineEdit>("ReceiveTimo")->setText("bald");
  const QString sent_text =
      ". Die Antwort auf den Befehl steht noch aus, „Eingangspuffer flushen“ verwirft sie.";
  EXPECT_EQ(MessageDuring([&] { Send("MSV?"); }), "Timeout (ms): Typen unverträglich" + sent_text);
  EXPECT_EQ(Count("WritePort(\"MSV?\n\")"), 1);
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->itemText(0), "MSV?");
  Find<QLineEdit>("ReceiveTimo")->setText("99999999999");
  EXPECT_EQ(MessageDuring([&] { Send("MSV?"); }), "Timeout (ms): Überlauf" + sent_text);
}

TEST_F(MainWindowTest, TheCountIsShownOnlyInItsModeAndChecked) {
  Connect();
  Pick("cmbReceiveMode", 2);
  EXPECT_TRUE(Find<QLineEdit>("BinChars")->isVisible());
  EXPECT_EQ(Find<QComboBox>("RcvTermChar")->currentText(), "Kein");
  Find<QLineEdit>("BinChars")->setText("1026");
  library_.replies = {{std::string(1026, 'x')}};
  EXPECT_EQ(MessageDuring([&] { Send("B?"); }), "Anzahl: Index außerhalb des gültigen Bereichs");
  Find<QLineEdit>("BinChars")->setText("");
  EXPECT_TRUE(MessageDuring([&] { Send("B?"); }).startsWith("Anzahl: Typen unverträglich. Die Antwort "));
  Pick("cmbReceiveMode", 0);
  EXPECT_FALSE(Find<QLineEdit>("BinChars")->isVisible());
}

TEST_F(MainWindowTest, CountedBytesAreShownAsCodes) {
  Connect();
  Pick("cmbReceiveFormat", 1);
  EXPECT_EQ(Find<QComboBox>("cmbReceiveMode")->currentText(), "Auto");
  Pick("cmbReceiveMode", 2);
  Find<QLineEdit>("BinChars")->setText("4");
  library_.replies = {{"\r\nA\xFF"}};
  Send("B?");
  EXPECT_TRUE(PaneText().endsWith("\n<0D><0A><41><FF>"));
}

TEST_F(MainWindowTest, PickingAsciiShowsAutoAlthoughTheTerminatorApplies) {
  Pick("cmbReceiveFormat", 1);
  Pick("cmbReceiveFormat", 0);
  EXPECT_EQ(Find<QComboBox>("cmbReceiveMode")->currentText(), "Auto");
  EXPECT_EQ(terminal_.receive.mode, 0);
  EXPECT_EQ(Find<QComboBox>("RcvTermChar")->currentText(), "CRLF");
}

TEST_F(MainWindowTest, ATerminatorSetByPickingIsTheListsCurrentItem) {
  const auto* list = Find<QComboBox>("RcvTermChar");
  Find<QComboBox>("RcvTermChar")->setCurrentText("59");
  Pick("cmbReceiveMode", 1);
  EXPECT_EQ(list->currentIndex(), 3);
  Pick("cmbReceiveMode", 0);
  EXPECT_EQ(list->currentIndex(), 0);
  Pick("cmbReceiveFormat", 1);
  EXPECT_EQ(list->currentIndex(), 3);
  EXPECT_EQ(terminal_.receive.receive_terminator, "");
  Pick("cmbReceiveFormat", 0);
  EXPECT_EQ(list->currentIndex(), 0);
}

TEST_F(MainWindowTest, LoadedTerminatorsAreTheListsCurrentItems) {
  terminal_.receive = {.mode = 1, .receive_terminator = "", .send_terminator = "\r"};
  window_.Load();
  EXPECT_EQ(Find<QComboBox>("RcvTermChar")->currentIndex(), 3);
  EXPECT_EQ(Find<QComboBox>("SendTermChar")->currentIndex(), 1);
  terminal_.receive.send_terminator = ";";
  window_.Load();
  EXPECT_EQ(Find<QComboBox>("SendTermChar")->currentIndex(), -1);
  EXPECT_EQ(Find<QComboBox>("SendTermChar")->currentText(), ";");
  EXPECT_EQ(terminal_.receive.send_terminator, ";");
}

TEST_F(MainWindowTest, TheItemShownCanBePickedAgainAfterLoading) {
  terminal_.receive = {.mode = 1, .receive_terminator = ";"};
  window_.Load();
  Q_EMIT Find<QComboBox>("cmbReceiveMode")->activated(1);
  EXPECT_EQ(Find<QComboBox>("RcvTermChar")->currentText(), "Kein");
  EXPECT_EQ(terminal_.receive.receive_terminator, "");
}

TEST_F(MainWindowTest, TerminatorsFollowEachEdit) {
  Find<QComboBox>("RcvTermChar")->setCurrentText("59");
  EXPECT_EQ(terminal_.receive.receive_terminator, ";");
  Find<QComboBox>("SendTermChar")->setCurrentText("CRLF");
  EXPECT_EQ(terminal_.receive.send_terminator, "\r\n");
  EXPECT_EQ(MessageDuring([&] { Find<QComboBox>("RcvTermChar")->setCurrentText("256"); }),
            "Ungültiges Argument");
  EXPECT_EQ(terminal_.receive.receive_terminator, ";");
}

TEST_F(MainWindowTest, FlushingReportsTheNumberOfBytes) {
  Connect();
  library_.results["FlushInQueue"] = {17};
  Press("TB_FLUSH");
  EXPECT_TRUE(PaneText().endsWith("\nEmpfangspuffer gelöscht (17 Bytes)"));
}

TEST_F(MainWindowTest, TheConnectionMenuFollowsTheConnection) {
  auto* menu = Find<QMenu>("mnuCon");
  Q_EMIT menu->aboutToShow();
  EXPECT_TRUE(Find<QAction>("mnuConnect")->isEnabled());
  EXPECT_FALSE(Find<QAction>("mnuDisconnect")->isEnabled());
  Press("mnuConnect");
  EXPECT_EQ(StatusText(), "TCP/IP: 10.0.0.5, Port 7");
  Q_EMIT menu->aboutToShow();
  EXPECT_FALSE(Find<QAction>("mnuConnect")->isEnabled());
  EXPECT_TRUE(Find<QAction>("mnuDisconnect")->isEnabled());
}

TEST_F(MainWindowTest, TheConnectionCanBeConfiguredWhileThereIsNone) {
  const auto answer = [&](const char* button) {
    QTimer::singleShot(0, &window_, [button] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->objectName(), "U_Port");
      dialog->findChild<QComboBox*>("IPAddrList")->setCurrentText("10.0.0.6");
      dialog->findChild<QPushButton*>(button)->click();
    });
  };
  answer("Command2");
  Press("TB_PORTCONFIGURE");
  EXPECT_EQ(connection_.ip_address, "10.0.0.5");
  EXPECT_EQ(device_.open_step_status, -1);
  answer("Command1");
  Press("mnuConfigureConnection");
  EXPECT_EQ(connection_.ip_address, "10.0.0.6");
  Connect();
  EXPECT_FALSE(Find<QAction>("TB_PORTCONFIGURE")->isEnabled());
  EXPECT_FALSE(Find<QAction>("mnuConfigureConnection")->isEnabled());
  Press("TB_CONNECT");
  EXPECT_TRUE(Find<QAction>("TB_PORTCONFIGURE")->isEnabled());
  EXPECT_TRUE(Find<QAction>("mnuConfigureConnection")->isEnabled());
}

TEST_F(MainWindowTest, TheConfigureButtonSaysWhyItIsDisabledWhileConnected) {
  const auto* button = Find<QAction>("TB_PORTCONFIGURE");
  EXPECT_EQ(button->toolTip(), "Verbindung konfigurieren");
  Connect();
  EXPECT_EQ(button->toolTip(), "Verbindung konfigurieren: nur möglich, solange keine Verbindung besteht");
  EXPECT_EQ(button->text(), "Verbindung konfigurieren");
  Press("TB_CONNECT");
  EXPECT_EQ(button->toolTip(), "Verbindung konfigurieren");
}

TEST_F(MainWindowTest, InOtherModesTheConnectionIsTheHosts) {
  for (const std::int16_t mode : std::initializer_list<std::int16_t>{0, 1, 3}) {
    device_.OperMode = mode;
    window_.Load();
    EXPECT_FALSE(Find<QAction>("TB_PORTCONFIGURE")->isEnabled());
    EXPECT_FALSE(Find<QAction>("mnuConfigureConnection")->isEnabled());
  }
}

TEST_F(MainWindowTest, PressingTheSaveButtonChangesNothing) {
  Press("TB_SAVETERMWIN");
  EXPECT_EQ(PaneText(), "");
}

TEST_F(MainWindowTest, TheCommandBoxFollowsTheResizeRules) {
  const auto* split = Find<QWidget>("SplitContainer");
  const auto* box = Find<QComboBox>("cmbCommand");
  const auto* send = Find<QPushButton>("cmdSend");
  for (const QSize size : {QSize(1200, 800), QSize(500, 450)}) {
    window_.resize(size);
    QApplication::processEvents();
    const int inner_width = window_.centralWidget()->width();
    EXPECT_EQ(split->width(), inner_width - split->x() - 3 - Find<QToolBar>("Toolbar3")->width());
    EXPECT_EQ(box->width(), split->width() - send->width() - 7);
    EXPECT_EQ(send->x(), box->x() + box->width() + 3);
    int below = 2;
    for (const char* bar : {"Toolbar2", "StatusBar1", "StatusBar2"}) below += Find<QWidget>(bar)->height();
    EXPECT_EQ(split->height(), window_.centralWidget()->height() - split->y() - below);
    EXPECT_EQ(Find<QToolBar>("Toolbar3")->pos(), QPoint(split->x() + split->width() + 3, split->y()));
  }
}

TEST_F(MainWindowTest, AWindowTooSmallIsNotLaidOut) {
  auto* area = window_.centralWidget();
  area->setMinimumSize(1, 1);
  area->resize(400, 400);
  QApplication::processEvents();
  const QSize before = Find<QWidget>("SplitContainer")->size();
  area->resize(133, 400);
  QApplication::processEvents();
  EXPECT_EQ(Find<QWidget>("SplitContainer")->size(), before);
}

TEST_F(MainWindowTest, TheUserCannotMakeItSmallerThanItsParts) {
  window_.resize(1, 1);
  QApplication::processEvents();
  EXPECT_EQ(window_.centralWidget()->size(), QSize(300, 320));
}

TEST_F(MainWindowTest, ACommentIsInsertedInGreenAtTheCaret) {
  Connect();
  QTimer::singleShot(0, &window_, [] {
    auto* question = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->windowTitle(), "Kommentar einfügen");
    EXPECT_EQ(question->labelText(), "Kommentar:");
    question->setTextValue("Größe geprüft");
    question->accept();
  });
  Press("mnuInsertComment");
  EXPECT_TRUE(PaneText().endsWith("\nGröße geprüft\n"));
}

TEST_F(MainWindowTest, ACommentReplacesTheSelectionAndIsNotLogged) {
  ChooseFile(folder_.Path("a.LOG"));
  Press("TB_OPENLOG");
  Press("TB_RECORDLOG");
  AddLine("abcd");
  Pane()->Select(2, 4);
  OnDialog<QInputDialog>([](QInputDialog& question) {
    EXPECT_EQ(question.textValue(), "");
    question.setTextValue("note");
    question.accept();
  });
  Press("mnuInsertComment");
  EXPECT_EQ(PaneText(), "\na\nnote\nd");
  EXPECT_EQ(Pane()->SelectionColor(), base::kCommentColor);
  EXPECT_EQ(base::ReadBytes(folder_.Path("a.LOG")), "abcd\r\n");
}

TEST_F(MainWindowTest, AnEmptyOrCancelledCommentChangesNothing) {
  AddLine("abcd");
  Pane()->Select(2, 4);
  OnDialog<QInputDialog>([](QInputDialog& question) { question.accept(); });
  Press("mnuInsertComment");
  OnDialog<QInputDialog>([](QInputDialog& question) {
    question.setTextValue("note");
    question.reject();
  });
  Press("mnuInsertComment");
  EXPECT_EQ(dialogs_, 2);
  EXPECT_EQ(PaneText(), "\nabcd");
  EXPECT_EQ(Pane()->selectedText(), "bc");
  EXPECT_EQ(Pane()->SelectionColor(), base::kNoColor);
}

TEST_F(MainWindowTest, ClearAllEmptiesThePane) {
  Connect();
  Press("mnuClearAll");
  EXPECT_EQ(PaneText(), "");
}

TEST_F(MainWindowTest, TheRightButtonOpensThePopupOnThePane) {
  AddLine("text");
  Q_EMIT Find<script::CommandGrid>("CommandScript")->Touched();
  Find<QAction>("mnuPaste")->setEnabled(false);
  auto* popup = Find<QMenu>("mnuPOP1");
  for (const Qt::MouseButton other : {Qt::LeftButton, Qt::MiddleButton}) {
    QTest::mouseClick(Pane()->viewport(), other);
    EXPECT_FALSE(popup->isVisible());
  }
  QTest::mouseClick(Pane()->viewport(), Qt::RightButton);
  EXPECT_TRUE(popup->isVisible());
  EXPECT_TRUE(Enabled("mnuPaste"));
  popup->close();
  Press("mnuSelectAll");
  EXPECT_EQ(Pane()->selectedText(), "\ntext");
}

TEST_F(MainWindowTest, ThePopupCopiesTheSelection) {
  Connect();
  Press("mnuSelectAll");
  Press("mnuCopy");
  EXPECT_TRUE(QApplication::clipboard()->text().endsWith("Port 7"));
  Press("mnuDelete");
  EXPECT_EQ(PaneText(), "");
  Press("mnuPaste");
  EXPECT_TRUE(PaneText().endsWith("Port 7"));
}

TEST_F(MainWindowTest, ClosingRunsTheUnloadStepsOnce) {
  int runs = 0;
  window_.OnUnload([&] { ++runs; });
  Press("mnuExit");
  window_.close();
  EXPECT_EQ(runs, 1);
}

TEST_F(MainWindowTest, EveryFieldHasANameForAssistiveTools) {
  for (const char* name : {"cmbCommand", "cmbReceiveMode", "cmbReceiveFormat", "RcvTermChar", "SendTermChar",
                           "ReceiveTimo", "BinChars", "TermWin", "CommandScript"})
    EXPECT_FALSE(Find<QWidget>(name)->accessibleName().isEmpty()) << name;
}

}  // namespace
}  // namespace kolvane::window
