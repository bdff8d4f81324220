// A dial script and the modem's replies: dialling ends, connected exactly if a CONNECT was read.
#include "base/encoding.h"
#include "base/text.h"
#include "device/open_sequence.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/stream_library.h"
#include "fuzz/utf8.h"

namespace kolvane::fuzz {
namespace {

constexpr std::int32_t kReadTimeoutMs = 1000;
constexpr std::int32_t kDialTimeoutS = 10;

class CheckingListener final : public device::WaitListener {
 public:
  bool Dialling(const device::DialProgress& progress) override {
    Require(IsUtf8(progress.reply) && progress.reply.find_first_of("\r\n") == std::string::npos);
    Require(progress.seconds_left >= 0 && progress.seconds_left <= kDialTimeoutS);
    return true;
  }
};

}  // namespace
}  // namespace kolvane::fuzz

/// Up to the first NUL the script, after it the modem's bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static device::FakeClock clock;
  static fuzz::StreamLibrary library(clock);
  static fuzz::CheckingListener listener;
  static fuzz::StreamLibrarySource source(library);
  static device::Waits waits(source, clock, listener);
  clock.now = 0;
  fuzz::Input input(data, size);
  const auto commands = device::ModemCommands(base::FromWindows1252(input.Until('\0')));
  for (const std::string& command : commands)
    fuzz::Require(!command.empty() && command.find("\r\n") == std::string::npos);
  if (commands.empty()) return 0;
  // Dialling starts with a flush, so everything is sent after it.
  library.Send({}, input.Rest());
  library.SetTimeout(fuzz::kReadTimeoutMs);
  const std::int32_t result = device::ModemDialler(library, clock, waits).Dial(commands, fuzz::kDialTimeoutS);
  fuzz::Require(result == 0 || result == -1);
  fuzz::Require(result == -1 || base::ContainsNoCase(library.consumed(), "CONNECT"));
  const auto reads = static_cast<double>(commands.size());
  fuzz::Require(clock.now <= (reads + fuzz::kDialTimeoutS + 2) * fuzz::kReadTimeoutMs / 1000.0);
  return 0;
}
