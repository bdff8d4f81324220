#pragma once

#include "device/host_path.h"

namespace kolvane::device {

/// Operating mode 1: the host object itself, which stands for one device. It has no time-out and no
/// interpreter to activate.
class SingleHostPath final : public HostPath {
 public:
  using HostPath::HostPath;

  void Open() override;
  void Close() override;
  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override;
  void SetTimeout(std::int32_t) override {}
  /// What the host counted; 0 when the call failed.
  std::optional<std::int32_t> FlushInput() override;
  void ActivateInterpreter() override {}

 private:
  void Read(HostObject& host, HostRead& read) override;

  std::string message_;
};

}  // namespace kolvane::device
