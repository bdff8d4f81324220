#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kolvane::bench {

/// A program as a child process, without output; killed with its owner.
class Process {
 public:
  explicit Process(std::vector<std::string> words);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// Returns once it has ended by itself, with its exit status.
  int Wait();

  /// On the monotonic clock, just before the fork.
  double started() const { return started_; }

  /// Bytes of the memory map's summary: "Rss", "Pss", "Private_Dirty" …
  double Memory(const std::string& kind) const;

  /// What all its threads have used so far.
  struct Use {
    std::int64_t ticks = 0;        ///< user and system time
    std::int64_t nanoseconds = 0;  ///< on a processor, as the scheduler counts it
    std::int64_t switches = 0;     ///< times that a thread gave up the processor by itself
  };
  Use Used() const;

 private:
  std::string Proc(const std::string& name) const;

  double started_;
  pid_t child_;
};

double MonotonicSeconds();

}  // namespace kolvane::bench
