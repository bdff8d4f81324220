#include "amplifier/stream.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "amplifier/arguments.h"

namespace kolvane::amplifier {

Transfer Transfer::Of(ssize_t returned) {
  if (returned > 0) return {Kind::kMoved, static_cast<std::size_t>(returned)};
  if (returned < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) return {};
  return {Kind::kEnded, 0};
}
namespace {

constexpr std::string_view kWords[] = {"CRLF", "CR", "LF", "NONE"};
constexpr std::string_view kTerminators[] = {"\r\n", "\r", "\n", ""};

}  // namespace

std::optional<std::string_view> TerminatorNamed(std::string_view word) {
  const auto row = ParseWord(word, kWords);
  if (!row) return std::nullopt;
  return kTerminators[*row];
}

std::string_view NameOfTerminator(std::string_view terminator) {
  const auto found = std::ranges::find(kTerminators, terminator);
  return found == std::end(kTerminators) ? std::string_view() : kWords[found - kTerminators];
}

}  // namespace kolvane::amplifier
