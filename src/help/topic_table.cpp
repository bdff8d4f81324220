#include "help/topic_table.h"

#include <algorithm>
#include <cstddef>

namespace kolvane::help {
namespace {

constexpr std::size_t kHeader = 4;  // the size of what follows
constexpr std::size_t kPair = 8;
constexpr std::size_t kMaxPairs = 65'536;

std::uint32_t NumberAt(std::string_view bytes, std::size_t place) {
  std::uint32_t number = 0;
  for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
  return number;
}

}  // namespace

std::map<std::uint32_t, std::string> ReadTopicTable(std::string_view ivb, std::string_view strings) {
  std::map<std::uint32_t, std::string> topics;
  ivb.remove_prefix(std::min(kHeader, ivb.size()));
  ivb = ivb.substr(0, kMaxPairs * kPair);
  for (; ivb.size() >= kPair; ivb.remove_prefix(kPair)) {
    const std::size_t place = NumberAt(ivb, 4);
    if (place >= strings.size()) continue;
    const std::string_view rest = strings.substr(place);
    const std::size_t end = rest.find('\0');
    if (end == 0 || end == std::string_view::npos) continue;
    topics.emplace(NumberAt(ivb, 0), rest.substr(0, end));
  }
  return topics;
}

}  // namespace kolvane::help
