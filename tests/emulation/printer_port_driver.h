#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "emulation/emulated_system.h"

namespace kolvane::emulation {

/// The kernel's driver for parallel ports and an instrument that echoes each line. Reads and writes work only
/// while the port is claimed and in a mode for their direction.
class PrinterPortDriver final : public Driver {
 public:
  DriverResult Control(unsigned long request, std::span<std::uint8_t> argument) override;
  DriverResult Read(std::span<char> room) override;
  DriverResult Write(std::string_view bytes) override;

  void Refuse(unsigned long request, int error);
  /// From now on every call fails as if the port were gone.
  void Unplug();
  /// The instrument refuses this mode.
  void RefuseMode(int mode, int error);
  void SetAbilities(unsigned int abilities);
  /// How many bytes a read returns at most.
  void SetPiece(std::size_t bytes);
  /// The calls in their order, "claim", "negotiate 64", "write A"; the driver's waits are left out.
  std::vector<std::string> calls();

 private:
  DriverResult TakeMode(const char* verb, std::span<std::uint8_t> argument);

  std::mutex mutex_;
  std::map<unsigned long, int> refused_;
  std::map<int, int> refused_modes_;
  unsigned int abilities_ = ~0U;
  std::size_t piece_ = 1000;
  bool unplugged_ = false;
  bool claimed_ = false;
  int mode_ = 0;
  std::string answer_;
  std::vector<std::string> calls_;
};

}  // namespace kolvane::emulation
