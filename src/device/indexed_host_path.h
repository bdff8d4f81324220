#pragma once

#include "device/host_path.h"

namespace kolvane::device {

/// Operating mode 0: one of many devices, by its index, through the host object's IO(). The index goes along
/// by reference, so a host may change it.
class IndexedHostPath final : public HostPath {
 public:
  using HostPath::HostPath;

  void Open() override;
  void Close() override;
  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override;
  void SetTimeout(std::int32_t milliseconds) override;
  /// 0, as this host call tells no number.
  std::optional<std::int32_t> FlushInput() override;
  void ActivateInterpreter() override;

 private:
  void Read(HostObject& host, HostRead& read) override;
};

}  // namespace kolvane::device
