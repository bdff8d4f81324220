// Exchanges per second with an echo instrument: through session, device operations and port library, beside a
// bare write/read loop. The two alternate in one run; both processes share one processor, because placement
// changes the figures fourfold. Usage: exchange_bench [exchanges a round] [rounds]

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "device/lazy_port_library.h"
#include "echo_instrument.h"
#include "terminal/terminal_core.h"

namespace kolvane::bench {
namespace {

constexpr char kCommand[] = "MSV? 1,2,3";

class NoPane final : public terminal::Pane {
 public:
  void AppendLine(std::string_view line, terminal::Color) override { bytes += line.size(); }
  void AppendText(std::string_view text, int) override { bytes += text.size(); }
  void Clear() override {}
  void Refresh() override {}
  std::size_t bytes = 0;
};

class NoLog final : public terminal::LogSink {
 public:
  void WriteLine(std::string_view) override {}
  void Close() override {}
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

// One side of the comparison.
class Loop {
 public:
  virtual ~Loop() = default;
  virtual void Exchange() = 0;
};

class BareLoop final : public Loop {
 public:
  explicit BareLoop(const EchoInstrument& instrument) : fd_(OpenBare(instrument)) {}
  ~BareLoop() override { close(fd_); }

  void Exchange() override {
    static constexpr std::string_view line = "MSV? 1,2,3\n";
    if (write(fd_, line.data(), line.size()) < 0) std::abort();
    char answer[256];
    do {
      const ssize_t got = read(fd_, answer, sizeof answer);
      if (got <= 0) std::abort();
      if (answer[got - 1] == '\n') return;
    } while (true);
  }

 private:
  int fd_;
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

  // As a row of a command list goes: send, echo, check, read.
  void Exchange() override {
    core_.session.SendCommand(kCommand);
    core_.output.AddLine(kCommand, terminal::kCommandColor);
    if (core_.session.PostSendCheck(kCommand).continues && !core_.session.GetAnswer()) std::abort();
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

double MicrosecondsEach(Loop& loop, int exchanges) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < exchanges; ++i) loop.Exchange();
  const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
  return took.count() / exchanges;
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

void Compare(const char* name, EchoInstrument::Kind kind, int exchanges, int rounds) {
  const EchoInstrument bare_peer(kind);
  const EchoInstrument session_peer(kind);
  BareLoop bare(bare_peer);
  SessionLoop session(session_peer);
  MicrosecondsEach(bare, exchanges / 10);
  MicrosecondsEach(session, exchanges / 10);
  std::vector<double> bare_times;
  std::vector<double> session_times;
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    bare_times.push_back(MicrosecondsEach(bare, exchanges));
    session_times.push_back(MicrosecondsEach(session, exchanges));
    ratios.push_back(session_times.back() / bare_times.back());
  }
  std::printf("%-4s  %10.2f  %12.2f  %12.0f  %7.3f\n", name, Median(bare_times), Median(session_times),
              1e6 / Median(session_times), Median(ratios));
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using kolvane::bench::EchoInstrument;
  const int exchanges = argc > 1 ? std::atoi(argv[1]) : 20000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 15;
  kolvane::bench::PinToOneCore();
  std::printf("      bare loop   through the   exchanges    median\n");
  std::printf("      us each     terminal us   a second     ratio\n");
  kolvane::bench::Compare("tcp", EchoInstrument::Kind::kTcp, exchanges, rounds);
  kolvane::bench::Compare("pty", EchoInstrument::Kind::kPty, exchanges, rounds);
}
