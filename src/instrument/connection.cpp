#include "instrument/connection.h"

#include <dlfcn.h>
#include <unistd.h>

#include <new>
#include <stdexcept>
#include <variant>

#include "base/encoding.h"
#include "device/loaded_port_library.h"
#include "device/port_table.h"
#include "device/resource_name.h"
#include "instrument/texts.h"

namespace kolvane::instrument {
namespace {

namespace port_code = device::port_code;

using devlnk::PortSession;
using devlnk::Status;

constexpr std::int32_t kDefaultBaud = 9600;
constexpr std::int32_t kFirstParallelMode = 1;

void Require(bool good, const char* what) {
  if (!good) throw std::invalid_argument(what);
}

void Check(const InstrumentOptions& options) {
  Require(options.TimeoutMs >= 0, "the time-out must not be negative");
  Require(options.Baud.value_or(1) > 0, "the rate must be above 0");
  const std::int16_t data_bits = options.DataBits.value_or(8);
  Require(data_bits == 7 || data_bits == 8, "the data bits must be 7 or 8");
  const std::int16_t stop_bits = options.StopBits.value_or(1);
  Require(stop_bits == 1 || stop_bits == 2, "the stop bits must be 1 or 2");
}

device::Resource Named(const std::string& name) {
  const auto result = device::ParseResourceName(name);
  if (const auto* problem = std::get_if<device::ResourceProblem>(&result))
    throw std::invalid_argument(problem->text);
  const auto& resource = std::get<device::Resource>(result);
  Require(resource.port_code != port_code::kOffline, "OFFLINE has no instrument");
  return resource;
}

std::string_view ParityText(SerialParity parity) {
  constexpr std::string_view kLetters[] = {"n", "e", "o"};
  return kLetters[static_cast<std::size_t>(parity)];
}

devlnk::FlowControl FlowOf(SerialFlow flow) {
  switch (flow) {
    case SerialFlow::kXonXoff:
      return devlnk::FlowControl::kXonXoff;
    case SerialFlow::kRtsCts:
      return devlnk::FlowControl::kRtsCts;
    case SerialFlow::kNone:
      break;
  }
  return devlnk::FlowControl::kNone;
}

void SetLine(const InstrumentOptions& options, std::int32_t usual_baud, devlnk::PortRequest& request) {
  request.baud = options.Baud.value_or(usual_baud);
  request.text = ParityText(options.Parity.value_or(SerialParity::kNone));
  request.data_bits = options.DataBits.value_or(8);
  request.stop_bits = options.StopBits.value_or(1);
}

std::int32_t DefaultBaud(const device::Resource& resource) {
  const auto configured = resource.node.empty() ? device::ConfiguredRate(resource.port_code) : std::nullopt;
  return configured.value_or(kDefaultBaud);
}

Status Open(PortSession& session, const device::Resource& resource, const InstrumentOptions& options) {
  const bool tcp = resource.port_code == port_code::kTcpIp;
  const std::string text = base::ToWindows1252(tcp ? resource.host : resource.serial_number);
  devlnk::PortRequest request{.name = {}, .baud = kFirstParallelMode, .text = text, .node = resource.node};
  if (tcp) request.data_bits = resource.ip_port;
  if (device::IsSerial(resource.port_code) || device::IsRs485(resource.port_code))
    SetLine(options, DefaultBaud(resource), request);
  const Status status = session.OpenPort(resource.port_code, request);
  if (status != Status::kOk || device::IsPointToPoint(resource.port_code)) return status;
  return session.Select(resource.address);
}

// All code that accesses instruments is in the port library; it is never unloaded.
std::unique_ptr<PortSession> MakeSession(const std::string& resource) {
  const std::string path =
      device::FolderOfCode(reinterpret_cast<const void*>(&DefaultBaud)) + "/libdevlnk.so";
  const auto not_available = [&resource](std::string_view why) {
    constexpr std::int32_t kStatus = InstrumentError::kNotAvailable;
    return InstrumentError(kStatus, FailureText(resource, why, kStatus));
  };
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw not_available(dlerror());
  void* function = dlsym(library, devlnk::kNewPortSession);
  if (function == nullptr) throw not_available(path + ": " + devlnk::kNewPortSession);
  std::unique_ptr<PortSession> session(reinterpret_cast<devlnk::NewPortSession*>(function)());
  if (session == nullptr) throw std::bad_alloc();
  return session;
}

}  // namespace

Connection::Connection(const std::string& resource, const InstrumentOptions& options)
    : process_(getpid()),
      resource_(resource),
      give_up_(options.GiveUp),
      settings_{options.TimeoutMs, options.ReadTermination, options.WriteTermination} {
  Check(options);
  const device::Resource named = Named(resource);
  open_ = true;
  session_ = MakeSession(resource);
  session_->SetWaitHandler({AskGiveUp, this});
  Run([&](PortSession& session, const Settings&) { return Code(Open(session, named, options)); });
}

void Connection::Close() {
  open_ = false;
  // In a forked process nobody unlocks the mutex if a thread of the original held it.
  if (getpid() != process_) return;
  const std::lock_guard lock(mutex_);
  if (session_ != nullptr) session_->Close();
}

Connection::Settings Connection::settings() const {
  const std::lock_guard lock(settings_mutex_);
  return settings_;
}

void Connection::SetLine(const InstrumentOptions& options, SerialFlow flow) {
  Check(options);
  Run([&](PortSession& session, const Settings&) {
    devlnk::PortRequest request;
    instrument::SetLine(options, kDefaultBaud, request);
    request.flow = FlowOf(flow);
    return Code(session.SetLine(request));
  });
}

std::size_t Connection::BytesWaiting() {
  const std::lock_guard lock(mutex_);
  return session_->bytes_waiting();
}

void Connection::Fail(std::int32_t status) const {
  throw InstrumentError(status, FailureText(resource_, ReasonText(status), status));
}

std::int32_t Connection::AskGiveUp(void* self, std::int32_t /*waited_ms*/) {
  auto& connection = *static_cast<Connection*>(self);
  if (!connection.open_) return 1;
  try {
    return connection.give_up_ && connection.give_up_() ? 1 : 0;
  } catch (...) {
    connection.thrown_ = std::current_exception();
    return 1;
  }
}

}  // namespace kolvane::instrument
