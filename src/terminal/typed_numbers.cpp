#include "terminal/typed_numbers.h"

#include "base/number.h"
#include "base/runtime_error.h"
#include "terminal/texts.h"

namespace kolvane::terminal {
namespace {

template <typename Convert>
auto InField(std::string_view label, Convert convert) {
  try {
    return convert();
  } catch (const base::RuntimeError& error) {
    throw base::RuntimeError(error.kind(), texts::InField(label, error.what()));
  }
}

std::string FaultOf(std::string_view text, const auto& convert) {
  try {
    convert(text);
  } catch (const base::RuntimeError& error) {
    return error.what();
  }
  return {};
}

}  // namespace

std::int32_t TypedTimeout(std::string_view text) {
  return InField(texts::kTimeoutLabel, [text] { return base::TextToInt32(text); });
}

std::size_t TypedCount(std::string_view text) {
  return InField(texts::kCountLabel, [text] {
    const std::int16_t typed = base::TextToInt16(text);
    const auto count = static_cast<std::size_t>(typed);
    if (typed < 0 || count > kCountedAnswerLimit)
      throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
    return count;
  });
}

std::string TimeoutFault(std::string_view text) { return FaultOf(text, TypedTimeout); }

std::string CountFault(std::string_view text) { return FaultOf(text, TypedCount); }

}  // namespace kolvane::terminal
