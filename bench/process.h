#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kolvane::bench {

/// A program as a child process, without output; killed when this object is destroyed.
class Process {
 public:
  explicit Process(std::vector<std::string> words);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// Waits for its end and returns its exit status.
  int Wait();

  /// Seconds on the monotonic clock, just before the fork.
  double started() const { return started_; }

  /// Bytes of the memory map's summary: "Rss", "Pss", "Private_Dirty" …
  double Memory(const std::string& kind) const;

  /// What all of its threads have used so far.
  struct Usage {
    std::int64_t ticks = 0;        ///< user and system time
    std::int64_t nanoseconds = 0;  ///< on a processor, as the scheduler counts it
    std::int64_t switches = 0;     ///< voluntary context switches
  };
  Usage Used() const;

 private:
  std::string Proc(const std::string& name) const;

  double started_;
  pid_t child_;
};

double MonotonicSeconds();

}  // namespace kolvane::bench
