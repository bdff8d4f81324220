#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace host {

/// The host's simulated instrument: it takes lines and answers each with one that ends in CR LF. `*IDN?` and
/// `MSV?` answer what they say, `MUTE` does not answer, `BYE` tells the host that the user is done, all else
/// is `?`.
class Instrument {
 public:
  Instrument(std::string name, std::function<void()> bye) : name_(std::move(name)), bye_(std::move(bye)) {}

  void Take(const std::string& line);

  /// What was answered, up to and with `terminator` (a character code, 0 for none) or `count` characters;
  /// nothing where less than that has been answered.
  std::optional<std::string> Give(int terminator, std::size_t count);

  /// The number of characters that nobody will read any more.
  std::size_t Discard();

 private:
  std::string AnswerTo(const std::string& line);

  std::string name_;
  std::function<void()> bye_;
  std::string answers_;
};

}  // namespace host
