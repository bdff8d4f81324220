#include "device/ui/serial_pages.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>

#include "device/connection_texts.h"
#include "device/ui/form_fields.h"

namespace kolvane::device {
namespace {

constexpr int kColumnGap = 20;
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
  auto* label = new QLabel(Utf8(script.label));
  label->setBuddy(modem_script_);
  column->addRow(label);
  modem_script_->setObjectName(QLatin1String(script.name));
  modem_script_->setToolTip(Utf8(script.tool_tip));
  modem_script_->setAccessibleName(Utf8(script.label).remove(QLatin1Char('&')));
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
  modem_script_->setPlainText(Utf8(fields.modem_script));
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
              modem_script_->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n")).toStdString()};
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

}  // namespace kolvane::device
