#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "kolvane/Export.h"
#include "kolvane/HostObject.h"
#include "kolvane/Variant.h"

namespace kolvane {

/// What a host may preset before it opens the terminal; empty fields keep the defaults.
struct TerminalOptions {
  std::string Folder;           ///< the component's folder (histories, templates, help); UTF-8 path
  std::string SettingsFile;     ///< the settings file in place of the user's own; UTF-8 path
  std::string CommandList;      ///< a command file to be loaded into the list; UTF-8 path
  int CloseDescriptor = -1;     ///< closes the window, with all its last steps, once it becomes readable
  bool ConnectAtStart = false;  ///< press the connect button once the window is shown (operating mode 2)
};

/// Thrown by MainClass::OpenTerminal where there is no display to show a window on.
class KOLVANE_EXPORT NoDisplay : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The component's one public class. All calls come on one thread, the user-interface thread where there is
/// one.
class KOLVANE_EXPORT MainClass {
 public:
  MainClass();
  ~MainClass();
  MainClass(const MainClass&) = delete;
  MainClass& operator=(const MainClass&) = delete;

  /// Keeps the host's device object until the terminal window has closed. To be called before OpenTerminal in
  /// operating modes 0 and 1.
  void InitTerminal(const std::shared_ptr<HostObject>& gObj);

  /// Shows the terminal window modally and returns when it has been closed.
  ///
  /// `OperMode`: 0 the host's device `DevIdx` through gObj->IO(), 1 the host's one device through gObj, 2 a
  /// connection of the terminal's own; any other value opens the window on no device. In a process without a
  /// QApplication one is made for the time of the call. Throws what the host's object throws while its
  /// connection data are read, RuntimeError for a value that cannot be converted or a missing object, and
  /// NoDisplay when there is no display; no window is shown then.
  void OpenTerminal(std::int16_t OperMode, std::int16_t DevIdx);

  /// A Boolean: true once the terminal window has been closed, false before.
  Variant CanUnload() const;

  /// Takes effect at the next OpenTerminal.
  void SetOptions(const TerminalOptions& options);
};

}  // namespace kolvane
