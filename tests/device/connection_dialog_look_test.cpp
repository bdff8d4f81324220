#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <cstdlib>

#include "device/connection_dialog_fixture.h"

namespace kolvane::device {
namespace {

class ConnectionDialogLookTest : public ConnectionDialogFixture {};

TEST_F(ConnectionDialogLookTest, HasExactTexts) {
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

TEST_F(ConnectionDialogLookTest, EveryLabelBelongsToItsField) {
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

TEST_F(ConnectionDialogLookTest, ToolTipsSayUnitAndRange) {
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

TEST_F(ConnectionDialogLookTest, ATimeOutSaysThatItIsNotForAnswers) {
  Open();
  for (const char* name : {"TIMO", "GPIBTIMO", "LPTTimo", "TCPIPTimo"}) {
    const QString tip = Find<QWidget>(name)->toolTip();
    EXPECT_TRUE(tip.startsWith("Wartezeit beim Verbinden und Senden")) << name;
    EXPECT_TRUE(tip.contains("Für Antworten gilt „Timeout (ms)“ im Hauptfenster.")) << name;
  }
}

TEST_F(ConnectionDialogLookTest, EachKeyLeadsToOneFieldOfItsPage) {
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

TEST_F(ConnectionDialogLookTest, TheKeyOfALabelLeadsToItsField) {
  Open();
  Choose(8);
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  QTest::keyClick(dialog_.get(), Qt::Key_P, Qt::AltModifier);
  EXPECT_TRUE(Find<QLineEdit>("txtIPPort")->hasFocus());
  QTest::keyClick(dialog_.get(), Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(Find<QComboBox>("IPAddrList")->hasFocus());
}

TEST_F(ConnectionDialogLookTest, TabReachesEveryFieldOfThePage) {
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
  for (const char* name : {"USBAddrList", "USBTimo", "Command3", "lstScan"})
    EXPECT_NE(Find<QWidget>(name)->toolTip(), "") << name;
}

TEST_F(ConnectionDialogLookTest, FitsASmallScreenWithEveryLabelInFull) {
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

TEST_F(ConnectionDialogLookTest, FitsTheUsualScreenWithALargeFont) {
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

TEST_F(ConnectionDialogLookTest, ListsTheChoices) {
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

TEST_F(ConnectionDialogLookTest, NamesEveryCheckBox) {
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

TEST_F(ConnectionDialogLookTest, ToolTipsNameTheDeviceNode) {
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

}  // namespace
}  // namespace kolvane::device
