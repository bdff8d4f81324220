#include "device/ui/instrument_pages.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "device/connection_texts.h"
#include "device/ui/form_fields.h"

namespace kolvane::device {

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

}  // namespace kolvane::device
