#include "faults/live_window.h"

#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <cstdlib>

#include "base/temp_folder.h"
#include "pane/ui/output_pane.h"

namespace kolvane::faults {
namespace {

constexpr char kTimeoutMs[] = "20000";

QString WithoutAddress(const QString& line) {
  if (line.contains(QLatin1String("  Verbindung hergestellt mit "))) return QStringLiteral("<+>");
  if (line.contains(QLatin1String("  Verbindung getrennt von "))) return QStringLiteral("<->");
  return line;
}

}  // namespace

LiveWindow::LiveWindow(Port port, Fault fault)
    : instrument_(port, std::move(fault)), window_(ContextWith(library_, folder_.path())) {
  connection_ = ParametersOf(instrument_);
  setenv("KOLVANE_PORT_LIBRARY", KOLVANE_PORT_LIBRARY_FILE, 1);
  for (const auto& [name, value] : instrument_.Environment()) setenv(name.c_str(), value.c_str(), 1);
  terminal_.shown.timeout = kTimeoutMs;
  window_.Load();
  window_.show();
  boxes_.Start();
}

LiveWindow::~LiveWindow() {
  if (device_.connected) window_.core().device.Close();
}

device::ConnectionParameters LiveWindow::ParametersOf(const FaultyInstrument& instrument) {
  namespace port_code = device::port_code;
  constexpr std::int16_t kCodes[] = {port_code::kTcpIp, port_code::kCom1, port_code::kCom1Rs485,
                                     port_code::kUsb};
  device::ConnectionParameters parameters;
  parameters.port_code = kCodes[static_cast<int>(instrument.port())];
  parameters.ip_address = "127.0.0.1";
  parameters.ip_port = static_cast<std::int16_t>(instrument.ip_port());
  parameters.usb_address = "A50285BI";
  parameters.baud = 38400;
  parameters.parity = 0;
  parameters.data_bits = 8;
  parameters.stop_bits = 1;
  parameters.timeout_ms = 5000;
  return parameters;
}

void LiveWindow::Press(const char* key) { window_.findChild<QAction*>(QLatin1String(key))->trigger(); }

void LiveWindow::Send(const std::string& command) {
  window_.findChild<QComboBox*>(QStringLiteral("cmbCommand"))
      ->setCurrentText(QString::fromStdString(command));
  window_.findChild<QPushButton*>(QStringLiteral("cmdSend"))->click();
}

void LiveWindow::Reconnect() {
  Press("TB_CONNECT");
  Press("TB_CONNECT");
}

std::string LiveWindow::NewLines() {
  const QString text = window_.findChild<pane::OutputPane*>()->plainText();
  QStringList lines;
  for (const QString& line : text.mid(shown_).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
    lines << WithoutAddress(line);
  shown_ = text.size();
  return lines.join(QLatin1Char('|')).toStdString();
}

std::vector<std::string> LiveWindow::boxes() const {
  std::vector<std::string> texts;
  for (const QString& text : boxes_.texts()) texts.push_back(text.toStdString());
  return texts;
}

void LiveWindow::Play(const std::string& rows) {
  base::WriteBytes(folder_.Path("list.CMD"), rows);
  window_.OpenCommandFile(folder_.Path("list.CMD"));
  Press("TB_PLAY");
}

}  // namespace kolvane::faults
