#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

namespace kolvane::bench {

/// Binds the calling process to processor 0, so that both sides of an exchange share one.
void PinToOneCore();

/// A separate process that sends back whatever it receives, with the simplest possible loop, on its parent's
/// processor.
class EchoInstrument {
 public:
  enum class Kind { kTcp, kPty };

  explicit EchoInstrument(Kind kind);
  ~EchoInstrument();
  EchoInstrument(const EchoInstrument&) = delete;
  EchoInstrument& operator=(const EchoInstrument&) = delete;

  std::uint16_t port() const { return port_; }       ///< kTcp, on 127.0.0.1
  const std::string& node() const { return node_; }  ///< kPty, the slave's path

 private:
  void ListenTcp();
  void OpenPty();

  int fd_ = -1;
  int slave_ = -1;
  pid_t child_ = -1;
  std::uint16_t port_ = 0;
  std::string node_;
};

/// A descriptor for the bare loop: connected to `instrument`, raw, without delay.
int OpenBare(const EchoInstrument& instrument);

}  // namespace kolvane::bench
