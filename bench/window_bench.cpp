// What the visible window costs a running command list: rows a second that need no device, and the time of an
// exchange with an echo instrument beside a bare write/read loop. Both processes share one processor; the X
// server has the other. Usage: window_bench [passes of the row list] [exchanges]

#include <unistd.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "device/lazy_port_library.h"
#include "echo_instrument.h"
#include "window/main_window.h"

namespace kolvane::bench {
namespace {

double SecondsOf(const std::function<void()>& step) {
  const auto start = std::chrono::steady_clock::now();
  step();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A visible terminal connected to `instrument`.
class VisibleTerminal {
 public:
  explicit VisibleTerminal(const EchoInstrument& instrument) : library_(KOLVANE_LIBRARY_FOLDER) {
    device_.OperMode = 2;
    connection_.port_code = device::port_code::kTcpIp;
    connection_.ip_address = "127.0.0.1";
    connection_.ip_port = static_cast<std::int16_t>(instrument.port());
    connection_.timeout_ms = 5000;
    window_.Load();
    window_.show();
    window_.core().connect.Press();
    for (int i = 0; i < 50; ++i) QApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  ~VisibleTerminal() { window_.close(); }

  double SecondsToPlay(const std::string& rows) {
    const std::string name = "/tmp/kolvane_window_bench_" + std::to_string(getpid()) + ".CMD";
    std::ofstream(name) << rows;
    window_.OpenCommandFile(name);
    unlink(name.c_str());
    return SecondsOf([this] { window_.findChild<QAction*>(QStringLiteral("TB_PLAY"))->trigger(); });
  }

 private:
  device::DeviceState device_;
  device::ConnectionParameters connection_;
  terminal::TerminalState terminal_;
  terminal::WindowSettings settings_;
  script::ScriptState script_;
  device::LazyPortLibrary library_;
  window::MainWindow window_{{{device_, connection_, terminal_}, script_, settings_, library_, ""}};
};

void ExchangeBare(int fd) {
  static constexpr std::string_view line = "MSV? 1,2,3\n";
  if (write(fd, line.data(), line.size()) < 0) std::abort();
  char answer[256];
  if (read(fd, answer, sizeof answer) <= 0) std::abort();
}

void Measure(int passes, int exchanges) {
  const EchoInstrument instrument(EchoInstrument::Kind::kTcp);
  const EchoInstrument bare_instrument(EchoInstrument::Kind::kTcp);
  VisibleTerminal terminal(instrument);

  const std::string inner = "$REPEAT 99\n$IFEQUAL x\n$ENDIF\n$ENDREPEAT\n";
  const double rows =
      terminal.SecondsToPlay("$REPEAT " + std::to_string(passes - 1) + "\n" + inner + "$ENDREPEAT\n");
  const double row_count = passes * (2.0 + 100 * 3);
  std::printf("rows that need no device      %12.0f a second\n", row_count / rows);

  const int bare = OpenBare(bare_instrument);
  const double bare_time = SecondsOf([&] {
    for (int i = 0; i < exchanges; ++i) ExchangeBare(bare);
  });
  close(bare);
  const double window_time =
      terminal.SecondsToPlay("$REPEAT " + std::to_string(exchanges - 1) + "\nMSV? 1,2,3\n$ENDREPEAT\n");
  std::printf("exchange, bare loop           %12.1f us\n", bare_time / exchanges * 1e6);
  std::printf("exchange through the window   %12.1f us\n", window_time / exchanges * 1e6);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  kolvane::bench::PinToOneCore();
  QApplication application(argc, argv);
  kolvane::bench::Measure(argc > 1 ? std::atoi(argv[1]) : 10000, argc > 2 ? std::atoi(argv[2]) : 50000);
}
