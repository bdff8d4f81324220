// What the command line does with typed and pasted text.
#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QLineEdit>
#include <QScrollBar>
#include <QTimer>

#include "window/sending_fixture.h"

namespace kolvane::window {
namespace {

class SendingTest : public SendingFixture {};

TEST_F(SendingTest, WithoutACommandNoAnswerIsAwaited) {
  library_.results["OpenPort"] = {-14};
  Find<QLineEdit>("ReceiveTimo")->setText("bald");
  AnswerBoxes();
  Send("MSV?");
  EXPECT_EQ(boxes_.texts().last(), "Timeout (ms): Typen unverträglich");
}

TEST_F(SendingTest, EnterSendsOnceWhereverItArrives) {
  auto* box = Find<QComboBox>("cmbCommand");
  Connect();
  for (QWidget* receiver : {static_cast<QWidget*>(box), static_cast<QWidget*>(box->lineEdit())}) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
      library_.calls.clear();
      box->setCurrentText("MSV?");
      QTest::keyClick(receiver, key);
      EXPECT_EQ(Count("WritePort(\"MSV?\n\")"), 1) << receiver->metaObject()->className();
    }
  }
}

TEST_F(SendingTest, AFieldIsMarkedWhileItDoesNotHoldANumber) {
  for (const char* name : {"ReceiveTimo", "BinChars"}) {
    auto* field = Find<QLineEdit>(name);
    const QString tip = field->toolTip();
    const QColor background = field->palette().color(QPalette::Base);
    field->setText("1x");
    EXPECT_NE(field->palette().color(QPalette::Base), background) << name;
    EXPECT_TRUE(field->toolTip().endsWith(": Typen unverträglich")) << field->toolTip().toStdString();
    EXPECT_EQ(field->accessibleDescription(), field->toolTip());
    field->setText("-x");
    field->setText("10");
    EXPECT_EQ(field->palette().color(QPalette::Base), background) << name;
    EXPECT_EQ(field->toolTip(), tip);
    EXPECT_EQ(field->accessibleDescription(), "");
  }
}

TEST_F(SendingTest, ACharacterThatCannotBeSentIsMarkedWhileItIsTyped) {
  QLineEdit* edit = Find<QComboBox>("cmbCommand")->lineEdit();
  const auto red = [edit] {
    const QImage image = edit->grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        count += color.red() > 200 && color.green() < 100 && color.blue() < 100 ? 1 : 0;
      }
    }
    return count;
  };
  edit->insert("5 µ");
  QApplication::processEvents();
  EXPECT_EQ(red(), 0);
  edit->insert("Ω→");
  QApplication::processEvents();
  EXPECT_GT(red(), 3);
  EXPECT_EQ(edit->toolTip(), "Das Zeichen „Ω“ kann nicht gesendet werden");
  EXPECT_EQ(edit->accessibleDescription(), edit->toolTip());
  QTest::keyClick(edit, Qt::Key_Backspace);
  QTest::keyClick(edit, Qt::Key_Backspace);
  QApplication::processEvents();
  EXPECT_EQ(edit->text(), "5 µ");
  EXPECT_EQ(red(), 0);
  EXPECT_EQ(edit->toolTip(), "");
  EXPECT_EQ(edit->accessibleDescription(), "");
}

TEST_F(SendingTest, NoCharacterIsMarkedForADeviceThatSpeaksUtf8) {
  auto* edit = Find<QComboBox>("cmbCommand")->lineEdit();
  edit->insert("5 Ω");
  QApplication::processEvents();
  EXPECT_NE(edit->toolTip(), "");
  Press("mnuUtf8");
  EXPECT_EQ(edit->toolTip(), "");
  EXPECT_EQ(edit->accessibleDescription(), "");
  edit->insert("→");
  QApplication::processEvents();
  EXPECT_EQ(edit->toolTip(), "");
  Press("mnuUtf8");
  EXPECT_EQ(edit->toolTip(), "Das Zeichen „Ω“ kann nicht gesendet werden");
}

TEST_F(SendingTest, ACharacterThatCannotBeSentIsReportedAndNothingIsSent) {
  Connect();
  EXPECT_EQ(MessageDuring([&] { Send("MEAS:RES 5 Ω"); }), "Das Zeichen „Ω“ kann nicht gesendet werden");
  EXPECT_TRUE(library_.calls.empty());
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->currentText(), "MEAS:RES 5 Ω");
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->count(), 0);
}

TEST_F(SendingTest, PastedLinesAreSeparateCommands) {
  Connect();
  library_.replies = {{"1\r\n"}, {"2\r\n"}};
  const QString before = PaneText();
  QApplication::clipboard()->setText("A?\nB?\n");
  Find<QComboBox>("cmbCommand")->setFocus();
  Find<QComboBox>("cmbCommand")->lineEdit()->paste();
  QTest::keyClick(Find<QComboBox>("cmbCommand"), Qt::Key_Return);
  EXPECT_EQ(PaneText(), before + "\nA?\n1\nB?\n2");
  EXPECT_EQ(Count("WritePort(\"A?\n\")"), 1);
  EXPECT_EQ(Count("WritePort(\"B?\n\")"), 1);
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->itemText(0), "B?");
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->itemText(1), "A?");
}

TEST_F(SendingTest, ALongCommandIsPastedWhole) {
  Connect();
  const QString command = "DATA " + QString(100'000, '1');
  QApplication::clipboard()->setText(command);
  QLineEdit* field = Find<QComboBox>("cmbCommand")->lineEdit();
  field->selectAll();
  field->paste();
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(Count("WritePort(\"" + command.toStdString() + "\n\")"), 1);
  EXPECT_EQ(Find<QComboBox>("cmbCommand")->itemText(0), command);
}

TEST_F(SendingTest, StopEndsPastedLines) {
  Connect();
  library_.replies = {{"1\r\n"}, {"2\r\n"}};
  QTimer::singleShot(0, &window_, [this] {
    Send("X?");
    Press("TB_STOP");
  });
  Send("A?\nB?\nC?");
  EXPECT_EQ(Count("WritePort(\"A?\n\")"), 1);
  EXPECT_EQ(Count("WritePort(\"B?\n\")"), 0);
  EXPECT_EQ(Count("WritePort(\"X?\n\")"), 0) << "none starts during another";
}

TEST_F(SendingTest, ClosingEndsPastedLinesFirst) {
  Connect();
  library_.replies = {{"1\r\n"}, {"2\r\n"}};
  int unloads = 0;
  window_.OnUnload([&] { ++unloads; });
  QTimer::singleShot(0, &window_, [&] {
    window_.close();
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(unloads, 0);
  });
  Send("A?\nB?\nC?");
  EXPECT_FALSE(window_.isVisible());
  EXPECT_EQ(unloads, 1);
  EXPECT_EQ(Count("WritePort(\"B?\n\")"), 0);
}

TEST_F(SendingTest, SendingACommandScrollsToIt) {
  Connect();
  for (int i = 0; i < 200; ++i) AddLine("line");
  Pane()->Flush();
  auto* bar = Pane()->verticalScrollBar();
  bar->setValue(0);
  library_.replies = {{"1\r\n"}};
  Send("");
  EXPECT_EQ(bar->value(), 0);
  Send("ONE?");
  Pane()->Flush();
  EXPECT_EQ(bar->value(), bar->maximum());
}

}  // namespace
}  // namespace kolvane::window
