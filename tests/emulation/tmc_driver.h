#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "emulation/emulated_system.h"

namespace kolvane::emulation {

/// The kernel's driver for instruments of the test and measurement class with an instrument behind it that
/// says each command back, "?" stripped. The answer waits until it is read or cleared.
class TmcDriver final : public Driver {
 public:
  DriverResult Control(unsigned long request, std::span<std::uint8_t> argument) override;
  DriverResult Read(std::span<char> room) override;
  DriverResult Write(std::string_view bytes) override;

  /// From now on every call fails as it does when the plug has been pulled.
  void Unplug();
  /// What came: "clear", "auto-abort", "timeout 500", "write *IDN?".
  std::vector<std::string> calls();

 private:
  DriverResult Note(std::string call);

  std::mutex mutex_;
  bool unplugged_ = false;
  std::string answer_;
  std::vector<std::string> calls_;
};

}  // namespace kolvane::emulation
