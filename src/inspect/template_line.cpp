#include "inspect/template_line.h"

#include <algorithm>

#include "base/folding.h"

namespace kolvane::inspect {
namespace {

constexpr std::string_view kByteCount = "BYTECOUNT=";
constexpr std::string_view kString = "STRING*";

}  // namespace

std::optional<FieldLine> SplitFieldLine(std::string_view stripped) {
  FieldLine line;
  while (line.count < FieldLine::kMostFields) {
    const std::size_t end = stripped.find(';');
    line.fields[line.count++] = stripped.substr(0, end);
    if (end == std::string_view::npos) break;
    stripped.remove_prefix(end + 1);
  }
  if (line.count < 2) return std::nullopt;
  return line;
}

std::optional<std::string_view> ByteCountText(std::string_view line, std::string_view stripped) {
  if (stripped.find('=') == std::string_view::npos) return std::nullopt;
  const std::size_t keyword = base::UpperCase(stripped).find(kByteCount);
  if (keyword == std::string::npos) return std::nullopt;
  return line.substr(std::min(keyword + kByteCount.size(), line.size()));
}

std::optional<std::string_view> StringLengthText(std::string_view type) {
  const std::size_t keyword = type.find(kString);
  if (keyword == std::string_view::npos) return std::nullopt;
  return type.substr(keyword + kString.size());
}

}  // namespace kolvane::inspect
