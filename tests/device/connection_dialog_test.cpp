#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QWheelEvent>

#include "device/connection_dialog_fixture.h"

namespace kolvane::device {
namespace {

class ConnectionDialogTest : public ConnectionDialogFixture {};

TEST_F(ConnectionDialogTest, TimeoutListsCanBeTypedInto) {
  Open();
  Choose(6);
  Find<QComboBox>("GPIBTIMO")->setCurrentText("250 msec");
  Press("Command1");
  EXPECT_EQ(parameters_.timeout_ms, 250);
  Open();
  Choose(4);
  Find<QComboBox>("LPTTimo")->setCurrentText("1,5");
  Press("Command1");
  EXPECT_EQ(parameters_.timeout_ms, 1500);
}

TEST_F(ConnectionDialogTest, AFractionOfASecondSurvivesOpeningAndConfirmingAgain) {
  Open();
  Choose(0);
  Find<QLineEdit>("TIMO")->setText("0,5");
  Press("Command1");
  Open();
  EXPECT_EQ(Text("TIMO"), "0,5");
  Press("Command1");
  EXPECT_EQ(parameters_.timeout_ms, 500);
}

TEST_F(ConnectionDialogTest, OpensOnTheStoredConnection) {
  folder_.Write("IPADDR.INI", "0\r\n10.0.0.5\r\n\r\n");
  folder_.Write("USBADDR.INI", "SN 7\r\n");
  folder_.Write("MODEM.INI", "ATZ\r\n\r\nATDT\r\n");
  parameters_.ip_address = "host";
  parameters_.ip_port = static_cast<std::int16_t>(40000);
  Open();
  EXPECT_TRUE(Find<QRadioButton>("Port_8")->isChecked());
  EXPECT_EQ(Shown("IPAddrList"), "host");
  EXPECT_EQ(Items("IPAddrList"), "10.0.0.5|");
  EXPECT_EQ(Items("USBAddrList"), "SN 7");
  EXPECT_EQ(Text("txtIPPort"), "40000");
  EXPECT_EQ(Find<QPlainTextEdit>("txtModemScript")->toPlainText(), "ATZ\nATDT");
  EXPECT_EQ(Pages(), "3[4]5");
}

TEST_F(ConnectionDialogTest, EachClickShowsItsPage) {
  Open();
  Choose(7);
  EXPECT_EQ(Pages(), "04[5]");
  Choose(6);
  EXPECT_EQ(Pages(), "[2]45");
  Choose(0);
  EXPECT_EQ(Pages(), "[0]1245");
  Choose(9);
  EXPECT_EQ(Pages(), "01245[6]");
  Choose(4);
  EXPECT_EQ(Pages(), "[3]45");
  Choose(8);
  EXPECT_EQ(Pages(), "3[4]5");
}

TEST_F(ConnectionDialogTest, AClickPresetsAndKeepsOtherTypedValues) {
  parameters_.lpt_mode = 3;
  Open();
  Find<QComboBox>("IPAddrList")->setCurrentText("typed");
  Choose(4);
  EXPECT_EQ(Shown("PAPOMode"), "EPP Mode");
  EXPECT_EQ(Shown("LPTTimo"), "10 s");
  Choose(6);
  EXPECT_EQ(Shown("GPIBTIMO"), "1 s");
  EXPECT_EQ(Shown("IPAddrList"), "typed");
}

TEST_F(ConnectionDialogTest, AClickOnTheChosenPortActsAgain) {
  Open();
  Choose(0);
  Tabs()->setCurrentIndex(1);
  Choose(0);
  EXPECT_EQ(Tabs()->currentIndex(), 0);
  Choose(4);
  Find<QComboBox>("LPTTimo")->setCurrentText("30 s");
  Choose(4);
  EXPECT_EQ(Shown("LPTTimo"), "10 s");
}

TEST_F(ConnectionDialogTest, KeysContinueFromTheShownEntry) {
  folder_.Write("IPADDR.INI", "a\r\nb\r\nc\r\n");
  folder_.Write("USBADDR.INI", "d\r\ne\r\nf\r\n");
  parameters_.port_option = 2;
  parameters_.address = 12;
  parameters_.ip_address = "b";
  parameters_.usb_address = "e";
  parameters_.timeout_entries = {.gpib_index = 6, .lpt_index = 3};
  Open();
  const struct {
    const char* name;
    const char* shown;
    const char* next;
  } lists[] = {{"Addr485", "12", "13"},
               {"GPIBTIMO", "100 s", "300 s"},
               {"LPTTimo", "100 s", "300 s"},
               {"IPAddrList", "b", "c"},
               {"USBAddrList", "e", "f"}};
  Tabs()->setTabEnabled(6, true);
  for (const auto& list : lists) {
    EXPECT_EQ(Shown(list.name), list.shown);
    QTest::keyClick(Find<QComboBox>(list.name), Qt::Key_Down);
    EXPECT_EQ(Shown(list.name), list.next);
  }
}

TEST_F(ConnectionDialogTest, AnAddressInAnotherCaseIsNotAnEntry) {
  folder_.Write("IPADDR.INI", "host\r\n");
  parameters_.ip_address = "HOST";
  Open();
  EXPECT_EQ(Shown("IPAddrList"), "HOST");
  EXPECT_EQ(Find<QComboBox>("IPAddrList")->currentIndex(), -1);
}

TEST_F(ConnectionDialogTest, TheWheelTurnsAListOnlyWithTheFocus) {
  parameters_.port_option = 0;
  Open();
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  const auto turn = [](QComboBox* list) {
    QWheelEvent down(QPointF(5, 5), list->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(list, &down);
  };
  const auto lists = dialog_->findChildren<QComboBox*>();
  EXPECT_EQ(lists.size(), 13);
  for (QComboBox* list : lists) {
    const QString before = list->currentText();
    turn(list);
    EXPECT_EQ(list->currentText(), before) << list->objectName().toStdString();
    // Qt::WheelFocus would give it the focus at the first step of the wheel.
    EXPECT_EQ(list->focusPolicy(), Qt::StrongFocus) << list->objectName().toStdString();
  }
  Find<QComboBox>("Baud")->setFocus();
  turn(Find<QComboBox>("Baud"));
  EXPECT_EQ(Shown("Baud"), "19200");
  Find<QComboBox>("Parity")->setFocus();
  turn(Find<QComboBox>("Parity"));
  EXPECT_EQ(Shown("Parity"), "Ungerade");
}

TEST_F(ConnectionDialogTest, TheAddressIsEnabledForRs485) {
  Open();
  EXPECT_FALSE(Find<QLabel>("Label1")->isEnabled());
  Choose(3);
  EXPECT_TRUE(Find<QLabel>("Label1")->isEnabled());
  EXPECT_TRUE(Find<QComboBox>("Addr485")->isEnabled());
  Choose(1);
  EXPECT_FALSE(Find<QLabel>("Label1")->isEnabled());
}

TEST_F(ConnectionDialogTest, OkStoresAndWritesTheHistory) {
  folder_.Write("IPADDR.INI", "a\r\n");
  Open();
  Find<QComboBox>("IPAddrList")->setCurrentText("A");
  Find<QLineEdit>("txtIPPort")->setText("65535");
  Find<QLineEdit>("TCPIPTimo")->setText("2,5");
  Find<QPlainTextEdit>("txtModemScript")->setPlainText("ATZ\nATDT");
  Press("Command1");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(parameters_.port_code, port_code::kTcpIp);
  EXPECT_EQ(parameters_.ip_address, "A");
  EXPECT_EQ(static_cast<std::uint16_t>(parameters_.ip_port), 65535);
  EXPECT_EQ(parameters_.timeout_ms, 2500);
  EXPECT_EQ(parameters_.modem_script, "ATZ\r\nATDT");
  EXPECT_EQ(folder_.Read("IPADDR.INI"), "a\r\nA\r\n");
  EXPECT_EQ(folder_.Read("MODEM.INI"), "ATZ\r\nATDT\r\n");
  EXPECT_EQ(state_.open_step_status, 0);
}

TEST_F(ConnectionDialogTest, NothingIsCompletedWhileAnAddressIsTyped) {
  folder_.Write("IPADDR.INI", "host\r\nhost-2\r\n");
  Open();
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  Find<QComboBox>("IPAddrList")->setFocus();
  QTest::keyClicks(QApplication::focusWidget(), "HOST");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Shown("IPAddrList"), "HOST");
  Press("Command1");
  EXPECT_EQ(parameters_.ip_address, "HOST");
  EXPECT_EQ(folder_.Read("IPADDR.INI"), "host\r\nhost-2\r\nHOST\r\n");
}

TEST_F(ConnectionDialogTest, AnInvalidAddressClosesWithTheKindChanged) {
  Open();
  Choose(2);
  Find<QComboBox>("Addr485")->setCurrentText("40");
  Press("Command1");
  EXPECT_EQ(prompt_.errors, std::vector<std::string>{"Ungültige Adresse"});
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(parameters_.port_code, port_code::kCom1Rs485);
  EXPECT_EQ(parameters_.address, 4);
}

TEST_F(ConnectionDialogTest, CancelStoresAndWritesNothing) {
  Open();
  Choose(9);
  Press("Command2");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(parameters_.port_option, 8);
  EXPECT_EQ(state_.open_step_status, -1);
  EXPECT_EQ(folder_.Read("MODEM.INI"), "(no file)");
}

TEST_F(ConnectionDialogTest, EscapeAndClosingCancel) {
  Open();
  QTest::keyClick(dialog_.get(), Qt::Key_Escape);
  EXPECT_EQ(state_.open_step_status, -1);
  state_.open_step_status = 0;
  Open();
  dialog_->close();
  EXPECT_EQ(state_.open_step_status, -1);
}

TEST_F(ConnectionDialogTest, EnterInAFieldConfirms) {
  Open();
  Find<QLineEdit>("txtIPPort")->setText("80");
  QTest::keyClick(Find<QLineEdit>("txtIPPort"), Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(parameters_.ip_port, 80);
}

TEST_F(ConnectionDialogTest, ArrowKeysChooseThePort) {
  Open();
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  EXPECT_TRUE(Find<QRadioButton>("Port_8")->hasFocus());
  QTest::keyClick(Find<QRadioButton>("Port_8"), Qt::Key_Down);
  EXPECT_TRUE(Find<QRadioButton>("Port_9")->isChecked());
  EXPECT_EQ(Tabs()->currentIndex(), 6);
}

TEST_F(ConnectionDialogTest, TheScanListsAttachedInstruments) {
  std::string serial = "A1";
  serial.resize(255, ' ');
  std::string description = "Verst\xE4rker";
  description.resize(255, ' ');
  library_.scan = serial + description;
  library_.results["MaxUsbDevices"] = {2, 1};
  library_.results["ScanUsbDevices"] = {1};
  Open();
  Choose(9);
  Press("Command3");
  ASSERT_EQ(Find<QListWidget>("lstScan")->count(), 1);
  EXPECT_EQ(Find<QListWidget>("lstScan")->item(0)->text(), "A1 - Verstärker");
  EXPECT_EQ(state_.open_step_status, 1);
  library_.scan.clear();
  Press("Command3");
  EXPECT_EQ(Find<QListWidget>("lstScan")->count(), 0);
  EXPECT_EQ(Shown("USBAddrList"), "");
}

TEST_F(ConnectionDialogTest, AScanWithoutAPortLibraryReportsThat) {
  source_.library = nullptr;
  Open();
  Choose(9);
  Press("Command3");
  EXPECT_EQ(prompt_.errors, std::vector<std::string>{"Die Portbibliothek fehlt."});
}

TEST_F(ConnectionDialogTest, KeepsAGpibAddressThatTheListLacks) {
  parameters_.port_option = 6;
  parameters_.address = 20;
  Open();
  EXPECT_EQ(Shown("GPIBAddr"), "20");
  Press("Command1");
  EXPECT_EQ(parameters_.address, 20);
}

}  // namespace
}  // namespace kolvane::device
