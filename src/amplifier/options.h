#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "amplifier/stream.h"

namespace kolvane::amplifier {

/// How each connection misbehaves. Counts are answers per connection; the first limit reached applies.
struct Behaviour {
  static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t close_after = kNever;
  std::uint64_t reset_after = kNever;
  std::uint64_t silent_after = kNever;      // 0 = silent from the start
  std::uint64_t close_mid_answer = kNever;  // 1 = the first answer
};

struct Options {
  std::optional<std::uint16_t> tcp_port = {};  // 0 = any free one
  std::string pty_link = {};                   // empty = no pty
  Behaviour behaviour = {};
  Transmission transmission = {};
  bool echo = false;
  std::vector<std::string> files = {};  // paths
  std::uint64_t seed = 1;
  bool exit_with_parent = false;
  std::string replay = {};      // the file of a transcript; empty = the amplifier
  bool recorded_times = false;  // replay with the recorded times
};

/// Text for standard output instead of running (--help, --version).
struct Information {
  std::string text;
};

/// What is wrong with the command line, one line without line end.
struct UsageError {
  std::string text;
};

std::variant<Options, Information, UsageError> ParseOptions(int argc, char* const argv[]);

}  // namespace kolvane::amplifier
