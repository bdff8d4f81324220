#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <vector>

#include "device/connection_form.h"

namespace kolvane::device {

/// The page "RS232".
class SerialPage final : public QWidget {
 public:
  SerialPage();

  void Show(const SerialFields& fields);
  SerialFields Fields() const;
  /// Only some kinds use the bus address.
  void EnableAddress(bool enabled);

 private:
  class FormColumn* BuildLine();
  class FormColumn* BuildBeyond();

  QComboBox* baud_;
  QComboBox* parity_;
  QComboBox* data_bits_;
  QComboBox* stop_bits_;
  QLineEdit* timeout_;
  QLineEdit* receive_buffer_;
  QComboBox* rs485_address_;
  QLineEdit* dial_timeout_;
  QPlainTextEdit* modem_script_;
  QWidget* address_label_;
};

/// The page "RS232 erweitert".
class ExtendedPage final : public QWidget {
 public:
  ExtendedPage();

  void Show(const ExtendedFields& fields);
  ExtendedFields Fields() const;

 private:
  QLineEdit* xon_limit_;
  QLineEdit* xoff_limit_;
  QLineEdit* xon_char_;
  QLineEdit* xoff_char_;
  QComboBox* dtr_control_;
  QComboBox* rts_control_;
  std::vector<QCheckBox*> checks_;  // in the order of kExtendedChecks
};

}  // namespace kolvane::device
