#include "component/ini_lines.h"

#include <algorithm>

namespace kolvane::component {
namespace {

std::string_view Trim(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

}  // namespace

bool IniLines::Next(IniLine& line) {
  if (at_ >= bytes_.size()) return false;
  std::size_t end = at_;
  while (end < bytes_.size() && bytes_[end] != '\n' && bytes_[end] != '\r') ++end;
  line = {.begin = at_, .next = Behind(end), .section = section_, .key = {}, .value = {}};
  Understand(Trim(bytes_.substr(at_, end - at_)), line);
  at_ = line.next;
  return true;
}

std::size_t IniLines::Behind(std::size_t end) const {
  if (bytes_.substr(end, 2) == "\r\n") return end + 2;
  return std::min(end + 1, bytes_.size());
}

void IniLines::Understand(std::string_view text, IniLine& line) {
  if (text.starts_with('[')) {
    text.remove_prefix(1);
    line.section = section_ = Trim(text.substr(0, text.find(']')));
    line.is_section = true;
  } else if (const std::size_t equals = text.find('='); !text.starts_with(';') && equals != text.npos) {
    line.key = Trim(text.substr(0, equals));
    line.value = text.substr(equals + 1);
  }
}

}  // namespace kolvane::component
