#include "help/topic_table.h"

#include <algorithm>
#include <cstddef>

#include "help/little_endian.h"

namespace kolvane::help {
namespace {

constexpr std::size_t kHeader = 4;  // the size of what follows
constexpr std::size_t kPair = 8;
constexpr std::size_t kMaxPairs = 65'536;
constexpr std::size_t kLongestPath = 1024;

}  // namespace

std::map<std::uint32_t, std::string> ReadTopicTable(std::string_view ivb, std::string_view strings) {
  std::map<std::uint32_t, std::string> topics;
  ivb.remove_prefix(std::min(kHeader, ivb.size()));
  ivb = ivb.substr(0, kMaxPairs * kPair);
  for (; ivb.size() >= kPair; ivb.remove_prefix(kPair)) {
    const std::size_t place = NumberAt(ivb, 4);
    if (place >= strings.size()) continue;
    const std::string_view rest = strings.substr(place, kLongestPath + 1);
    const std::size_t end = rest.find('\0');
    if (end == std::string_view::npos) continue;
    const std::string_view page = rest.substr(0, std::min(end, rest.find('#')));
    if (!page.empty()) topics.emplace(NumberAt(ivb, 0), page);
  }
  return topics;
}

}  // namespace kolvane::help
