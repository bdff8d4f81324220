#include "device/ui/connection_dialog.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "base/ui/qt_text.h"
#include "device/attached_ports.h"
#include "device/histories.h"
#include "device/port_table.h"
#include "device/ui/form_fields.h"
#include "device/ui/form_pages.h"

namespace kolvane::device {
namespace {

constexpr QSize kWindowFrame(20, 60);  // room for the window manager's frame

QString PortTip(std::int16_t code) {
  const std::string node = PortNode(code);
  if (node.empty()) return {};
  return (code == port_code::kGpib ? QStringLiteral("GPIB-Karte ") : QStringLiteral("Gerätedatei ")) +
         base::ToQt(node);
}

}  // namespace

ConnectionDialog::ConnectionDialog(const ConnectionDialogContext& context, QWidget* parent)
    : QDialog(parent),
      context_(context),
      history_folder_(HistoryFolder(context.folder)),
      form_(LoadForm(context.parameters, history_folder_)),
      pages_(new QTabWidget),
      serial_(new SerialPage),
      extended_(new ExtendedPage),
      gpib_(new GpibPage),
      parallel_(new ParallelPage),
      tcpip_(new TcpIpPage(form_.ip_history)),
      usb_(new UsbPage(form_.usb_history)) {
  setObjectName(QStringLiteral("U_Port"));
  setWindowTitle(QStringLiteral("Verbindung konfigurieren"));
  LayOut(BuildPorts(), BuildPages());
  ShowForm();
  if (form_.port >= 0) ports_[static_cast<std::size_t>(form_.port)]->setFocus();
}

QWidget* ConnectionDialog::BuildPorts() {
  auto* frame = new QGroupBox(QStringLiteral("Schnittstelle"));
  ports_grid_ = new QGridLayout(frame);
  for (const PortKind& kind : kPortKinds) {
    auto* port = new QRadioButton(base::ToQt(kind.caption));
    port->setObjectName(QStringLiteral("Port_%1").arg(kind.option));
    port->setToolTip(PortTip(kind.code));
    port->setChecked(kind.option == form_.port);
    const auto click = [this, option = kind.option](bool on) {
      if (on) PortClick(option);
    };
    connect(port, &QRadioButton::toggled, this, click);
    // Clicking the selected button emits no toggled().
    connect(port, &QRadioButton::clicked, this, click);
    ports_[static_cast<std::size_t>(kind.option)] = port;
  }
  ArrangePorts(kPortKinds.size());
  return frame;
}

void ConnectionDialog::ArrangePorts(std::size_t rows) {
  const auto at = [](std::size_t position) { return static_cast<int>(position); };
  for (std::size_t i = 0; i < ports_.size(); ++i)
    ports_grid_->addWidget(ports_[i], at(i % rows), at(i / rows));
  ports_grid_->setRowStretch(at(rows), 1);
}

// With a large font the ports do not fit beside the pages; they are then placed above them in pairs.
void ConnectionDialog::LayOut(QWidget* ports, QWidget* pages) {
  const QSize room = screen()->availableSize() - kWindowFrame;
  auto* all = new QVBoxLayout(this);
  auto* top = new QBoxLayout(QBoxLayout::LeftToRight);
  const QMargins margins = all->contentsMargins();
  const int beside = margins.left() + ports->sizeHint().width() + all->spacing() + pages->sizeHint().width() +
                     margins.right();
  if (beside > room.width()) {
    top->setDirection(QBoxLayout::TopToBottom);
    ArrangePorts(2);
  }
  top->addWidget(ports);
  top->addWidget(pages, 1);
  all->addLayout(top, 1);
  all->addLayout(BuildButtons());
  resize(sizeHint().boundedTo(room));
}

QWidget* ConnectionDialog::BuildPages() {
  pages_->setObjectName(QStringLiteral("SSTab1"));
  pages_->setUsesScrollButtons(false);
  pages_->setElideMode(Qt::ElideRight);
  pages_->addTab(serial_, QStringLiteral("RS232"));
  pages_->addTab(extended_, QStringLiteral("RS232 erweitert"));
  pages_->addTab(gpib_, QStringLiteral("GPIB (IEEE488)"));
  pages_->addTab(parallel_, QStringLiteral("Druckerport"));
  pages_->addTab(tcpip_, QStringLiteral("TCP/IP"));
  pages_->addTab(new OfflinePage, QStringLiteral("Offline"));
  pages_->addTab(usb_, QStringLiteral("USB"));
  connect(usb_->scan(), &QPushButton::clicked, this, &ConnectionDialog::Scan);
  auto* frame = new QGroupBox(QStringLiteral("Schnittstellenparameter"));
  (new QVBoxLayout(frame))->addWidget(pages_);
  return frame;
}

QLayout* ConnectionDialog::BuildButtons() {
  auto* ok = new QPushButton(QStringLiteral("OK"));
  ok->setObjectName(QStringLiteral("Command1"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &ConnectionDialog::Confirm);
  auto* cancel = new QPushButton(QStringLiteral("Abbrechen"));
  cancel->setObjectName(QStringLiteral("Command2"));
  connect(cancel, &QPushButton::clicked, this, &ConnectionDialog::reject);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(ok);
  row->addWidget(cancel);
  return row;
}

void ConnectionDialog::ShowForm() {
  serial_->Show(form_.serial);
  extended_->Show(form_.extended);
  gpib_->Show(form_.gpib);
  parallel_->Show(form_.parallel);
  tcpip_->Show(form_.tcpip);
  usb_->Show(form_.usb);
  ShowPages();
}

// The front page first: when a tab widget's current page is disabled, it selects another page itself.
void ConnectionDialog::ShowPages() {
  pages_->setTabEnabled(form_.pages.front, true);
  pages_->setCurrentIndex(form_.pages.front);
  for (int page = 0; page < form_page::kCount; ++page)
    pages_->setTabEnabled(page, form_.pages.enabled[static_cast<std::size_t>(page)]);
  serial_->EnableAddress(form_.UsesRs485Address());
}

void ConnectionDialog::ReadForm() {
  form_.serial = serial_->Fields();
  form_.extended = extended_->Fields();
  form_.gpib = gpib_->Fields();
  form_.parallel = parallel_->Fields();
  form_.tcpip = tcpip_->Fields();
  form_.usb = usb_->Fields();
}

void ConnectionDialog::PortClick(std::int16_t option) {
  ReadForm();
  form_.ClickPort(option, context_.parameters);
  ShowForm();
}

void ConnectionDialog::Confirm() {
  ReadForm();
  ConfirmForm(form_, context_.parameters, history_folder_, context_.prompt);
  accept();
}

void ConnectionDialog::reject() {
  CancelForm(context_.state);
  QDialog::reject();
}

void ConnectionDialog::Scan() {
  usb_->found()->clear();
  PortLibrary* library = context_.library.Library();
  if (library == nullptr) return context_.prompt.ShowError(context_.library.Failure());
  QApplication::setOverrideCursor(Qt::WaitCursor);
  for (const std::string& device : ScanUsb(*library, context_.state))
    usb_->found()->addItem(base::ToQt(device));
  QApplication::restoreOverrideCursor();
}

}  // namespace kolvane::device
