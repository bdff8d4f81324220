#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "base/descriptor.h"

namespace kolvane::app {

/// A simulated amplifier process that listens on a free loopback port for as long as this object lives.
class AmplifierProcess {
 public:
  /// Starts `program` and waits until it listens. Throws std::runtime_error with a one-line English text.
  explicit AmplifierProcess(const std::string& program);
  ~AmplifierProcess();
  AmplifierProcess(const AmplifierProcess&) = delete;
  AmplifierProcess& operator=(const AmplifierProcess&) = delete;

  std::uint16_t port() const { return port_; }

 private:
  void Start(const std::string& program);
  void Stop();

  pid_t child_ = -1;
  base::Descriptor output_;
  std::uint16_t port_ = 0;
};

/// Opens the terminal connected to its own simulated amplifier, with separate settings, component files and
/// current folder. These are deleted at the end; files saved by the user stay, and a line says where. Without
/// a display it runs the demo's command list without a window and says so. Returns the exit status; throws
/// std::runtime_error with a one-line English text.
int RunDemo(const std::string& folder);

}  // namespace kolvane::app
