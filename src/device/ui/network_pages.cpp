#include "device/ui/network_pages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "device/ui/form_fields.h"

namespace kolvane::device {
namespace {

constexpr int kAddressWidth = 300;

}  // namespace

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
