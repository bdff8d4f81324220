// Windows-1252 to UTF-8 and back, as for every file and every device byte.
#include "base/encoding.h"
#include "base/text.h"
#include "fuzz/require.h"
#include "fuzz/utf8.h"

namespace kolvane::fuzz {
namespace {

void CheckBytes(std::string_view bytes) {
  const std::string text = base::FromWindows1252(bytes);
  Require(IsUtf8(text));
  Require(Characters(text) == bytes.size());
  Require(base::ToWindows1252(text) == bytes);
  Require(base::UpperCase(text).size() == text.size());
  Require(base::EqualsNoCase(text, base::UpperCase(text)));
}

void CheckText(std::string_view text) {
  const std::string bytes = base::ToWindows1252(text);
  Require(bytes.size() <= text.size());
  Require(base::ToWindows1252(base::FromWindows1252(bytes)) == bytes);
  Require(!IsUtf8(text) || bytes.size() == Characters(text));
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  kolvane::fuzz::CheckBytes(bytes);
  kolvane::fuzz::CheckText(bytes);
  return 0;
}
