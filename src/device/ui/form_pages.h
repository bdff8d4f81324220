#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
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

/// The page "GPIB (IEEE488)".
class GpibPage final : public QWidget {
 public:
  GpibPage();

  void Show(const GpibFields& fields);
  GpibFields Fields() const;

 private:
  QComboBox* address_;
  QComboBox* timeout_;
  QLineEdit* eos_char_;
  QCheckBox* send_eoi_on_write_;
  QCheckBox* send_eoi_with_eos_;
  QCheckBox* stop_read_on_eos_;
  QCheckBox* repeat_addressing_;
};

/// The page "Druckerport".
class ParallelPage final : public QWidget {
 public:
  ParallelPage();

  void Show(const ParallelFields& fields);
  ParallelFields Fields() const;

 private:
  QComboBox* mode_;
  QComboBox* timeout_;
};

/// The page "TCP/IP".
class TcpIpPage final : public QWidget {
 public:
  explicit TcpIpPage(const AddressHistory& history);

  void Show(const TcpIpFields& fields);
  TcpIpFields Fields() const;

 private:
  QComboBox* address_;
  QLineEdit* port_;
  QLineEdit* timeout_;
};

/// The page "Offline".
class OfflinePage final : public QWidget {
 public:
  OfflinePage();
};

/// The page "USB". The list only shows the attached devices.
class UsbPage final : public QWidget {
 public:
  explicit UsbPage(const AddressHistory& history);

  void Show(const UsbFields& fields);
  UsbFields Fields() const;

  QPushButton* scan() { return scan_; }
  QListWidget* found() { return found_; }

 private:
  QComboBox* address_;
  QLineEdit* timeout_;
  QPushButton* scan_;
  QListWidget* found_;
};

}  // namespace kolvane::device
