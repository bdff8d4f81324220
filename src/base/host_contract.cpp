#include "kolvane/HostObject.h"

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

}  // namespace kolvane
