#include "device/ui/connection_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <cstdlib>
#include <memory>

#include "base/fake_prompt.h"
#include "base/temp_folder.h"
#include "fake_port_library.h"

namespace kolvane::device {
namespace {

class ConnectionDialogTest : public testing::Test {
 protected:
  ConnectionDialogTest() { parameters_.port_option = 8; }

  void Open() {
    dialog_ = std::make_unique<ConnectionDialog>(
        ConnectionDialogContext{parameters_, state_, source_, prompt_, folder_.path()});
    dialog_->show();
  }

  template <typename Widget>
  Widget* Find(const QString& name) {
    auto* found = dialog_->findChild<Widget*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }

  QTabWidget* Tabs() { return Find<QTabWidget>("SSTab1"); }
  void Choose(int port) { Find<QRadioButton>(QStringLiteral("Port_%1").arg(port))->click(); }
  void Press(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
  QString Text(const char* line) { return Find<QLineEdit>(line)->text(); }
  QString Shown(const char* box) { return Find<QComboBox>(box)->currentText(); }

  QString Items(const char* name) {
    const auto* box = Find<QComboBox>(name);
    QStringList items;
    for (int i = 0; i < box->count(); ++i) items << box->itemText(i);
    return items.join('|');
  }

  // The numbers of the pages that can be reached, the front one in brackets.
  QString Pages() {
    QString pages;
    for (int page = 0; page < Tabs()->count(); ++page) {
      if (Tabs()->isTabEnabled(page))
        pages += QString(page == Tabs()->currentIndex() ? "[%1]" : "%1").arg(page);
    }
    return pages;
  }

  ConnectionParameters parameters_;
  DeviceState state_;
  FakePortLibrary library_;
  FakePortLibrarySource source_{&library_};
  base::FakePrompt prompt_;
  base::TempFolder folder_;
  std::unique_ptr<ConnectionDialog> dialog_;
};

TEST_F(ConnectionDialogTest, IsWordedToTheLetter) {
  Open();
  EXPECT_EQ(dialog_->objectName(), "U_Port");
  EXPECT_EQ(dialog_->windowTitle(), "Verbindung konfigurieren");
  const char* ports[] = {"COM 1", "COM 2",          "COM 1 (RS485)", "COM 2 (RS485)",   "LPT1",
                         "LPT2",  "GPIB (IEEE488)", "Offline",       "Ethernet TCP/IP", "USB"};
  for (int i = 0; i < 10; ++i)
    EXPECT_EQ(Find<QRadioButton>(QStringLiteral("Port_%1").arg(i))->text(), ports[i]);
  QStringList tabs;
  for (int i = 0; i < Tabs()->count(); ++i) tabs << Tabs()->tabText(i);
  EXPECT_EQ(tabs.join('|'), "RS232|RS232 erweitert|GPIB (IEEE488)|Druckerport|TCP/IP|Offline|USB");
  EXPECT_EQ(Find<QPushButton>("Command1")->text(), "OK");
  EXPECT_EQ(Find<QPushButton>("Command2")->text(), "Abbrechen");
  EXPECT_EQ(Find<QPushButton>("Command3")->text(), "Scan...");
  QStringList frames;
  for (const QGroupBox* frame : dialog_->findChildren<QGroupBox*>()) frames << frame->title();
  for (const char* title : {"Schnittstelle", "Schnittstellenparameter", "Parallelport (LPT1 oder LPT2)"})
    EXPECT_TRUE(frames.contains(title)) << title;
  QStringList labels;
  for (const QLabel* label : dialog_->findChildren<QLabel*>()) labels << label->text();
  for (const char* text : {"Port (immer 7 für Orbanyx)", "Terminal im Testmodus betreiben"})
    EXPECT_TRUE(labels.contains(text)) << text;
}

TEST_F(ConnectionDialogTest, EveryLabelBelongsToItsField) {
  Open();
  const struct {
    const char* name;
    const char* label;
  } fields[] = {{"Baud", "Baudrate"},
                {"Parity", "Parität"},
                {"DataBits", "Daten Bits"},
                {"StopBits", "Stop Bits"},
                {"TIMO", "Timeout (s)"},
                {"RCV", "Empfangspuffer (Byte)"},
                {"Addr485", "RS485 Adresse"},
                {"DialTIMO", "Dial Timeout (s)"},
                {"txtModemScript", "Modem Script (AT Befehle)"},
                {"XOnLimit", "Xon Limit (Bytes)"},
                {"XOffLimit", "Xoff Limit (Bytes)"},
                {"XonChar", "Xon Char"},
                {"XoffChar", "Xoff Char"},
                {"DTRControl", "DTR Control"},
                {"RTSControl", "RTS Control"},
                {"GPIBAddr", "Adresse"},
                {"GPIBTIMO", "Timeout"},
                {"EOSChar", "EOS Zeichen (Hex)"},
                {"PAPOMode", "Betriebsart"},
                {"LPTTimo", "Timeout"},
                {"IPAddrList", "IP Adresse "},
                {"txtIPPort", "Port"},
                {"TCPIPTimo", "Timeout (s)"},
                {"USBAddrList", "USB-Serien-Nummer"},
                {"USBTimo", "Timeout (s)"}};
  for (const auto& field : fields) {
    QString label;
    for (const QLabel* each : dialog_->findChildren<QLabel*>()) {
      if (each->buddy() == Find<QWidget>(field.name)) label = each->text();
    }
    EXPECT_TRUE(label.contains('&')) << field.name;
    EXPECT_EQ(label.remove('&'), field.label);
    EXPECT_FALSE(Find<QWidget>(field.name)->toolTip().isEmpty()) << field.name;
    EXPECT_FALSE(Find<QWidget>(field.name)->accessibleName().isEmpty()) << field.name;
  }
}

TEST_F(ConnectionDialogTest, ToolTipsSayUnitAndRange) {
  Open();
  const struct {
    const char* name;
    const char* unit;
    const char* range;
  } fields[] = {{"Baud", "Bit je Sekunde", "9600 bis 38400"},
                {"DataBits", "Bits je Zeichen", "7 oder 8"},
                {"StopBits", "Stoppbits je Zeichen", "1 oder 2"},
                {"TIMO", "Sekunden", "ab 0,001; bei 0 gelten 5 s"},
                {"RCV", "Byte", "ab 512"},
                {"Addr485", "Adresse", "0 bis 31"},
                {"DialTIMO", "Sekunden", "ab 10"},
                {"XOnLimit", "Byte", "0 bis 32767"},
                {"XOffLimit", "Byte", "0 bis 32767"},
                {"XonChar", "Zeichencode", "0 bis 255"},
                {"XoffChar", "Zeichencode", "0 bis 255"},
                {"GPIBAddr", "Adresse", "1 bis 16"},
                {"GPIBTIMO", "Sekunden", "ab 0,001; bei 0 gelten 5 s"},
                {"EOSChar", "Code", "0 bis 255"},
                {"LPTTimo", "Sekunden", "ab 0,001; bei 0 gelten 5 s"},
                {"txtIPPort", "Portnummer", "1 bis 65535"},
                {"TCPIPTimo", "Sekunden", "ab 0,001; bei 0 gelten 5 s"},
                {"USBTimo", "Sekunden", "Für die Verbindung gilt der Timeout der Seite RS232"}};
  for (const auto& field : fields) {
    const QString tip = Find<QWidget>(field.name)->toolTip();
    EXPECT_TRUE(tip.contains(field.unit)) << field.name << ": " << tip.toStdString();
    EXPECT_TRUE(tip.contains(field.range)) << field.name << ": " << tip.toStdString();
  }
}

TEST_F(ConnectionDialogTest, EachKeyLeadsToOneFieldOfItsPage) {
  Open();
  for (int page = 0; page < Tabs()->count(); ++page) {
    QString keys;
    for (const QLabel* label : Tabs()->widget(page)->findChildren<QLabel*>()) {
      if (label->buddy() == nullptr) continue;
      const QString key = label->text().mid(label->text().indexOf('&') + 1, 1).toUpper();
      EXPECT_FALSE(keys.contains(key)) << page << ": " << label->text().toStdString();
      keys += key;
    }
  }
}

TEST_F(ConnectionDialogTest, TheKeyOfALabelLeadsToItsField) {
  Open();
  Choose(8);
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  QTest::keyClick(dialog_.get(), Qt::Key_P, Qt::AltModifier);
  EXPECT_TRUE(Find<QLineEdit>("txtIPPort")->hasFocus());
  QTest::keyClick(dialog_.get(), Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(Find<QComboBox>("IPAddrList")->hasFocus());
}

TEST_F(ConnectionDialogTest, TabReachesEveryFieldOfThePage) {
  Open();
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  Choose(9);
  QStringList reached;
  for (int step = 0; step < 12; ++step) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    reached << QApplication::focusWidget()->objectName();
  }
  for (const char* name : {"USBAddrList", "USBTimo", "Command3", "lstScan", "Command1", "Command2"})
    EXPECT_TRUE(reached.contains(name)) << name << " in " << reached.join(' ').toStdString();
}

TEST_F(ConnectionDialogTest, FitsASmallScreenWithEveryLabelInFull) {
  Open();
  constexpr QSize kScreen(800, 600);
  constexpr QSize kFrame(20, 60);  // of the window
  EXPECT_LE(dialog_->width(), kScreen.width() - kFrame.width());
  EXPECT_LE(dialog_->height(), kScreen.height() - kFrame.height());
  for (int page = 0; page < Tabs()->count(); ++page) {
    Tabs()->setTabEnabled(page, true);
    Tabs()->setCurrentIndex(page);
    for (const auto* label : Tabs()->widget(page)->findChildren<QLabel*>())
      EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
    for (const auto* check : Tabs()->widget(page)->findChildren<QCheckBox*>())
      EXPECT_GE(check->width(), check->sizeHint().width()) << check->text().toStdString();
  }
}

TEST_F(ConnectionDialogTest, FitsTheUsualScreenWithALargeFont) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSize(14);
  QApplication::setFont(large);
  Open();
  constexpr QSize kScreen(1024, 768);
  constexpr QSize kFrame(20, 60);  // of the window
  EXPECT_LE(dialog_->width(), kScreen.width() - kFrame.width());
  EXPECT_LE(dialog_->height(), kScreen.height() - kFrame.height());
  EXPECT_LE(dialog_->minimumSizeHint().width(), kScreen.width() - kFrame.width());
  EXPECT_LE(dialog_->minimumSizeHint().height(), kScreen.height() - kFrame.height());
  for (const auto* port : dialog_->findChildren<QRadioButton*>())
    EXPECT_GE(port->width(), port->sizeHint().width()) << port->text().toStdString();
  for (int page = 0; page < Tabs()->count(); ++page) {
    Tabs()->setTabEnabled(page, true);
    Tabs()->setCurrentIndex(page);
    for (const auto* label : Tabs()->widget(page)->findChildren<QLabel*>())
      EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
  }
  QApplication::setFont(before);
}

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

TEST_F(ConnectionDialogTest, ListsWhatCanBeChosen) {
  Open();
  EXPECT_EQ(Items("Baud"), "9600|19200|38400");
  EXPECT_EQ(Items("Parity"), "Keine|Gerade|Ungerade");
  EXPECT_EQ(Items("DataBits"), "7|8");
  EXPECT_EQ(Items("StopBits"), "1|2");
  EXPECT_EQ(Items("Addr485"), "1|2|3|4|5|6|7|8|9|10|11|12|13|14|15|16");
  EXPECT_EQ(Items("GPIBAddr"), Items("Addr485"));
  EXPECT_EQ(Items("DTRControl"), "Disabled|Enabled|Handshake");
  EXPECT_EQ(Items("RTSControl"), "Disabled|Enabled|Handshake|Toggle");
  EXPECT_EQ(Items("GPIBTIMO"), "100 ms|300 ms|1 s|3 s|10 s|30 s|100 s|300 s");
  EXPECT_EQ(Items("PAPOMode"), "Nibble Mode|Bit 8 Mode|Byte Mode|EPP Mode|Orbanyx Interlink Modus");
  EXPECT_EQ(Items("LPTTimo"), "3 s|10 s|30 s|100 s|300 s");
  for (const char* name : {"Addr485", "IPAddrList", "USBAddrList", "GPIBTIMO", "LPTTimo"})
    EXPECT_TRUE(Find<QComboBox>(name)->isEditable()) << name;
}

TEST_F(ConnectionDialogTest, NamesEveryCheckBox) {
  Open();
  const struct {
    const char* name;
    const char* caption;
  } checks[] = {{"ExtPar_0", "CTS Output Flow Control"},
                {"ExtPar_1", "DSR Output Flow Control"},
                {"ExtPar_4", "DSR Sensitivity"},
                {"ExtPar_5", "Abort on error"},
                {"ExtPar_6", "Transmission Xon/Xoff Control"},
                {"ExtPar_7", "Reception Xon/Xoff Control"},
                {"ExtPar_8", "Continue Transmission after Xoff"},
                {"SendEOIOnWrite", "EOI mit letztem Schreibbyte"},
                {"SendEOIWithEOS", "EOI mit EOS senden"},
                {"StopReadOnEOS", "Lesen bei EOS beenden"},
                {"RepeatAddressing", "Adressierung wiederholen"}};
  for (const auto& check : checks) EXPECT_EQ(Find<QCheckBox>(check.name)->text(), check.caption);
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

TEST_F(ConnectionDialogTest, AClickPresetsAndKeepsWhatWasTypedElsewhere) {
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

TEST_F(ConnectionDialogTest, KeysGoOnFromTheEntryThatIsShown) {
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

TEST_F(ConnectionDialogTest, AnAddressInAnotherCaseIsNoEntry) {
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
    // A step of the wheel would give it the focus first.
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

TEST_F(ConnectionDialogTest, TheScanListsWhatIsAttached) {
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

TEST_F(ConnectionDialogTest, AScanWithoutAPortLibrarySaysSo) {
  source_.library = nullptr;
  Open();
  Choose(9);
  Press("Command3");
  EXPECT_EQ(prompt_.errors, std::vector<std::string>{"Die Portbibliothek fehlt."});
}

TEST_F(ConnectionDialogTest, ToolTipsNameTheDeviceNode) {
  setenv("KOLVANE_COM2", "/dev/ttyUSB7", 1);
  setenv("KOLVANE_LPT1", "/dev/parport5", 1);
  Open();
  EXPECT_EQ(Find<QRadioButton>("Port_1")->toolTip(), "Gerätedatei /dev/ttyUSB7");
  EXPECT_EQ(Find<QRadioButton>("Port_3")->toolTip(), "Gerätedatei /dev/ttyUSB7");
  EXPECT_EQ(Find<QRadioButton>("Port_4")->toolTip(), "Gerätedatei /dev/parport5");
  EXPECT_EQ(Find<QRadioButton>("Port_8")->toolTip(), "");
  unsetenv("KOLVANE_COM2");
  unsetenv("KOLVANE_LPT1");
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
