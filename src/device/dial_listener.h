#pragma once

#include <cstdint>
#include <string>

namespace kolvane::device {

/// How far dialling has come. Texts are UTF-8, without line ends.
struct DialProgress {
  std::string command = {};       ///< has just gone out; empty while waiting for the connection
  std::string reply = {};         ///< the modem's last word to the last command; empty where none came
  std::int32_t seconds_left = 0;  ///< of the dial time-out, while waiting
};

/// Told before each step of a dialling that may block. The steps follow one another on the caller's thread.
class DialListener {
 public:
  virtual ~DialListener() = default;
  virtual void Dialling(const DialProgress& /*progress*/) {}
  /// Asked after each step: true ends the dialling as a failure.
  virtual bool DiallingGivenUp() const { return false; }
};

}  // namespace kolvane::device
