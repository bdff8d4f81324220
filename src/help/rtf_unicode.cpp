#include "help/rtf_unicode.h"

#include <utility>

#include "base/utf8.h"

namespace kolvane::help {
namespace {

constexpr char32_t kNoCharacter = 0xFFFD;
constexpr char32_t kLastCharacter = 0x10FFFF;

bool IsFirstHalf(char32_t point) { return point >= 0xD800 && point < 0xDC00; }
bool IsSecondHalf(char32_t point) { return point >= 0xDC00 && point < 0xE000; }

char32_t PointOf(std::int32_t number) {
  if (number < 0) number += 0x10000;
  const auto point = static_cast<char32_t>(number);
  return number < 0 || point > kLastCharacter ? kNoCharacter : point;
}

std::string Utf8(char32_t point) {
  std::string text;
  base::AppendUtf8(text, point);
  return text;
}

}  // namespace

std::string RtfUnicode::Add(std::int32_t number) {
  const char32_t point = PointOf(number);
  if (first_half_ != 0 && IsSecondHalf(point))
    return Utf8(0x10000 + ((std::exchange(first_half_, 0) - 0xD800) << 10) + (point - 0xDC00));
  std::string text = Flush();
  if (IsFirstHalf(point)) {
    first_half_ = point;
  } else if (point >= 0x20) {
    text += Utf8(IsSecondHalf(point) ? kNoCharacter : point);
  }
  return text;
}

std::string RtfUnicode::Flush() {
  return std::exchange(first_half_, 0) != 0 ? Utf8(kNoCharacter) : std::string();
}

}  // namespace kolvane::help
