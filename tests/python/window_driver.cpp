// The user of the terminal window, as a Python module: it finds the window by its name once it is shown.

#include <pybind11/pybind11.h>

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <string>

#include "gui/shown_terminal.h"

namespace py = pybind11;
namespace gui = kolvane::gui;

namespace {

py::object& Script() {
  static auto* script = new py::object;
  return *script;
}

// Runs the script, which gets the lock for each step; the window closes whatever happens in it. Without a
// script there is no user.
void RunScript() {
  const py::gil_scoped_acquire lock;
  const py::object script = std::move(Script());
  if (!script) return;
  try {
    script();
  } catch (const py::error_already_set& error) {
    PyErr_WriteUnraisable(error.value().ptr());
  }
  const py::gil_scoped_release unlocked;
  QApplication::closeAllWindows();
}

void ScheduleScript() { QTimer::singleShot(0, qApp, &RunScript); }

}  // namespace

PYBIND11_MODULE(window_driver, module) {
  qAddPreRoutine(&ScheduleScript);
  module.def(
      "use_window", [](py::object script) { Script() = std::move(script); },
      "Runs script() in the next terminal window, then closes it.");
  module.def(
      "type_command",
      [](const std::string& text) { gui::TypeCommand(*gui::ShownTerminal(), QString::fromStdString(text)); },
      py::call_guard<py::gil_scoped_release>());
  module.def("pane_text", [] { return gui::PaneText(*gui::ShownTerminal()).toStdString(); });
  module.def(
      "press",
      [](const std::string& key) { gui::ShownTerminal()->findChild<QAction*>(key.c_str())->trigger(); },
      py::call_guard<py::gil_scoped_release>());
}
