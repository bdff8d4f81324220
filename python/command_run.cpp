#include "command_run.h"

#include <pybind11/stl.h>

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "kolvane/CommandRun.h"
#include "kolvane/Ports.h"
#include "values.h"

namespace py = pybind11;

namespace kolvane::python {
namespace {

// `values` contains each field by name: paths and terminators as bytes, enumerations as their numbers.
CommandRunOptions OptionsOf(const py::dict& values) {
  CommandRunOptions options;
  std::optional<int> parity;
  std::optional<int> receive_mode;
  int format = 0;
  const auto take = [&values](const char* name, auto& field) {
    field = values[name].cast<std::decay_t<decltype(field)>>();
  };
  take("Connect", options.Connect);
  take("SettingsFile", options.SettingsFile);
  take("Folder", options.Folder);
  take("LogFile", options.LogFile);
  take("Baud", options.Baud);
  take("Parity", parity);
  take("DataBits", options.DataBits);
  take("StopBits", options.StopBits);
  take("TimeoutMs", options.TimeoutMs);
  take("ReceiveMode", receive_mode);
  take("Count", options.Count);
  take("SendTerminator", options.SendTerminator);
  take("ReceiveTerminator", options.ReceiveTerminator);
  take("Binary", options.Binary);
  take("ShowCommands", options.ShowCommands);
  take("ShowTimes", options.ShowTimes);
  take("Verbose", options.Verbose);
  take("Format", format);
  take("Fields", options.Fields);
  take("Flush", options.Flush);
  take("QueriesOnly", options.QueriesOnly);
  take("Blocks", options.Blocks);
  take("DeviceWords", options.DeviceWords);
  take("Reconnect", options.Reconnect);
  take("Utf8", options.Utf8);
  take("ErrorLines", options.ErrorLines);
  take("TimeStamps", options.TimeStamps);
  take("Repeat", options.Repeat);
  take("EveryMs", options.EveryMs);
  take("Transcript", options.Transcript);
  take("TranscriptTimes", options.TranscriptTimes);
  options.Format = static_cast<AnswerFormat>(format);
  if (parity) options.Parity = static_cast<SerialParity>(*parity);
  if (receive_mode) options.ReceiveMode = static_cast<AnswerEnd>(*receive_mode);
  return options;
}

// A run calls both on its own thread, which has released the lock.
void SetFunctions(CommandRunOptions& options, const py::object& on_line, const py::object& stop_requested) {
  options.StopRequested = [&stop_requested] {
    const py::gil_scoped_acquire lock;
    // Ctrl+C ends a run too.
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    return !stop_requested.is_none() && py::bool_(stop_requested());
  };
  if (on_line.is_none()) return;
  options.OnLine = [&on_line](LineKind kind, const std::string& line) {
    const py::gil_scoped_acquire lock;
    on_line(static_cast<int>(kind), ToStr(line));
  };
}

// Calls run(options) without the lock; returns the status as a number.
template <typename Run>
int WithOptions(const py::dict& values, const py::object& on_line, const py::object& stop_requested,
                Run run) {
  CommandRunOptions options = OptionsOf(values);
  SetFunctions(options, on_line, stop_requested);
  const py::gil_scoped_release unlocked;
  return static_cast<int>(run(options));
}

int RunList(const std::string& file, const py::dict& values, const py::object& on_line,
            const py::object& stop_requested) {
  return WithOptions(values, on_line, stop_requested,
                     [&](const CommandRunOptions& options) { return RunCommandList(file, options); });
}

int Send(const std::vector<std::string>& commands, const py::dict& values, const py::object& on_line,
         const py::object& stop_requested) {
  return WithOptions(values, on_line, stop_requested,
                     [&](const CommandRunOptions& options) { return SendCommands(commands, options); });
}

std::vector<Port> ListLocalPorts() {
  const py::gil_scoped_release unlocked;
  return ListPorts();
}

py::list PortTuples() {
  py::list tuples;
  for (const Port& port : ListLocalPorts())
    tuples.append(py::make_tuple(ToStr(port.Resource), ToStr(port.Node), ToStr(port.Description)));
  return tuples;
}

}  // namespace

void DefineCommandRun(py::module_& module) {
  module.attr("largest_count") = CommandRunOptions::kLargestCount;
  module.attr("most_fields") = CommandRunOptions::kMostFields;
  module.def("run_list", &RunList);
  module.def("send_commands", &Send);
  module.def("list_ports", &PortTuples);
}

}  // namespace kolvane::python
