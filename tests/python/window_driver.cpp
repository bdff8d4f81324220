// The user of the terminal window, as a Python module: it finds the window by its name once it is shown.

#include <pybind11/pybind11.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QMainWindow>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <string>

namespace py = pybind11;

namespace {

QMainWindow* Terminal() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == QLatin1String("frmTerminal") && widget->isVisible())
      return qobject_cast<QMainWindow*>(widget);
  }
  return nullptr;
}

py::object& Script() {
  static auto* script = new py::object;
  return *script;
}

// Runs the script, which gets the lock for each step; the window closes whatever happens in it.
void RunScript() {
  const py::gil_scoped_acquire lock;
  const py::object script = std::move(Script());
  try {
    if (script) script();
  } catch (const py::error_already_set& error) {
    PyErr_WriteUnraisable(error.value().ptr());
  }
  const py::gil_scoped_release unlocked;
  QApplication::closeAllWindows();
}

void ScheduleScript() { QTimer::singleShot(0, qApp, &RunScript); }

void TypeCommand(const std::string& command) {
  auto* box = Terminal()->findChild<QComboBox*>("cmbCommand");
  box->setCurrentText(QString::fromStdString(command));
  QTest::keyClick(box, Qt::Key_Return);
}

std::string PaneText() {
  return Terminal()->findChild<QWidget*>("TermWin")->property("plainText").toString().toStdString();
}

}  // namespace

PYBIND11_MODULE(window_driver, module) {
  qAddPreRoutine(&ScheduleScript);
  module.def(
      "use_window", [](py::object script) { Script() = std::move(script); },
      "Runs script() in the next terminal window, then closes it.");
  module.def("type_command", &TypeCommand, py::call_guard<py::gil_scoped_release>());
  module.def("pane_text", &PaneText);
  module.def(
      "press", [](const std::string& key) { Terminal()->findChild<QAction*>(key.c_str())->trigger(); },
      py::call_guard<py::gil_scoped_release>());
}
