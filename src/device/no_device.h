#pragma once

#include "device/device.h"

namespace kolvane::device {

/// The device of operating modes that have none: every operation does nothing and none of them fails.
class NoDevice final : public Device {
 public:
  void Open() override {}
  void Close() override {}
  void Write(std::string_view, std::string_view, std::int16_t) override {}
  void ReadText(std::string_view, std::int32_t, std::string& answer, Bytes&) override { answer.clear(); }
  std::size_t ReadBinary(std::string_view, std::int32_t, Bytes&) override { return 0; }
  void SetTimeout(std::int32_t) override {}
  DeviceError LastError() override { return {}; }
  void ClearLastError() override {}
  std::optional<std::int32_t> FlushInput() override { return std::nullopt; }
  void ActivateInterpreter() override {}
};

}  // namespace kolvane::device
