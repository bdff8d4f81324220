// A format template and a file to decode with it: each record of JSON can be read, and every format ends.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/scratch_folder.h"
#include "headless/decode_file.h"

namespace kolvane::fuzz {
namespace {

/// Collects what is written to a descriptor.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("decode", MFD_CLOEXEC)) { Require(descriptor_ >= 0); }
  int descriptor() const { return descriptor_; }
  /// Returns the collected bytes and empties it.
  std::string Take() {
    const off_t size = lseek(descriptor_, 0, SEEK_END);
    std::string text(static_cast<std::size_t>(size), '\0');
    Require(pread(descriptor_, text.data(), text.size(), 0) == size);
    Require(ftruncate(descriptor_, 0) == 0 && lseek(descriptor_, 0, SEEK_SET) == 0);
    return text;
  }

 private:
  int descriptor_;
};

void CheckJson(std::string_view text) {
  Input lines(text);
  while (!lines.empty()) Require(nlohmann::json::accept(lines.Until('\n')));
}

}  // namespace
}  // namespace kolvane::fuzz

/// Settings, up to the first NUL the template, after it the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static fuzz::ScratchFolder folder;
  static fuzz::MemoryFile out;
  static fuzz::MemoryFile err;
  fuzz::Input input(data, size);
  DecodeOptions options;
  const std::uint8_t settings = input.Byte();
  options.Motorola = (settings & 1) != 0;
  options.Offset = settings >> 4;
  if ((settings & 2) != 0) options.Repeat.reset();
  options.Format = static_cast<AnswerFormat>(settings / 4 % 3);
  folder.Put("t.BNS", input.Until('\0'));
  folder.Put("data", input.Rest());
  options.Template = folder / "t.BNS";
  options.File = folder / "data";
  const DecodeResult result = headless::Decode(options, out.descriptor(), err.descriptor());
  fuzz::Require(result.Status == 0 || (result.Status == 2 && !result.Problem.empty()));
  const std::string text = out.Take();
  err.Take();
  if (options.Format == AnswerFormat::kJson) fuzz::CheckJson(text);
  return 0;
}
