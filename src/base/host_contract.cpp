#include <type_traits>

#include "base/encoding.h"
#include "base/number.h"
#include "kolvane/HostObject.h"
#include "kolvane/MainClass.h"
#include "kolvane/Variant.h"

namespace kolvane {
namespace {
[[noreturn]] void Missing() { throw RuntimeError(RuntimeError::Kind::kNoMember); }
}  // namespace

IoObject::~IoObject() = default;
void IoObject::InitializeDevice(std::int16_t&) { Missing(); }
void IoObject::CloseDevice(std::int16_t&) { Missing(); }
void IoObject::WriteCommand(std::int16_t&, std::string&, std::int16_t&, std::int16_t&) { Missing(); }
void IoObject::Read(std::int16_t&, std::int16_t&, std::int16_t&, std::int16_t&, std::int32_t&, Variant&,
                    Variant&) {
  Missing();
}
void IoObject::SetIOTimeout(std::int16_t&, std::int32_t&) { Missing(); }
void IoObject::FlushInQ(std::int16_t&) { Missing(); }
void IoObject::GetDeviceProperty(std::int16_t&, std::int16_t&, Variant&) { Missing(); }

NoDisplay::~NoDisplay() = default;

HostObject::~HostObject() = default;
IoObject& HostObject::IO() { Missing(); }
void HostObject::OpenDevice() { Missing(); }
void HostObject::CloseDevice() { Missing(); }
void HostObject::WriteCommand(const std::string&) { Missing(); }
void HostObject::Read(std::int16_t&, std::int16_t&, std::int32_t&, Variant&, Variant&) { Missing(); }
void HostObject::FlushInQ(std::int32_t&) { Missing(); }
void HostObject::GetDeviceInfo(Variant&, Variant&) { Missing(); }
Variant HostObject::LastError() { Missing(); }
void HostObject::SetLastError(std::int16_t) { Missing(); }
std::string HostObject::LastErrorDescription() { Missing(); }

namespace {

using Kind = RuntimeError::Kind;

double Number(const std::variant<std::monostate, bool, std::int32_t, double, std::string, Bytes>& value) {
  return std::visit(
      [](const auto& held) -> double {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, bool>) return held ? -1 : 0;
        if constexpr (std::is_arithmetic_v<Held>) return static_cast<double>(held);
        if constexpr (std::is_same_v<Held, std::string>) {
          if (const auto number = base::WholeTextNumber(held)) return *number;
        }
        throw RuntimeError(Kind::kTypeMismatch);
      },
      value);
}

}  // namespace

std::int16_t Variant::ToInt16() const { return base::RoundToInt16(Number(value_)); }

std::int32_t Variant::ToInt32() const { return base::RoundToInt32(Number(value_)); }

bool Variant::ToBool() const { return Number(value_) != 0; }

std::string Variant::ToText() const {
  if (const auto* text = std::get_if<std::string>(&value_)) return *text;
  if (const auto* bytes = std::get_if<Bytes>(&value_))
    return base::FromWindows1252({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
  if (empty()) return {};
  return base::DoubleText(Number(value_), ".");
}

Bytes Variant::ToBytes() const {
  if (const auto* bytes = std::get_if<Bytes>(&value_)) return *bytes;
  if (const auto* text = std::get_if<std::string>(&value_)) {
    const std::string encoded = base::ToWindows1252(*text);
    return {encoded.begin(), encoded.end()};
  }
  if (empty()) return {};
  throw RuntimeError(Kind::kTypeMismatch);
}

}  // namespace kolvane
