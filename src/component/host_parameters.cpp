#include "component/host_parameters.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/runtime_error.h"
#include "component/texts.h"
#include "device/connection_texts.h"
#include "device/device_state.h"
#include "device/port_table.h"

namespace kolvane::component {
namespace {

namespace code = device::port_code;
namespace mode = device::operating_mode;

// The host's property numbers.
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

// A value from a host, with its source for messages.
class HostValue {
 public:
  HostValue(std::string name, Variant value) : name_(std::move(name)), value_(std::move(value)) {}

  std::int16_t ToInt16() const { return As<std::int16_t>(&Variant::ToInt16); }
  std::int32_t ToInt32() const { return As<std::int32_t>(&Variant::ToInt32); }
  std::string ToText() const { return As<std::string>(AddressText); }

 private:
  // Elsewhere nothing is an empty text, but it is not an address.
  static std::string AddressText(const Variant& value) {
    if (value.empty()) throw base::RuntimeError(base::RuntimeError::Kind::kTypeMismatch);
    return value.ToText();
  }

  template <typename Result, typename Convert>
  Result As(Convert convert) const {
    try {
      return std::invoke(convert, value_);
    } catch (const base::RuntimeError& error) {
      throw base::RuntimeError(error.kind(), texts::NotConverted(error.what(), name_, value_));
    }
  }

  std::string name_;
  Variant value_;
};

// Keeps the host's object alive while it is used.
std::shared_ptr<HostObject> Host(const device::DeviceState& state) {
  if (!state.gObj) throw base::RuntimeError(base::RuntimeError::Kind::kNoObject);
  return state.gObj;
}

// The IO object is requested each time: the host may create a new one for each operation.
HostValue ValueOf(device::DeviceState& state, std::int16_t number) {
  std::string name = texts::PropertyName(number);
  Variant value;
  const std::shared_ptr<HostObject> host = Host(state);
  host->IO().GetDeviceProperty(state.DevIdx, number, value);
  return {std::move(name), std::move(value)};
}

HostParts TakeKind(const HostValue& value, device::ConnectionParameters& p) {
  p.port_code = value.ToInt16();
  const device::PortKind* kind = device::PortKindOfCode(p.port_code);
  if (kind != nullptr) p.port_option = kind->option;
  return {.kind = kind != nullptr,
          .address = !device::IsPointToPoint(p.port_code),
          .ip_address = p.port_code == code::kTcpIp,
          .usb_address = p.port_code == code::kUsb};
}

HostParts ReadByIndex(device::DeviceState& state, device::ConnectionParameters& p) {
  const auto property = [&](Property number) { return ValueOf(state, number); };
  HostParts given = TakeKind(property(kPortKind), p);
  p.baud = property(kBaud).ToInt32();
  p.parity = property(kParity).ToInt16();
  given.baud = device::BaudIndex(p.baud).has_value();
  given.parity = true;
  if (device::IsParallel(p.port_code)) p.lpt_mode = p.parity;
  p.data_bits = property(kDataBits).ToInt16();
  p.stop_bits = property(kStopBits).ToInt16();
  if (given.ip_address) {
    p.ip_address = property(kNetworkAddress).ToText();
    p.ip_port = p.data_bits == 8 ? kStandardIpPort : p.data_bits;
  } else if (given.usb_address) {
    p.usb_address = property(kNetworkAddress).ToText();
  } else {
    p.address = property(kAddress).ToInt16();
  }
  return given;
}

HostParts ReadSingle(const device::DeviceState& state, device::ConnectionParameters& p) {
  Variant kind;
  Variant info;
  Host(state)->GetDeviceInfo(kind, info);
  const HostParts given = TakeKind({texts::kInfoKind, kind}, p);
  const HostValue address(texts::kInfoAddress, info);
  if (given.ip_address) {
    p.ip_address = address.ToText();
    p.ip_port = kStandardIpPort;
  } else if (given.usb_address) {
    p.usb_address = address.ToText();
  } else {
    p.address = address.ToInt16();
  }
  return given;
}

}  // namespace

HostParts ReadHostParameters(device::DeviceState& state, device::ConnectionParameters& parameters) {
  if (state.OperMode == mode::kHostByIndex) return ReadByIndex(state, parameters);
  if (state.OperMode == mode::kHost) return ReadSingle(state, parameters);
  return {};
}

}  // namespace kolvane::component
