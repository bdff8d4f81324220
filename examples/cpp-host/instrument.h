#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace host {

/// The host's simulated instrument: it reads lines and answers each with one that ends in CR LF. `*IDN?` and
/// `MSV?` return identification and value, `MUTE` is not answered, `BYE` informs the host that the user is
/// done, anything else is answered with `?`.
class Instrument {
 public:
  Instrument(std::string name, std::function<void()> bye) : name_(std::move(name)), bye_(std::move(bye)) {}

  void Take(const std::string& line);

  /// The answer up to and including `terminator` (a character code, 0 for none) or `count` characters;
  /// nullopt if less than that is available.
  std::optional<std::string> Give(int terminator, std::size_t count);

  /// Discards unread characters and returns their number.
  std::size_t Discard();

 private:
  std::string AnswerTo(const std::string& line);

  std::string name_;
  std::function<void()> bye_;
  std::string answers_;
};

}  // namespace host
