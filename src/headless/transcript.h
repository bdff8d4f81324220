#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/descriptor.h"

namespace kolvane::headless {

/// A file that takes a line for each transfer of a connection, docs/formats/transcript.md. Each line is
/// appended whole by one write, as soon as it is known.
class Transcript {
 public:
  enum class Way { kOpen, kOut, kIn, kClose };

  struct Moment {
    double seconds = 0;  ///< since the transcript was opened
    std::int64_t time_ms = 0;
  };

  /// Makes the file where there is none. Returns 0 or an errno. Without `times` two transcripts of the same
  /// exchanges are the same.
  [[nodiscard]] int Open(const std::string& file, bool times);
  const std::string& file() const { return name_; }

  Moment Now() const { return {clock_.Seconds(), base::WallClockMs()}; }

  /// Returns 0 or an errno, after which nothing is written any more. `status`: why a connection was closed
  /// that the terminal has not closed, else 0.
  [[nodiscard]] int Write(Way way, std::string_view bytes, const Moment& moment, std::int32_t status = 0);

 private:
  base::SteadyClock clock_;
  base::Descriptor file_;
  std::string name_;
  bool times_ = true;
};

}  // namespace kolvane::headless
