#include "device/terminator_code.h"

#include <string>

#include "base/codepage.h"

namespace kolvane::device {
namespace {

std::int16_t CodeOf(char character) { return static_cast<std::uint8_t>(character); }

}  // namespace

std::int16_t WriteTerminatorCode(std::string_view terminator) {
  if (terminator == "\r\n") return kWriteCrLf;
  const std::string characters = base::ToWindows1252(terminator);
  return characters.size() == 1 ? CodeOf(characters.front()) : kWriteNothing;
}

std::int16_t ReadTerminatorCode(std::string_view terminator) {
  if (terminator.empty()) return kReadWithoutTerminator;
  return CodeOf(base::ToWindows1252(terminator).back());
}

}  // namespace kolvane::device
