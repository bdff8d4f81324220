#include "component/host_parameters.h"

#include "base/runtime_error.h"
#include "device/operating_mode.h"

namespace kolvane::component {
namespace {

namespace code = device::port_code;
namespace mode = device::operating_mode;

// The numbers by which the host knows its device's properties.
enum Property : std::int16_t {
  kPortKind = 2,
  kBaud = 3,
  kParity = 4,
  kDataBits = 5,
  kStopBits = 6,
  kAddress = 8,
  kNetworkAddress = 9,
};

constexpr std::int16_t kStandardIpPort = 7;

HostObject& Host(const device::DeviceState& state) {
  if (!state.gObj) throw base::RuntimeError(base::RuntimeError::Kind::kNoObject);
  return *state.gObj;
}

// The host is asked for its IO object each time: it may make a new one for each operation.
Variant ValueOf(const device::DeviceState& state, std::int16_t number) {
  std::int16_t dev_idx = state.DevIdx;
  Variant value;
  Host(state).IO().GetDeviceProperty(dev_idx, number, value);
  return value;
}

// Nothing is an empty text elsewhere, but no address.
std::string AddressText(const Variant& value) {
  if (value.empty()) throw base::RuntimeError(base::RuntimeError::Kind::kTypeMismatch);
  return value.ToText();
}

void ReadByIndex(const device::DeviceState& state, device::ConnectionParameters& p) {
  const auto property = [&](Property number) { return ValueOf(state, number); };
  p.port_code = property(kPortKind).ToInt16();
  p.baud = property(kBaud).ToInt32();
  p.parity = property(kParity).ToInt16();
  if (p.port_code == code::kLpt1 || p.port_code == code::kLpt2) p.lpt_mode = p.parity;
  p.data_bits = property(kDataBits).ToInt16();
  p.stop_bits = property(kStopBits).ToInt16();
  if (p.port_code == code::kTcpIp) {
    p.ip_address = AddressText(property(kNetworkAddress));
    p.ip_port = p.data_bits == 8 ? kStandardIpPort : p.data_bits;
  } else if (p.port_code == code::kUsb) {
    p.usb_address = AddressText(property(kNetworkAddress));
  } else {
    p.address = property(kAddress).ToInt16();
  }
}

void ReadSingle(const device::DeviceState& state, device::ConnectionParameters& p) {
  Variant kind;
  Variant address;
  Host(state).GetDeviceInfo(kind, address);
  p.port_code = kind.ToInt16();
  if (p.port_code == code::kTcpIp) {
    p.ip_address = AddressText(address);
    p.ip_port = kStandardIpPort;
  } else if (p.port_code == code::kUsb) {
    p.usb_address = AddressText(address);
  } else {
    p.address = address.ToInt16();
  }
}

}  // namespace

void ReadHostParameters(const device::DeviceState& state, device::ConnectionParameters& parameters) {
  if (state.OperMode == mode::kHostByIndex) ReadByIndex(state, parameters);
  if (state.OperMode == mode::kHost) ReadSingle(state, parameters);
}

}  // namespace kolvane::component
