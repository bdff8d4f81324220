#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "device/connection_form.h"

namespace kolvane::device {

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
