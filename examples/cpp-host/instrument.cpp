#include "instrument.h"

#include <utility>

namespace host {

void Instrument::Take(const std::string& line) {
  if (const std::string answer = AnswerTo(line); !answer.empty()) answers_ += answer + "\r\n";
}

std::optional<std::string> Instrument::Give(int terminator, std::size_t count) {
  const std::size_t end = terminator == 0 ? std::string::npos : answers_.find(static_cast<char>(terminator));
  const std::size_t length = end == std::string::npos || end >= count ? count : end + 1;
  if (answers_.size() < length) return std::nullopt;
  const std::string given = answers_.substr(0, length);
  answers_.erase(0, length);
  return given;
}

std::size_t Instrument::Discard() { return std::exchange(answers_, {}).size(); }

std::string Instrument::AnswerTo(const std::string& line) {
  if (line == "*IDN?") return "EXAMPLE," + name_ + ",0,1.0";
  if (line == "MSV?") return "12.5";
  if (line == "MUTE") return "";
  if (line != "BYE") return "?";
  bye_();
  return "0";
}

}  // namespace host
