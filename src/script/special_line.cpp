#include "script/special_line.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/number.h"
#include "base/runtime_error.h"
#include "base/text.h"

namespace kolvane::script {
namespace {

std::string_view WithoutLastCharacter(std::string_view text) {
  while (!text.empty() && base::IsUtf8Continuation(text.back())) text.remove_suffix(1);
  if (!text.empty()) text.remove_suffix(1);
  return text;
}

}  // namespace

SpecialLine::SpecialLine(std::string_view line) {
  const std::string_view field = line.substr(0, line.find(','));
  const std::size_t space = std::min(field.find(' '), field.size());
  if (space <= kLongestWord) {
    std::transform(field.begin(), field.begin() + space, command_, base::UpperAscii);
    command_size_ = space;
  }
  if (space == field.size()) return;
  has_argument_ = true;
  argument_ = field.substr(space + 1);
  argument_ = argument_.substr(0, argument_.find(' '));
}

std::string_view SpecialLine::Argument() const {
  if (!has_argument_) throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
  return argument_;
}

double SpecialLine::Number() const { return base::LeadingNumber(Argument()); }

std::string_view SpecialLine::Unquoted() const {
  const std::string_view text = Argument();
  return text.starts_with('"') ? WithoutLastCharacter(text.substr(1)) : text;
}

}  // namespace kolvane::script
