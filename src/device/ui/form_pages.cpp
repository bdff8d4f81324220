#include "device/ui/form_pages.h"

#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "base/ui/qt_text.h"
#include "device/connection_texts.h"
#include "device/ui/form_fields.h"

namespace kolvane::device {
namespace {

constexpr int kColumnGap = 20;
constexpr int kAddressWidth = 300;
constexpr QSize kScriptSize(230, 130);

template <typename... Columns>
void LayOut(QWidget* page, Columns*... columns) {
  auto* row = new QHBoxLayout(page);
  row->setSpacing(kColumnGap);
  (row->addLayout(columns), ...);
  // Stretched columns would spread their fields.
  (row->setAlignment(columns, Qt::AlignTop), ...);
  row->addStretch();
}

}  // namespace

SerialPage::SerialPage() {
  FormColumn* line = BuildLine();
  LayOut(this, line, BuildBeyond());
}

FormColumn* SerialPage::BuildLine() {
  auto* column = new FormColumn;
  baud_ = column->AddChoice({"Baud", "&Baudrate", "Bit je Sekunde, 9600 bis 38400"}, kBaudChoices);
  parity_ = column->AddChoice(
      {"Parity", "&Parität", "Prüfbit jedes Zeichens: keines, gerade oder ungerade Parität"}, kParityWords);
  data_bits_ = column->AddChoice({"DataBits", "&Daten Bits", "Bits je Zeichen, 7 oder 8"}, kDataBitsChoices);
  stop_bits_ =
      column->AddChoice({"StopBits", "&Stop Bits", "Stoppbits je Zeichen, 1 oder 2"}, kStopBitsChoices);
  timeout_ =
      column->AddText({"TIMO", "&Timeout (s)",
                       "Wartezeit beim Verbinden und Senden in Sekunden, ab 0,001; bei 0 gelten 5 s.\n"
                       "Gilt für COM, RS485 und USB. Für Antworten gilt „Timeout (ms)“ im Hauptfenster."});
  receive_buffer_ = column->AddText(
      {"RCV", "&Empfangspuffer (Byte)", "Größe in Byte, ab 512; kleinere Werte werden zu 512"});
  return column;
}

FormColumn* SerialPage::BuildBeyond() {
  auto* column = new FormColumn;
  rs485_address_ = column->AddTypedChoice(
      {"Addr485", "RS485 &Adresse", "Adresse des Geräts am Bus, 0 bis 31"}, kAddressChoices);
  address_label_ = column->labelForField(rs485_address_);
  address_label_->setObjectName(QStringLiteral("Label1"));
  dial_timeout_ = column->AddText({"DialTIMO", "Dia&l Timeout (s)",
                                   "Wartezeit auf die Verbindung des Modems in Sekunden, ab 10;\n"
                                   "kleinere Werte werden zu 60"});
  modem_script_ = new QPlainTextEdit;
  modem_script_->setTabChangesFocus(true);
  modem_script_->setLineWrapMode(QPlainTextEdit::NoWrap);
  modem_script_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  modem_script_->setMinimumSize(kScriptSize);
  const FieldRow script = {"txtModemScript", "&Modem Script (AT Befehle)",
                           "Ein Befehl je Zeile, gilt für COM 1 und COM 2; leer: kein Modem"};
  auto* label = new QLabel(base::ToQt(script.label));
  label->setBuddy(modem_script_);
  column->addRow(label);
  modem_script_->setObjectName(QLatin1String(script.name));
  modem_script_->setToolTip(base::ToQt(script.tool_tip));
  modem_script_->setAccessibleName(base::ToQt(script.label).remove(QLatin1Char('&')));
  column->addRow(modem_script_);
  return column;
}

void SerialPage::EnableAddress(bool enabled) {
  address_label_->setEnabled(enabled);
  rs485_address_->setEnabled(enabled);
}

void SerialPage::Show(const SerialFields& fields) {
  baud_->setCurrentIndex(fields.baud);
  parity_->setCurrentIndex(fields.parity);
  data_bits_->setCurrentIndex(fields.data_bits);
  stop_bits_->setCurrentIndex(fields.stop_bits);
  ShowText(timeout_, fields.timeout);
  ShowText(receive_buffer_, fields.receive_buffer);
  ShowText(rs485_address_, fields.rs485_address);
  ShowText(dial_timeout_, fields.dial_timeout);
  modem_script_->setPlainText(base::ToQt(fields.modem_script));
}

SerialFields SerialPage::Fields() const {
  return {.baud = baud_->currentIndex(),
          .parity = parity_->currentIndex(),
          .data_bits = data_bits_->currentIndex(),
          .stop_bits = stop_bits_->currentIndex(),
          .timeout = TextOf(timeout_),
          .receive_buffer = TextOf(receive_buffer_),
          .rs485_address = TextOf(rs485_address_),
          .dial_timeout = TextOf(dial_timeout_),
          .modem_script =
              base::FromQt(modem_script_->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n")))};
}

ExtendedPage::ExtendedPage() {
  auto* values = new FormColumn;
  xon_limit_ = values->AddText(
      {"XOnLimit", "Xon &Limit (Bytes)", "Füllstand in Byte, bei dem weiter empfangen wird, 0 bis 32767"});
  xoff_limit_ = values->AddText(
      {"XOffLimit", "Xo&ff Limit (Bytes)", "Freier Platz in Byte, bei dem angehalten wird, 0 bis 32767"});
  xon_char_ = values->AddText({"XonChar", "&Xon Char", "Zeichencode, 0 bis 255, üblich 17"});
  xoff_char_ = values->AddText({"XoffChar", "Xoff &Char", "Zeichencode, 0 bis 255, üblich 19"});
  dtr_control_ = values->AddChoice({"DTRControl", "&DTR Control", "Leitung DTR"}, kDtrChoices);
  rts_control_ = values->AddChoice({"RTSControl", "&RTS Control", "Leitung RTS"}, kRtsChoices);
  auto* switches = new FormColumn;
  for (const ExtendedCheck& check : kExtendedChecks) {
    const std::string name = "ExtPar_" + std::to_string(check.index);
    checks_.push_back(switches->AddCheck({name.c_str(), check.caption, ""}));
  }
  LayOut(this, values, switches);
}

void ExtendedPage::Show(const ExtendedFields& fields) {
  ShowText(xon_limit_, fields.xon_limit);
  ShowText(xoff_limit_, fields.xoff_limit);
  ShowText(xon_char_, fields.xon_char);
  ShowText(xoff_char_, fields.xoff_char);
  dtr_control_->setCurrentIndex(fields.dtr_control);
  rts_control_->setCurrentIndex(fields.rts_control);
  for (std::size_t i = 0; i < checks_.size(); ++i)
    checks_[i]->setChecked(fields.checks[static_cast<std::size_t>(kExtendedChecks[i].index)]);
}

ExtendedFields ExtendedPage::Fields() const {
  ExtendedFields fields{.xon_limit = TextOf(xon_limit_),
                        .xoff_limit = TextOf(xoff_limit_),
                        .xon_char = TextOf(xon_char_),
                        .xoff_char = TextOf(xoff_char_),
                        .dtr_control = dtr_control_->currentIndex(),
                        .rts_control = rts_control_->currentIndex(),
                        .checks = {}};
  for (std::size_t i = 0; i < checks_.size(); ++i)
    fields.checks[static_cast<std::size_t>(kExtendedChecks[i].index)] = checks_[i]->isChecked();
  return fields;
}

GpibPage::GpibPage() {
  auto* column = new FormColumn;
  setLayout(column);
  address_ =
      column->AddChoice({"GPIBAddr", "&Adresse", "Adresse des Geräts am Bus, 1 bis 16"}, kAddressChoices);
  timeout_ = column->AddTypedChoice(
      {"GPIBTIMO", "&Timeout",
       "Wartezeit beim Verbinden und Senden in Sekunden, ab 0,001; bei 0 gelten 5 s.\n"
       "Millisekunden mit der Einheit msec: „250 msec“. Die Einträge mit ms zählen als Sekunden.\n"
       "Für Antworten gilt „Timeout (ms)“ im Hauptfenster."},
      kGpibTimeoutChoices);
  eos_char_ = column->AddText({"EOSChar", "EOS &Zeichen (Hex)",
                               "Code des Endezeichens, 0 bis 255; hexadezimal mit &H davor: &H0A ist 10"});
  send_eoi_on_write_ = column->AddCheck(
      {"SendEOIOnWrite", "EOI mit letztem Schreibbyte", "EOI mit dem letzten Byte jedes Befehls senden"});
  send_eoi_with_eos_ =
      column->AddCheck({"SendEOIWithEOS", "EOI mit EOS senden", "EOI mit jedem Endezeichen senden"});
  stop_read_on_eos_ = column->AddCheck(
      {"StopReadOnEOS", "Lesen bei EOS beenden", "Das Endezeichen beendet eine Antwort auch ohne EOI"});
  repeat_addressing_ = column->AddCheck(
      {"RepeatAddressing", "Adressierung wiederholen", "Das Gerät vor jeder Übertragung neu adressieren"});
}

void GpibPage::Show(const GpibFields& fields) {
  ShowText(address_, fields.address);
  ShowText(timeout_, fields.timeout);
  ShowText(eos_char_, fields.eos_char);
  send_eoi_on_write_->setChecked(fields.send_eoi_on_write);
  send_eoi_with_eos_->setChecked(fields.send_eoi_with_eos);
  stop_read_on_eos_->setChecked(fields.stop_read_on_eos);
  repeat_addressing_->setChecked(fields.repeat_addressing);
}

GpibFields GpibPage::Fields() const {
  return {.address = TextOf(address_),
          .timeout = TextOf(timeout_),
          .eos_char = TextOf(eos_char_),
          .send_eoi_on_write = send_eoi_on_write_->isChecked(),
          .send_eoi_with_eos = send_eoi_with_eos_->isChecked(),
          .stop_read_on_eos = stop_read_on_eos_->isChecked(),
          .repeat_addressing = repeat_addressing_->isChecked()};
}

ParallelPage::ParallelPage() {
  auto* frame = new QGroupBox(QStringLiteral("Parallelport (LPT1 oder LPT2)"));
  auto* column = new FormColumn;
  frame->setLayout(column);
  mode_ = column->AddChoice({"PAPOMode", "&Betriebsart", "Wie Bytes über den Port gehen"}, kLptModeChoices);
  timeout_ =
      column->AddTypedChoice({"LPTTimo", "&Timeout",
                              "Wartezeit beim Verbinden und Senden in Sekunden, ab 0,001; bei 0 gelten 5 s.\n"
                              "Für Antworten gilt „Timeout (ms)“ im Hauptfenster."},
                             kLptTimeoutChoices);
  column->addRow(new QLabel(QStringLiteral("Port (immer 7 für Orbanyx)")));
  auto* page = new QVBoxLayout(this);
  page->addWidget(frame);
  page->addStretch();
}

void ParallelPage::Show(const ParallelFields& fields) {
  mode_->setCurrentIndex(fields.mode);
  ShowText(timeout_, fields.timeout);
}

ParallelFields ParallelPage::Fields() const {
  return {.mode = mode_->currentIndex(), .timeout = TextOf(timeout_)};
}

TcpIpPage::TcpIpPage(const AddressHistory& history) {
  auto* column = new FormColumn;
  setLayout(column);
  address_ = column->AddTypedChoice({"IPAddrList", "&IP Adresse ", "IP-Adresse oder Name des Geräts"});
  address_->setMinimumWidth(kAddressWidth);
  ShowHistory(address_, history);
  port_ = column->AddText({"txtIPPort", "&Port", "Portnummer, 1 bis 65535"});
  timeout_ = column->AddText({"TCPIPTimo", "&Timeout (s)",
                              "Wartezeit beim Verbinden und Senden in Sekunden, ab 0,001; bei 0 gelten 5 s.\n"
                              "Für Antworten gilt „Timeout (ms)“ im Hauptfenster."});
}

void TcpIpPage::Show(const TcpIpFields& fields) {
  ShowText(address_, fields.address);
  ShowText(port_, fields.port);
  ShowText(timeout_, fields.timeout);
}

TcpIpFields TcpIpPage::Fields() const {
  return {.address = TextOf(address_), .port = TextOf(port_), .timeout = TextOf(timeout_)};
}

OfflinePage::OfflinePage() {
  auto* page = new QVBoxLayout(this);
  page->addWidget(new QLabel(QStringLiteral("Terminal im Testmodus betreiben")));
  page->addStretch();
}

UsbPage::UsbPage(const AddressHistory& history)
    : scan_(new QPushButton(QStringLiteral("Scan..."))), found_(new QListWidget) {
  auto* column = new FormColumn;
  address_ = column->AddTypedChoice({"USBAddrList", "&USB-Serien-Nummer", "Seriennummer des Geräts"});
  address_->setMinimumWidth(kAddressWidth);
  ShowHistory(address_, history);
  timeout_ = column->AddText({"USBTimo", "&Timeout (s)",
                              "Sekunden; wird mit den Einstellungen gespeichert.\n"
                              "Für die Verbindung gilt der Timeout der Seite RS232."});
  scan_->setObjectName(QStringLiteral("Command3"));
  scan_->setToolTip(QStringLiteral("Angeschlossene USB-Geräte suchen"));
  found_->setObjectName(QStringLiteral("lstScan"));
  found_->setAccessibleName(QStringLiteral("Gefundene USB-Geräte"));
  found_->setToolTip(QStringLiteral("Seriennummer und Beschreibung der angeschlossenen Geräte"));
  auto* button_row = new QHBoxLayout;
  button_row->addWidget(scan_);
  button_row->addStretch();
  auto* page = new QVBoxLayout(this);
  page->addLayout(column);
  page->addLayout(button_row);
  page->addWidget(found_, 1);
}

void UsbPage::Show(const UsbFields& fields) {
  ShowText(address_, fields.address);
  ShowText(timeout_, fields.timeout);
}

UsbFields UsbPage::Fields() const { return {.address = TextOf(address_), .timeout = TextOf(timeout_)}; }

}  // namespace kolvane::device
