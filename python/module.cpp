#include <pybind11/pybind11.h>
#include <pybind11/stl/filesystem.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "command_run.h"
#include "device_failure.h"
#include "instrument.h"
#include "kolvane/Instrument.h"
#include "kolvane/MainClass.h"
#include "python_host.h"
#include "values.h"

namespace py = pybind11;

namespace kolvane::python {
namespace {

using Path = std::filesystem::path;

constexpr const char* kMainClass =
    R"(The component: keeps a device object and opens the terminal window on it.

There is one terminal in a process; all objects of this class share it. As a context manager it releases the
device object at the end of the block.)";

constexpr const char* kInitTerminal = R"(Keeps the device object until the terminal window has closed.

gObj: an object of any class with the members of IndexedHost (operating mode 0) or SingleHost (mode 1), or
None. Calls nothing on it.)";

constexpr const char* kOpenTerminal = R"(Shows the terminal window and returns when it has been closed.

OperMode: 0 the device DevIdx through gObj.IO, 1 the one device gObj, 2 a connection opened by the terminal;
any other value opens the window without a device. Call it on the thread of the program's Qt application, or
on the main thread if there is none; other threads continue to run. Raises what the device object raises
while the window opens, NoDisplay if there is no display, and Error for a missing device object, a value that
cannot be converted, a stored setting that cannot be read, a terminal that is already open and a wrong
thread.)";

constexpr const char* kSetOptions = R"(Takes effect at the next OpenTerminal and applies to all later ones.

Folder: that of histories, templates and help. SettingsFile: used instead of the user's own. CommandList: a
command file to load. CloseDescriptor: the window closes once this file descriptor becomes readable.
ConnectAtStart: connect as soon as the window is shown (operating mode 2). PlayAtStart: then play the list.)";

constexpr const char* kWait = R"(Keeps the window responsive while the device object waits for its device.

Call it from within a method of that object, about every 50 ms. Returns False once the user gives up the wait
or closes the window: the method should then end as a failure. Elsewhere it does nothing and returns True.)";

constexpr const char* kCanUnload = "True once a terminal window has closed and none is open.";

void InitTerminal(MainClass& terminal, py::object host) {
  std::shared_ptr<PythonHost> object;
  if (!host.is_none()) object = std::make_shared<PythonHost>(std::move(host));
  // The previous object is released by this call, and its destructor takes the lock itself.
  const py::gil_scoped_release unlocked;
  terminal.InitTerminal(object);
}

void OpenTerminal(MainClass& terminal, std::int16_t mode, std::int16_t device_index) {
  try {
    const py::gil_scoped_release unlocked;
    terminal.OpenTerminal(mode, device_index);
  } catch (const DeviceFailure& failure) {
    failure.Raise();
  }
  // Ctrl+C was pressed while the window was open.
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
}

void SetOptions(MainClass& terminal, const Path& folder, const Path& settings_file, const Path& command_list,
                int close_descriptor, bool connect_at_start, bool play_at_start) {
  TerminalOptions options;
  options.Folder = folder.string();
  options.SettingsFile = settings_file.string();
  options.CommandList = command_list.string();
  options.CloseDescriptor = close_descriptor;
  options.ConnectAtStart = connect_at_start;
  options.PlayAtStart = play_at_start;
  terminal.SetOptions(options);
}

// The classes are in the package; they are looked up when needed.
void Raise(const char* name, const std::exception& exception) {
  PyErr_SetObject(py::module_::import("kolvane").attr(name).ptr(), ToStr(exception.what()).ptr());
}

void Raise(const InstrumentError& failure) {
  PyErr_SetObject(py::module_::import("kolvane").attr("InstrumentError").ptr(),
                  py::make_tuple(ToStr(failure.what()), failure.status()).ptr());
}

void TranslateExceptions() {
  py::register_local_exception_translator([](std::exception_ptr exception) {
    try {
      if (exception) std::rethrow_exception(exception);
    } catch (const py::builtin_exception&) {
      throw;
    } catch (const NoDisplay& failure) {
      Raise("NoDisplay", failure);
    } catch (const InstrumentError& failure) {
      Raise(failure);
    } catch (const std::runtime_error& failure) {
      Raise("Error", failure);
    }
  });
}

void DefineMainClass(py::module_& module) {
  py::class_<MainClass> main_class(module, "MainClass", kMainClass);
  main_class.attr("__module__") = "kolvane";
  main_class.def(py::init<>(), "Creates no window yet.")
      .def("InitTerminal", &InitTerminal, py::arg("gObj"), kInitTerminal)
      .def("OpenTerminal", &OpenTerminal, py::arg("OperMode"), py::arg("DevIdx"), kOpenTerminal)
      .def("SetOptions", &SetOptions, py::kw_only(), py::arg("Folder") = "", py::arg("SettingsFile") = "",
           py::arg("CommandList") = "", py::arg("CloseDescriptor") = -1, py::arg("ConnectAtStart") = false,
           py::arg("PlayAtStart") = false, kSetOptions)
      .def("Wait", &MainClass::Wait, py::call_guard<py::gil_scoped_release>(), kWait)
      .def_property_readonly(
          "CanUnload", [](const MainClass& terminal) { return terminal.CanUnload().ToBool(); }, kCanUnload)
      .def(
          "__enter__", [](py::object terminal) { return terminal; }, "Returns the object itself.")
      .def(
          "__exit__", [](MainClass& terminal, const py::args&) { InitTerminal(terminal, py::none()); },
          "Releases the device object.");
}

}  // namespace
}  // namespace kolvane::python

PYBIND11_MODULE(_kolvane, module) {
  module.doc() = "The compiled part of the package kolvane.";
  module.attr("__version__") = KOLVANE_VERSION;
  kolvane::python::TranslateExceptions();
  kolvane::python::DefineMainClass(module);
  kolvane::python::DefineCommandRun(module);
  kolvane::python::DefineInstrument(module);
}
