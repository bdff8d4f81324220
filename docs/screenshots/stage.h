#pragma once

#include <QApplication>
#include <QTimer>
#include <functional>
#include <string>

#include "amplifier/server.h"
#include "device/loaded_port_library.h"
#include "devlnk/fake_sysfs.h"
#include "window/window_records.h"

namespace kolvane::screenshots {

/// A terminal window on a simulated amplifier, with its own folder and fictitious USB devices.
class Stage : private window::WindowRecords {
 public:
  /// `folder` is the component's folder, which exists and is empty.
  explicit Stage(const std::string& folder);

  window::MainWindow& window() { return window_; }

  template <typename Object>
  Object* Find(const char* name) {
    return window_.findChild<Object*>(QLatin1String(name));
  }

  void Trigger(const char* action) { Find<QAction>(action)->trigger(); }
  void Choose(const char* list, int index);
  /// Types a command and sends it, as with Enter.
  void Send(const QString& command);
  /// Loads the rows as a command file of that name.
  void LoadList(const std::string& name, const std::string& rows);

  /// Calls `open`, which opens a modal dialog, and passes the dialog to `look`, which need not close it.
  void WithDialog(const std::function<void()>& open, const std::function<void(QWidget*)>& look);

  void Connect();
  /// From now on, until Connect, connections go to an IP port without a listener.
  void RefuseConnections() { connection_.ip_port = 9; }

 private:
  void FillFolder();
  void Configure();
  void AttachUsbDevices();

  std::string folder_;
  amplifier::ServerThread amplifier_;
  devlnk::FakeSysfs sysfs_;
  device::LazyPortLibrary library_{""};
  window::MainWindow window_;
};

}  // namespace kolvane::screenshots
