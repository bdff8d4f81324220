#include "stage.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "base/encoding.h"
#include "device/connection_form.h"
#include "window/message_prompt.h"

namespace kolvane::screenshots {
namespace {

constexpr int kTcpIpOption = 8;
constexpr std::uint16_t kIpPort = 5025;  // seen in the pictures

}  // namespace

Stage::Stage(const std::string& folder)
    : folder_(folder), amplifier_({.tcp_port = kIpPort}), window_(ContextWith(library_, folder)) {
  setenv("KOLVANE_PORT_LIBRARY", KOLVANE_PORT_LIBRARY_FILE, 1);
  setenv("KOLVANE_SYSFS", sysfs_.root().c_str(), 1);
  AttachUsbDevices();
  FillFolder();
  Configure();
  window_.Load();
  // Wide enough to show the controls of sending and receiving in one row.
  window_.resize(920, 680);
  window_.show();
  window_.activateWindow();
}

// Copies help and templates, which the build puts beside the libraries.
void Stage::FillFolder() {
  namespace fs = std::filesystem;
  for (const auto& entry : fs::directory_iterator(fs::path(KOLVANE_PORT_LIBRARY_FILE).parent_path())) {
    const fs::path extension = entry.path().extension();
    if (extension == ".chm" || extension == ".BNS") fs::copy(entry.path(), folder_);
  }
}

void Stage::Configure() {
  std::ofstream(folder_ + "/IPADDR.INI") << "192.168.1.7\r\n127.0.0.1\r\n";
  std::ofstream(folder_ + "/USBADDR.INI") << "00104711\r\n";
  std::ofstream(folder_ + "/MODEM.INI") << "ATZ\r\nATE0\r\nATDT 030123456\r\n";
  connection_.port_option = kTcpIpOption;
  connection_.ip_address = "127.0.0.1";
  connection_.ip_port = static_cast<std::int16_t>(kIpPort);
  connection_.usb_address = "00104711";
  window::MessagePrompt prompt(nullptr);
  device::ConfirmStoredConnection(connection_, folder_, prompt);
}

void Stage::AttachUsbDevices() {
  sysfs_.AddDevice("1-1", {"idVendor=0957", "serial=00104711", "manufacturer=KOLVANE", "product=KVA-8"});
  sysfs_.AddNode("usbmisc", "usbtmc0", "1-1", "usbtmc0");
  sysfs_.AddDevice("1-2",
                   {"idVendor=0403", "serial=A50285BI", "manufacturer=FTDI", "product=FT232R USB UART"});
  sysfs_.AddNode("tty", "ttyUSB0", "1-2", "ttyUSB0");
}

void Stage::Choose(const char* list, int index) { Find<QComboBox>(list)->setCurrentIndex(index); }

void Stage::Connect() {
  connection_.ip_port = static_cast<std::int16_t>(kIpPort);
  Trigger("mnuConnect");
}

void Stage::Send(const QString& command) {
  Find<QComboBox>("cmbCommand")->setCurrentText(command);
  Find<QPushButton>("cmdSend")->click();
}

void Stage::LoadList(const std::string& name, const std::string& rows) {
  std::ofstream(folder_ + "/" + name, std::ios::binary) << base::ToWindows1252(rows);
  window_.OpenCommandFile(folder_ + "/" + name);
}

// A running list processes events before its message appears, so the first look may find nothing yet.
void Stage::WithDialog(const std::function<void()>& open, const std::function<void(QWidget*)>& look) {
  QTimer until_there;
  QObject::connect(&until_there, &QTimer::timeout, &window_, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr) return;
    until_there.stop();
    look(dialog);
    dialog->close();
  });
  until_there.start(0);
  open();
}

}  // namespace kolvane::screenshots
