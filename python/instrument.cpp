#include "instrument.h"

#include <pybind11/stl.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "kolvane/Instrument.h"

namespace py = pybind11;

namespace kolvane::python {
namespace {

using MaybeInt32 = std::optional<std::int32_t>;
using MaybeInt16 = std::optional<std::int16_t>;

// Signals are handled on the main thread; other threads do not take the lock while they wait.
bool WasInterrupted(unsigned long main_thread) {
  if (PyThread_get_thread_ident() != main_thread) return false;
  const py::gil_scoped_acquire lock;
  if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  return false;
}

unsigned long MainThread() {
  return py::module_::import("threading").attr("main_thread")().attr("ident").cast<unsigned long>();
}

SerialParity ParityOf(std::int32_t number) { return static_cast<SerialParity>(number); }

/// An instrument whose calls let other Python threads run. To be used with the interpreter lock held.
class Connection {
 public:
  Connection(const std::string& resource, std::int32_t timeout_ms, const py::bytes& read_termination,
             const py::bytes& write_termination, MaybeInt32 baud, MaybeInt32 parity, MaybeInt16 data_bits,
             MaybeInt16 stop_bits) {
    InstrumentOptions options{timeout_ms, read_termination, write_termination, baud};
    if (parity) options.Parity = ParityOf(*parity);
    options.DataBits = data_bits;
    options.StopBits = stop_bits;
    options.GiveUp = [main_thread = MainThread()] { return WasInterrupted(main_thread); };
    const py::gil_scoped_release unlocked;
    instrument_.emplace(resource, options);
  }
  // Closing a serial line waits for its output.
  ~Connection() {
    const py::gil_scoped_release unlocked;
    instrument_.reset();
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Calls call(instrument) without the lock.
  template <typename Call>
  auto Run(Call call) {
    const py::gil_scoped_release unlocked;
    return call(*instrument_);
  }
  /// For calls that do not wait.
  Instrument& instrument() { return *instrument_; }

 private:
  std::optional<Instrument> instrument_;
};

std::string_view ViewOf(const py::bytes& bytes) { return static_cast<std::string_view>(bytes); }

py::bytes Read(Connection& connection) {
  return connection.Run([](Instrument& instrument) { return instrument.Read(); });
}

py::bytes Query(Connection& connection, const py::bytes& command) {
  const std::string_view view = ViewOf(command);
  return connection.Run([&](Instrument& instrument) { return instrument.Query(view); });
}

void Write(Connection& connection, const py::bytes& command) {
  const std::string_view view = ViewOf(command);
  connection.Run([&](Instrument& instrument) { instrument.Write(view); });
}

void WriteBytes(Connection& connection, const py::bytes& bytes) {
  const std::string_view view = ViewOf(bytes);
  connection.Run([&](Instrument& instrument) { instrument.WriteBytes(view); });
}

py::bytes ReadBytes(Connection& connection, std::size_t count) {
  return connection.Run([&](Instrument& instrument) { return instrument.ReadBytes(count); });
}

py::bytes QueryBlock(Connection& connection, const py::bytes& command) {
  const std::string_view view = ViewOf(command);
  return connection.Run([&](Instrument& instrument) { return instrument.QueryBlock(view); });
}

py::tuple ReadMessage(Connection& connection, std::size_t count, const py::bytes& termination,
                      bool instrument_ends, std::int32_t gap_ms) {
  const MessageLimits limits{count, termination, instrument_ends, gap_ms};
  const InstrumentMessage message =
      connection.Run([&](Instrument& instrument) { return instrument.ReadMessage(limits); });
  return py::make_tuple(py::bytes(message.Bytes), static_cast<int>(message.End));
}

std::size_t Flush(Connection& connection) {
  return connection.Run([](Instrument& instrument) { return instrument.Flush(); });
}

std::size_t BytesWaiting(Connection& connection) {
  return connection.Run([](Instrument& instrument) { return instrument.BytesWaiting(); });
}

int ReadStatusByte(Connection& connection) {
  return connection.Run([](Instrument& instrument) { return instrument.ReadStatusByte(); });
}

void SetLine(Connection& connection, std::int32_t baud, std::int32_t parity, std::int16_t data_bits,
             std::int16_t stop_bits, std::int32_t flow) {
  connection.Run([&](Instrument& instrument) {
    instrument.SetLine(baud, ParityOf(parity), data_bits, stop_bits, static_cast<SerialFlow>(flow));
  });
}

void Close(Connection& connection) {
  connection.Run([](Instrument& instrument) { instrument.Close(); });
}

void DefineSettings(py::class_<Connection>& connection) {
  connection
      .def_property(
          "timeout_ms", [](Connection& self) { return self.instrument().TimeoutMs(); },
          [](Connection& self, std::int32_t milliseconds) { self.instrument().SetTimeoutMs(milliseconds); })
      .def_property(
          "read_termination", [](Connection& self) { return py::bytes(self.instrument().ReadTermination()); },
          [](Connection& self, const py::bytes& bytes) { self.instrument().SetReadTermination(bytes); })
      .def_property(
          "write_termination",
          [](Connection& self) { return py::bytes(self.instrument().WriteTermination()); },
          [](Connection& self, const py::bytes& bytes) { self.instrument().SetWriteTermination(bytes); })
      .def_property_readonly("is_open", [](Connection& self) { return self.instrument().IsOpen(); });
}

}  // namespace

void DefineInstrument(py::module_& module) {
  py::class_<Connection> connection(module, "Connection");
  connection
      .def(py::init<const std::string&, std::int32_t, const py::bytes&, const py::bytes&, MaybeInt32,
                    MaybeInt32, MaybeInt16, MaybeInt16>())
      .def("write", &Write)
      .def("read", &Read)
      .def("query", &Query)
      .def("write_bytes", &WriteBytes)
      .def("read_bytes", &ReadBytes)
      .def("query_block", &QueryBlock)
      .def("read_message", &ReadMessage)
      .def("flush", &Flush)
      .def("bytes_waiting", &BytesWaiting)
      .def("read_status_byte", &ReadStatusByte)
      .def("set_line", &SetLine)
      .def("close", &Close);
  DefineSettings(connection);
}

}  // namespace kolvane::python
