// Exchanges per second through a running command list as `kolvane run` runs it: answers written to /dev/null
// beside a bare write/read loop that writes nothing, and to a file or a pipe beside one that writes the same
// lines. Usage: list_exchange_bench [exchanges a round] [rounds]

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "base/temp_folder.h"
#include "comparison.h"
#include "device/device_state.h"
#include "device/resource_name.h"
#include "headless/run.h"
#include "headless/terminal.h"
#include "row.h"

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

// Redirects the answers while the list runs; the report's rows go to the original output.
class RedirectedOutput {
 public:
  explicit RedirectedOutput(int output) : saved_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)) {
    dup2(output, STDOUT_FILENO);
  }
  ~RedirectedOutput() {
    dup2(saved_, STDOUT_FILENO);
    close(saved_);
  }
  RedirectedOutput(const RedirectedOutput&) = delete;
  RedirectedOutput& operator=(const RedirectedOutput&) = delete;

 private:
  int saved_;
};

// A pipe and a process that only reads it until its end.
class Consumer {
 public:
  Consumer() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) std::abort();
    child_ = fork();
    if (child_ == 0) {
      close(ends[1]);
      char piece[4096];
      while (read(ends[0], piece, sizeof piece) > 0) {
      }
      _exit(0);
    }
    close(ends[0]);
    writer_ = ends[1];
  }
  ~Consumer() {
    close(writer_);
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
  }
  Consumer(const Consumer&) = delete;
  Consumer& operator=(const Consumer&) = delete;

  int fd() const { return writer_; }

 private:
  pid_t child_ = -1;
  int writer_ = -1;
};

class ListLoop final : public Loop {
 public:
  ListLoop(const EchoInstrument& instrument, int output)
      : output_(output),
        options_(OptionsFor(instrument)),
        terminal_({options_, host_, PreparedState(), {}}),
        list_(terminal_, state_) {
    if (!terminal_.Connect()) std::abort();
  }

  void Run(int exchanges) override {
    const RedirectedOutput other(output_);
    std::string rows = "$REPEAT " + std::to_string(exchanges / kRows - 1) + "\n";
    for (int row = 0; row < kRows; ++row) rows.append(kCommand).append("\n");
    base::WriteBytes(folder_.Path("a.CMD"), rows + "$ENDREPEAT\n$STOP\n");
    if (!list_.Load(folder_.Path("a.CMD")) || list_.Play() != CommandRunStatus::kDone) std::abort();
  }

 private:
  headless::RunState& PreparedState() {
    state_.device.OperMode = device::operating_mode::kPortLibrary;
    const auto resource = device::ParseResourceName(options_.Connect);
    device::ApplyResource(std::get<device::Resource>(resource), state_.connection);
    headless::ApplyConnectionOptions(options_, state_.connection);
    return state_;
  }

  int output_;
  base::TempFolder folder_;
  CommandRunOptions options_;
  headless::HostLines host_{options_.OnLine};
  headless::RunState state_;
  headless::Terminal terminal_;
  headless::List list_;
};

void CompareOutput(const char* claim, const char* baseline, int output, int argc, char** argv) {
  const auto bare = [output](const EchoInstrument& peer) { return std::make_unique<BareLoop>(peer, output); };
  const auto list = [output](const EchoInstrument& peer) { return std::make_unique<ListLoop>(peer, output); };
  PrintAtMostTimes({claim, baseline, "us"}, ComparePair(EchoInstrument::Kind::kTcp, {bare, list}, argc, argv),
                   1.15);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using namespace kolvane::bench;
  setenv("KOLVANE_PORT_LIBRARY", KOLVANE_LIBRARY_FOLDER "/libdevlnk.so", 1);
  const int null_device = open("/dev/null", O_WRONLY | O_CLOEXEC);
  const auto list = [null_device](const EchoInstrument& peer) {
    return std::make_unique<ListLoop>(peer, null_device);
  };
  CompareLines("an exchange through a list, without a window", {.tcp = 0.4, .pty = 0.4}, list, argc, argv);
  const kolvane::base::TempFolder folder;
  const int file = open(folder.Path("lines").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  CompareOutput("the same over TCP, answers written to a file", "bare loop that also writes them", file, argc,
                argv);
  const Consumer consumer;
  CompareOutput("the same over TCP, answers written to a pipe", "bare loop that also writes them",
                consumer.fd(), argc, argv);
}
