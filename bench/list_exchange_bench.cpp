// Exchanges per second through a running command list as `kolvane run` runs it, answers written to standard
// output (here /dev/null), beside a bare write/read loop that writes nothing. Usage: list_exchange_bench
// [exchanges a round] [rounds]

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "base/temp_folder.h"
#include "comparison.h"
#include "device/device_state.h"
#include "device/resource_name.h"
#include "headless/options.h"
#include "headless/run.h"

namespace kolvane::bench {
namespace {

constexpr int kRows = 20;  // of each pass

CommandRunOptions OptionsFor(const EchoInstrument& instrument) {
  CommandRunOptions options;
  options.Parity = SerialParity::kNone;
  options.Connect = instrument.node().empty()
                        ? "TCPIP::127.0.0.1::" + std::to_string(instrument.port()) + "::SOCKET"
                        : "ASRL1::INSTR";
  if (!instrument.node().empty()) setenv("KOLVANE_COM1", instrument.node().c_str(), 1);
  return options;
}

// While the list runs, its answers go where they cost a call but nothing else; the report's rows do not.
class SilentOutput {
 public:
  SilentOutput() : kept_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)) {
    const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nothing, STDOUT_FILENO);
    close(nothing);
  }
  ~SilentOutput() {
    dup2(kept_, STDOUT_FILENO);
    close(kept_);
  }
  SilentOutput(const SilentOutput&) = delete;
  SilentOutput& operator=(const SilentOutput&) = delete;

 private:
  int kept_;
};

class ListLoop final : public Loop {
 public:
  explicit ListLoop(const EchoInstrument& instrument)
      : options_(OptionsFor(instrument)),
        terminal_({options_, host_, Prepared(), {}}),
        list_(terminal_, state_) {
    if (!terminal_.Connect()) std::abort();
  }

  void Run(int exchanges) override {
    const SilentOutput silent;
    std::string rows = "$REPEAT " + std::to_string(exchanges / kRows - 1) + "\n";
    for (int row = 0; row < kRows; ++row) rows.append(kCommand).append("\n");
    base::WriteBytes(folder_.Path("a.CMD"), rows + "$ENDREPEAT\n$STOP\n");
    if (!list_.Load(folder_.Path("a.CMD")) || list_.Play() != CommandRunStatus::kDone) std::abort();
  }

 private:
  headless::RunState& Prepared() {
    state_.device.OperMode = device::operating_mode::kPortLibrary;
    const auto resource = device::ParseResourceName(options_.Connect);
    device::ApplyResource(std::get<device::Resource>(resource), state_.connection);
    headless::ApplyConnectionOptions(options_, state_.connection);
    return state_;
  }

  base::TempFolder folder_;
  CommandRunOptions options_;
  headless::HostLines host_{options_.OnLine};
  headless::RunState state_;
  headless::Terminal terminal_;
  headless::List list_;
};

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using namespace kolvane::bench;
  setenv("KOLVANE_PORT_LIBRARY", KOLVANE_LIBRARY_FOLDER "/libdevlnk.so", 1);
  CompareLines(
      "an exchange through a list, without a window", {.tcp = 0.4, .pty = 0.4},
      [](const EchoInstrument& peer) { return std::make_unique<ListLoop>(peer); }, argc, argv);
}
