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
  std::string Folder;        ///< the component's folder (histories, templates, help); UTF-8 path
  std::string SettingsFile;  ///< used instead of the user's own; UTF-8 path
  std::string CommandList;   ///< command file to load into the list; UTF-8 path
  /// Once it becomes readable, the window closes with all its last steps. Dialling is then given up, and
  /// failures are reported on standard error, because nobody may be there to answer a message.
  int CloseDescriptor = -1;
  bool ConnectAtStart = false;  ///< press the connect button once the window is shown (operating mode 2)
  bool PlayAtStart = false;     ///< then press the play button: the command list runs
};

/// Thrown by MainClass::OpenTerminal if there is no display to show a window on.
class KOLVANE_EXPORT NoDisplay : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  NoDisplay(const NoDisplay&) = default;
  NoDisplay& operator=(const NoDisplay&) = default;
  ~NoDisplay() override;
};

/// The component's only public class: a host creates one, passes in its device object, opens the terminal,
/// and asks whether the component may be unloaded.
///
/// There is one terminal in a process: all objects of this class share its state, which lasts as long as the
/// component is loaded. All calls must come on one thread: that of the process's QApplication, or the main
/// thread if there is none.
class KOLVANE_EXPORT MainClass {
 public:
  MainClass();
  ~MainClass();
  MainClass(const MainClass&) = delete;
  MainClass& operator=(const MainClass&) = delete;

  /// Keeps the host's device object (HostObject.h describes its use) until the terminal window has closed or
  /// until it is replaced by another one or none; calls nothing on it. Needed before each OpenTerminal in
  /// operating modes 0 and 1, without effect in the others. The device should be open.
  void InitTerminal(const std::shared_ptr<HostObject>& gObj);

  /// Shows the terminal window modally and returns when it has been closed.
  ///
  /// `OperMode`: 0 the host's device `DevIdx` through gObj->IO(), 1 the host's one device through gObj, 2 a
  /// connection opened by the terminal; any other value opens the window without a device. `DevIdx` is used
  /// in mode 0 only.
  ///
  /// In order: the connection data are read from the host's object (modes 0 and 1), the settings are loaded,
  /// the window is shown and the user works. When it closes, an open log is closed, the settings are saved,
  /// the host's device is reopened if the user left it disconnected, or the terminal's own connection is
  /// closed; the host's object is released, and CanUnload becomes true.
  ///
  /// Runs a Qt event loop. If the process has no QApplication, one is created for the duration of the call;
  /// the process's locale stays the host's. If it has one, the window is application-modal, so the host's
  /// windows take no input while it is open, and it stays above the active one. Ending the application's
  /// event loops (QCoreApplication::exit) closes the window with all its last steps.
  ///
  /// Throws std::runtime_error on a thread other than the one MainClass requires, before anything else is
  /// done. Throws what the host's object throws while its connection data are read, RuntimeError for a
  /// missing object, a value that cannot be converted, a stored setting that cannot be read (after a message)
  /// or a terminal that is already open, NoDisplay if there is no display or QT_QPA_PLATFORM names no usable
  /// platform, and std::runtime_error if the process has a QCoreApplication that is not a QApplication. In
  /// these cases no window is shown, the host's object stays, and CanUnload keeps its value. Nothing else is
  /// thrown: failures during the session are shown to the user.
  void OpenTerminal(std::int16_t OperMode, std::int16_t DevIdx);

  /// Keeps the window responsive while the host's device object waits for its device: call it from within a
  /// call of that object, on its thread, about every 50 ms (more often costs nothing). It paints, moves and
  /// scrolls the window and starts no command. Returns false once the user gives up the wait or closes the
  /// window: the object's call should then end as a failure. Called from anywhere else it does nothing and
  /// returns true.
  bool Wait();

  /// A Boolean: false until the first terminal window has closed and while one is open, otherwise true. To be
  /// checked before the library is unloaded.
  Variant CanUnload() const;

  /// Takes effect at the next OpenTerminal and applies to all later ones.
  void SetOptions(const TerminalOptions& options);

  /// Folder of the component's own file, UTF-8, without a trailing separator. It is the component's folder
  /// unless the options or the environment variable KOLVANE_FOLDER name another one.
  static std::string OwnFolder();
};

}  // namespace kolvane
