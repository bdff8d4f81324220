// Exchanges per second with an echo instrument: through session, device operations and port library, beside a
// bare write/read loop. Usage: exchange_bench [exchanges a round] [rounds]

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "comparison.h"
#include "device/loaded_port_library.h"
#include "terminal/terminal_core.h"

namespace kolvane::bench {
namespace {

class NoPane final : public pane::Pane {
 public:
  void AppendLine(LineKind, std::string_view line) override { bytes += line.size(); }
  void AppendText(LineKind, std::string_view text, int) override { bytes += text.size(); }
  void Clear() override {}
  void Refresh() override {}
  std::size_t bytes = 0;
};

class NoLog final : public terminal::Log {
 public:
  void WriteLine(std::string_view) override {}
  bool IsOpen() const override { return true; }
  void OpenLog(const std::string&) override {}
  void CloseLog() override {}
};

class FatalPrompt final : public base::Prompt {
 public:
  void ShowError(std::string_view text) override {
    std::fprintf(stderr, "exchange_bench: %.*s\n", static_cast<int>(text.size()), text.data());
    std::exit(1);
  }
  void ShowMessage(std::string_view text) override { ShowError(text); }
};

class NoView final : public terminal::ConnectionView {
 public:
  void ConnectionChanged() override {}
};

class SessionLoop final : public Loop {
 public:
  explicit SessionLoop(const EchoInstrument& instrument)
      : library_(KOLVANE_LIBRARY_FOLDER),
        core_({device_, Parameters(instrument), terminal_}, library_, {pane_, log_, prompt_, view_}) {
    device_.OperMode = 2;
    core_.connect.Press();
  }
  ~SessionLoop() override { core_.connect.Press(); }

  void Run(int exchanges) override {
    while (exchanges-- > 0) {
      if (core_.exchange.Run(kCommand, terminal::Sender::kList).Failed()) std::abort();
    }
  }

 private:
  device::ConnectionParameters& Parameters(const EchoInstrument& instrument) {
    parameters_.timeout_ms = 5000;
    if (instrument.node().empty()) {
      parameters_.port_code = device::port_code::kTcpIp;
      parameters_.ip_address = "127.0.0.1";
      parameters_.ip_port = static_cast<std::int16_t>(instrument.port());
    } else {
      setenv("KOLVANE_COM1", instrument.node().c_str(), 1);
      parameters_.port_code = device::port_code::kCom1;
      parameters_.baud = 38400;
      parameters_.parity = 0;
      parameters_.data_bits = 8;
    }
    return parameters_;
  }

  device::DeviceState device_;
  device::ConnectionParameters parameters_;
  terminal::TerminalState terminal_;
  device::LazyPortLibrary library_;
  NoPane pane_;
  NoLog log_;
  FatalPrompt prompt_;
  NoView view_;
  terminal::TerminalCore core_;
};

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using namespace kolvane::bench;
  CompareLines(
      "an exchange, without a window", {.tcp = 0.2, .pty = 0.15},
      [](const EchoInstrument& peer) { return std::make_unique<SessionLoop>(peer); }, argc, argv);
}
