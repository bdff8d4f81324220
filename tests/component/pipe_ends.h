#pragma once

#include <unistd.h>

#include <cstdlib>

namespace kolvane {

/// What a host gives as TerminalOptions::CloseDescriptor: readable once the request has been made.
class PipeEnds {
 public:
  PipeEnds() {
    if (pipe(ends_) != 0) std::abort();
  }
  ~PipeEnds() {
    close(ends_[0]);
    close(ends_[1]);
  }
  PipeEnds(const PipeEnds&) = delete;
  PipeEnds& operator=(const PipeEnds&) = delete;

  int reader() const { return ends_[0]; }
  void Request() const {
    if (write(ends_[1], "x", 1) != 1) std::abort();
  }

 private:
  int ends_[2];
};

}  // namespace kolvane
