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
  std::string SettingsFile;  ///< the settings file in place of the user's own; UTF-8 path
  std::string CommandList;   ///< a command file to be loaded into the list; UTF-8 path
  /// Closes the window, with all its last steps, once it becomes readable. Dialling gives up then, and what
  /// fails is a line on standard error: nobody may sit before the window to answer a message.
  int CloseDescriptor = -1;
  bool ConnectAtStart = false;  ///< press the connect button once the window is shown (operating mode 2)
  bool PlayAtStart = false;     ///< press the play button when that is done: the command list runs
};

/// Thrown by MainClass::OpenTerminal where there is no display to show a window on.
class KOLVANE_EXPORT NoDisplay : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  NoDisplay(const NoDisplay&) = default;
  NoDisplay& operator=(const NoDisplay&) = default;
  ~NoDisplay() override;
};

/// The component's one public class: a host makes one, hands its device object over, opens the terminal, and
/// asks whether the component may go.
///
/// There is one terminal in a process: all objects of this class share its state, which lasts as long as the
/// component is loaded. All calls come on one thread: that of the process's QApplication, or the main thread
/// where it has none.
class KOLVANE_EXPORT MainClass {
 public:
  MainClass();
  ~MainClass();
  MainClass(const MainClass&) = delete;
  MainClass& operator=(const MainClass&) = delete;

  /// Keeps the host's device object (HostObject.h says what is done with it) until the terminal window has
  /// closed, or until another one or none takes its place; calls nothing on it. Needed before each
  /// OpenTerminal in operating modes 0 and 1, without effect in the others. The device is to be open.
  void InitTerminal(const std::shared_ptr<HostObject>& gObj);

  /// Shows the terminal window modally and returns when it has been closed.
  ///
  /// `OperMode`: 0 the host's device `DevIdx` through gObj->IO(), 1 the host's one device through gObj, 2 a
  /// connection of the terminal's own; any other value opens the window on no device. `DevIdx` means nothing
  /// but in mode 0.
  ///
  /// In order: the connection data are read from the host's object (modes 0 and 1), the settings are loaded,
  /// the window is shown and the user works. When it closes, an open log is closed, the settings are saved,
  /// the host's device is opened again if the user left it disconnected, or the terminal's own connection is
  /// closed; the host's object is released, and CanUnload turns true.
  ///
  /// The call runs a Qt event loop. In a process without a QApplication one is made for the time of the call;
  /// the process's locale stays the host's. In a process with one the window is modal to the whole
  /// application, so the host's windows take no input meanwhile, and stands over the active one. Ending the
  /// application's event loops (QCoreApplication::exit) closes the window with all its last steps.
  ///
  /// Throws std::runtime_error on another thread than MainClass says, before anything else is done. Throws
  /// what the host's object throws while its connection data are read, RuntimeError for a missing object, a
  /// value that cannot be converted, a stored setting that cannot be read (after a message) or a terminal
  /// that is already open, NoDisplay when there is no display or QT_QPA_PLATFORM names nothing that works,
  /// and std::runtime_error where the process has a QCoreApplication that is no QApplication. No window is
  /// shown then, the host's object stays, and CanUnload keeps its value. Nothing else is thrown: failures of
  /// the session are shown to the user.
  void OpenTerminal(std::int16_t OperMode, std::int16_t DevIdx);

  /// Keeps the window alive while the host's device object waits for its device: to be called from within a
  /// call of that object, on its thread, every 50 ms or so (more often costs nothing). The window is painted,
  /// moved and scrolled meanwhile, and no command is started. False once the user has given up what is waited
  /// for, or closes the window: the object's call should end as a failure then. From anywhere else it does
  /// nothing and returns true.
  bool Wait();

  /// A Boolean: false until the first terminal window has closed and while one is open, true otherwise. A
  /// host asks before it unloads the library.
  Variant CanUnload() const;

  /// Takes effect at the next OpenTerminal and holds for all that follow.
  void SetOptions(const TerminalOptions& options);

  /// The folder of the component's own file, UTF-8 and without a separator at its end: the component's folder
  /// unless the options or the environment variable KOLVANE_FOLDER name another one.
  static std::string OwnFolder();
};

}  // namespace kolvane
