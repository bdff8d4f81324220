#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

#include "emulation/emulated_system.h"

namespace kolvane::emulation {

/// The kernel's driver for instruments of the test and measurement class, and an instrument that echoes each
/// command, "?" stripped. The answer waits until it is read or cleared.
class TmcDriver final : public Driver {
 public:
  DriverResult Control(unsigned long request, std::span<std::uint8_t> argument) override;
  DriverResult Read(std::span<char> room) override;
  DriverResult Write(std::string_view bytes) override;

  /// Reads wait from now on, as with a silent instrument; Release ends them without an answer.
  void Hold();
  void Release();
  /// From now on every call fails as if the plug had been pulled.
  void Unplug();
  /// The calls so far: "clear", "auto-abort", "timeout 500", "status byte", "write *IDN?".
  std::vector<std::string> calls();

 private:
  DriverResult Note(std::string call);

  std::mutex mutex_;
  bool unplugged_ = false;
  bool held_ = false;
  std::condition_variable released_;
  std::string answer_;
  std::vector<std::string> calls_;
};

}  // namespace kolvane::emulation
