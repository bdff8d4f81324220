#include <pybind11/pybind11.h>

#include <memory>
#include <string>

#include "device_failure.h"
#include "kolvane/MainClass.h"
#include "python_host.h"

namespace py = pybind11;

namespace kolvane::python {
namespace {

void InitTerminal(MainClass& terminal, py::object host) {
  std::shared_ptr<PythonHost> object;
  if (!host.is_none()) object = std::make_shared<PythonHost>(std::move(host));
  // The object kept so far goes with this call, and what goes takes the lock itself.
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
  // Ctrl+C while the window was open.
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
}

void SetOptions(MainClass& terminal, const std::string& folder, const std::string& settings_file,
                const std::string& command_list, int close_descriptor, bool connect_at_start,
                bool play_at_start) {
  TerminalOptions options;
  options.Folder = folder;
  options.SettingsFile = settings_file;
  options.CommandList = command_list;
  options.CloseDescriptor = close_descriptor;
  options.ConnectAtStart = connect_at_start;
  options.PlayAtStart = play_at_start;
  terminal.SetOptions(options);
}

void DefineExceptions(py::module_& module) {
  static py::exception<RuntimeError> error(module, "Error", PyExc_RuntimeError);
  static py::exception<NoDisplay> no_display(module, "NoDisplay", error.ptr());
  py::register_exception_translator([](std::exception_ptr exception) {
    try {
      if (exception) std::rethrow_exception(exception);
    } catch (const RuntimeError& failure) {
      error(failure.what());
    } catch (const NoDisplay& failure) {
      no_display(failure.what());
    }
  });
}

void DefineMainClass(py::module_& module) {
  py::class_<MainClass>(module, "MainClass")
      .def(py::init<>())
      .def("InitTerminal", &InitTerminal, py::arg("gObj"))
      .def("OpenTerminal", &OpenTerminal, py::arg("OperMode"), py::arg("DevIdx"))
      .def("SetOptions", &SetOptions, py::kw_only(), py::arg("Folder") = "", py::arg("SettingsFile") = "",
           py::arg("CommandList") = "", py::arg("CloseDescriptor") = -1, py::arg("ConnectAtStart") = false,
           py::arg("PlayAtStart") = false)
      .def_property_readonly("CanUnload",
                             [](const MainClass& terminal) { return terminal.CanUnload().ToBool(); });
}

}  // namespace
}  // namespace kolvane::python

PYBIND11_MODULE(_kolvane, module) {
  kolvane::python::DefineExceptions(module);
  kolvane::python::DefineMainClass(module);
}
