#pragma once

#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <string>
#include <vector>

#include "base/prompt.h"
#include "device/attached_ports.h"
#include "device/port_library.h"
#include "device/ports_file.h"

namespace kolvane::device {

/// What the dialog works on; both references must outlive the dialog.
struct PortsDialogContext {
  PortLibrarySource& library;
  base::Prompt& prompt;
  bool connected = false;                   ///< a connection is open: ports cannot be tested
  std::vector<AttachedPort> attached = {};  ///< offered in the fields
};

/// The dialog `PortsDialog`: the devices for COM1, COM2, LPT1, LPT2 and GPIB, and the rates of the serial
/// lines. OK writes them to ports.ini.
class PortsDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit PortsDialog(const PortsDialogContext& context, QWidget* parent = nullptr);

  void accept() override;

 private:
  QComboBox* AddField(QFormLayout* form, const PortSetting& setting);
  std::vector<PortSetting> Entered() const;
  void Test();
  /// `rate` is the text entered for a serial line; the default rate if empty or not a number.
  QString TestOne(std::int16_t code, const std::string& node, const std::string& rate);

  PortsDialogContext context_;
  std::vector<PortSetting> loaded_;
  std::vector<QComboBox*> fields_;
  QLabel* result_;
};

}  // namespace kolvane::device
