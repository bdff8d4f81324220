// ports.ini, which assigns device nodes to COM1 and other ports.
#include "devlnk/node_names.h"

#include "fuzz/require.h"

namespace kolvane::fuzz {
namespace {

void Check(std::string_view text, std::string_view key) {
  const std::string_view value = devlnk::FindPort(text, key);
  if (!value.empty()) Require(value.data() >= text.data() && value.end() <= text.end());
  for (const char c : value) Require(static_cast<unsigned char>(c) >= ' ' && c != '\x7F');
}

// A section at the end counts, whatever precedes it.
void CheckLast(std::string_view text) {
  const std::string with_section = std::string(text) + "\n[ports]\r\n com1 = \"/dev/last\" \r\n";
  Require(devlnk::FindPort(with_section, "COM1") == "/dev/last");
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const char* key : {"COM1", "LPT2", "GPIB"}) kolvane::fuzz::Check(text, key);
  kolvane::fuzz::CheckLast(text);
  return 0;
}
