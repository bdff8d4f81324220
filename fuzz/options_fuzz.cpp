// The command line, one argument per line.
#include "app/options.h"

#include "app/parse.h"
#include "fuzz/input.h"
#include "fuzz/require.h"

namespace kolvane::fuzz {
namespace {

using Action = app::Options::Action;

std::vector<std::string> Words(Input input) {
  constexpr std::size_t kMaxWords = 64;
  std::vector<std::string> words;
  while (!input.empty() && words.size() < kMaxWords) {
    // No argument of a process holds a NUL.
    words.emplace_back(std::string(input.Until('\n')).c_str());
  }
  return words;
}

template <typename Number>
void RequireWithin(const std::optional<Number>& value, Number smallest, Number largest) {
  Require(!value || (*value >= smallest && *value <= largest));
}

void CheckRun(const app::Options& options) {
  const CommandRunOptions& run = options.run;
  Require(options.action == Action::kRun ? options.words.size() == 1 : !options.words.empty());
  RequireWithin<std::int32_t>(run.Baud, 1, INT32_MAX);
  RequireWithin<std::int16_t>(run.DataBits, 7, 8);
  RequireWithin<std::int16_t>(run.StopBits, 1, 2);
  RequireWithin<std::int32_t>(run.TimeoutMs, 0, INT32_MAX);
  RequireWithin<std::int32_t>(run.Count, 0, CommandRunOptions::kLargestCount);
  Require(!run.Count || run.ReceiveMode == AnswerEnd::kCount);
  Require(!run.Binary || run.ReceiveMode != AnswerEnd::kTerminator);
  Require(!run.ReceiveTerminator || run.ReceiveTerminator->size() <= 2);
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  const app::Options options = app::Parse(fuzz::Words({data, size}));
  fuzz::Require((options.action == fuzz::Action::kUsageError) == !options.error.empty());
  fuzz::Require(options.error.find('\n') == std::string::npos);
  if (options.action == fuzz::Action::kRun || options.action == fuzz::Action::kSend) fuzz::CheckRun(options);
  fuzz::Require(options.action != fuzz::Action::kCheck || !options.words.empty());
  return 0;
}
