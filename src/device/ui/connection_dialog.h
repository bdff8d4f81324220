#pragma once

#include <QBoxLayout>
#include <QDialog>
#include <QGridLayout>
#include <QRadioButton>
#include <QTabWidget>
#include <array>
#include <string>

#include "base/prompt.h"
#include "device/connection_form.h"
#include "device/port_library.h"
#include "device/port_table.h"

namespace kolvane::device {

class ExtendedPage;
class GpibPage;
class ParallelPage;
class SerialPage;
class TcpIpPage;
class UsbPage;

/// What the dialog works on; the references must outlive the dialog.
struct ConnectionDialogContext {
  ConnectionParameters& parameters;
  DeviceState& state;
  PortLibrarySource& library;
  base::Prompt& prompt;
  std::string folder;  ///< the component's folder
};

/// The dialog `U_Port`: a ConnectionForm with widgets. It loads on construction; OK stores and closes, every
/// other way of closing cancels.
class ConnectionDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit ConnectionDialog(const ConnectionDialogContext& context, QWidget* parent = nullptr);

  void reject() override;

 private:
  QWidget* BuildPorts();
  QWidget* BuildPages();
  QLayout* BuildButtons();
  void ArrangePorts(std::size_t rows);
  void LayOut(QWidget* ports, QWidget* pages);
  void ShowForm();
  void ShowPages();
  void ReadForm();
  void PortClick(std::int16_t option);
  void Confirm();
  void Scan();

  ConnectionDialogContext context_;
  std::string history_folder_;
  ConnectionForm form_;
  std::array<QRadioButton*, kPortKinds.size()> ports_{};
  QGridLayout* ports_grid_ = nullptr;
  QTabWidget* pages_;
  SerialPage* serial_;
  ExtendedPage* extended_;
  GpibPage* gpib_;
  ParallelPage* parallel_;
  TcpIpPage* tcpip_;
  UsbPage* usb_;
};

}  // namespace kolvane::device
