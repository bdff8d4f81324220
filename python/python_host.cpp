#include "python_host.h"

#include <string>

#include "values.h"

namespace py = pybind11;

namespace kolvane::python {
namespace {

// Stores the two values that a method returns.
void StorePair(const char* method, const py::object& result, Variant& first, Variant& second) {
  if (!py::isinstance<py::tuple>(result) || py::len(result) != 2)
    throw py::type_error(std::string(method) + " must return a tuple of two values");
  first = ToVariant(result[py::int_(0)]);
  second = ToVariant(result[py::int_(1)]);
}

// The number of positional parameters without a default of `method`; 0 if it is not a Python function.
int RequiredParameters(const py::object& method) {
  if (!py::hasattr(method, "__code__")) return 0;
  const int declared = method.attr("__code__").attr("co_argcount").cast<int>();
  const py::object defaults = method.attr("__defaults__");
  const int optional = defaults.is_none() ? 0 : static_cast<int>(py::len(defaults));
  return declared - optional - (py::hasattr(method, "__self__") ? 1 : 0);
}

// A Read that also declares the contract's last two parameters gets them as passed: the answer filled with
// spaces, the buffer with zeros.
template <typename... In>
void CallRead(const py::object& method, Variant& answer, Variant& buffer, In... in) {
  const bool takes_all = RequiredParameters(method) == static_cast<int>(sizeof...(in)) + 2;
  const py::object result =
      takes_all ? method(in..., ToStr(answer.ToText()), ToPythonBytes(buffer.ToBytes())) : method(in...);
  StorePair("Read", result, answer, buffer);
}

}  // namespace

LateBound::~LateBound() {
  // The component may release the object after the interpreter has ended.
  if (Py_IsInitialized() == 0) {
    object_.release();
    return;
  }
  const py::gil_scoped_acquire lock;
  object_ = py::object();
}

void PythonIo::InitializeDevice(std::int16_t& DevIdx) {
  host_.InSession("IO.InitializeDevice",
                  [&](const py::object& host) { host.attr("IO").attr("InitializeDevice")(DevIdx); });
}

void PythonIo::CloseDevice(std::int16_t& DevIdx) {
  host_.InSession("IO.CloseDevice",
                  [&](const py::object& host) { host.attr("IO").attr("CloseDevice")(DevIdx); });
}

void PythonIo::WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                            std::int16_t& Extra) {
  host_.InSession("IO.WriteCommand", [&](const py::object& host) {
    host.attr("IO").attr("WriteCommand")(DevIdx, ToStr(Command), Terminator, Extra);
  });
}

void PythonIo::Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
                    std::int32_t& Count, Variant& Answer, Variant& Buffer) {
  host_.InSession("IO.Read", [&](const py::object& host) {
    CallRead(host.attr("IO").attr("Read"), Answer, Buffer, DevIdx, Binary, Zero, Terminator, Count);
  });
}

void PythonIo::SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds) {
  host_.InSession("IO.SetIOTimeout", [&](const py::object& host) {
    host.attr("IO").attr("SetIOTimeout")(DevIdx, Milliseconds);
  });
}

void PythonIo::FlushInQ(std::int16_t& DevIdx) {
  host_.InSession("IO.FlushInQ", [&](const py::object& host) { host.attr("IO").attr("FlushInQ")(DevIdx); });
}

void PythonIo::GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, Variant& Value) {
  host_.With([&](const py::object& host) {
    Value = ToVariant(host.attr("IO").attr("GetDeviceProperty")(DevIdx, Number));
  });
}

void PythonHost::OpenDevice() {
  host_.InSession("OpenDevice", [](const py::object& host) { host.attr("OpenDevice")(); });
}

void PythonHost::CloseDevice() {
  host_.InSession("CloseDevice", [](const py::object& host) { host.attr("CloseDevice")(); });
}

void PythonHost::WriteCommand(const std::string& Command) {
  host_.InSession("WriteCommand", [&](const py::object& host) { host.attr("WriteCommand")(ToStr(Command)); });
}

void PythonHost::Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, Variant& Answer,
                      Variant& Buffer) {
  host_.InSession("Read", [&](const py::object& host) {
    CallRead(host.attr("Read"), Answer, Buffer, Binary, Terminator, Count);
  });
}

void PythonHost::FlushInQ(std::int32_t& Count) {
  host_.InSession("FlushInQ",
                  [&](const py::object& host) { Count = ToVariant(host.attr("FlushInQ")()).ToInt32(); });
}

void PythonHost::GetDeviceInfo(Variant& Kind, Variant& Address) {
  host_.With([&](const py::object& host) {
    StorePair("GetDeviceInfo", host.attr("GetDeviceInfo")(), Kind, Address);
  });
}

Variant PythonHost::LastError() {
  return host_.InSession("LastError",
                         [](const py::object& host) { return ToVariant(host.attr("LastError")); });
}

void PythonHost::SetLastError(std::int16_t Code) {
  host_.InSession("LastError", [&](const py::object& host) { host.attr("LastError") = Code; });
}

std::string PythonHost::LastErrorDescription() {
  return host_.InSession("LastErrorDescription", [](const py::object& host) {
    return ToVariant(host.attr("LastErrorDescription")).ToText();
  });
}

}  // namespace kolvane::python
