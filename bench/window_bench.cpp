// The cost of the visible window for a running command list: rows per second that need no device, and the
// time of an exchange with an echo instrument compared with a bare write/read loop; and the longest time
// without event processing while an answer is awaited. Both processes share one processor; the X server has
// the other. Usage: window_bench [passes of the row list] [exchanges a round]

#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "comparison.h"
#include "device/loaded_port_library.h"
#include "row.h"
#include "window/main_window.h"

namespace kolvane::bench {
namespace {

constexpr int kRounds = 9;

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

  /// Waits for an answer whose end is never sent.
  void AwaitTimeout(int milliseconds) {
    terminal_.receive.receive_terminator = "~";
    terminal_.shown.timeout = std::to_string(milliseconds);
    window_.core().exchange.Run("MSV?", terminal::Sender::kUser);
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

// The minimal cost of a row: its text is read and a number is incremented.
double SecondsToWalk(const std::vector<std::string>& rows, int passes) {
  return SecondsOf([&] {
    for (int pass = 0; pass < passes; ++pass) {
      for (const std::string& row : rows) {
        volatile bool special = row.starts_with('$');
        (void)special;
      }
    }
  });
}

void MeasureRows(VisibleTerminal& terminal, int passes) {
  const std::string inner = "$REPEAT 99\n$IFEQUAL x\n$ENDIF\n$ENDREPEAT\n";
  const std::string list = "$REPEAT " + std::to_string(passes - 1) + "\n" + inner + "$ENDREPEAT\n";
  constexpr double rows_per_pass = 2.0 + 100 * 3;
  const std::vector<std::string> rows(static_cast<std::size_t>(rows_per_pass), "$IFEQUAL x");
  const Comparison comparison = Alternate(
      kRounds, [&] { return passes * rows_per_pass / SecondsToWalk(rows, passes); },
      [&] { return passes * rows_per_pass / terminal.SecondsToPlay(list); });
  PrintAtLeast({"rows of a list that need no device, in the window", "reading each text once", "rows/s"},
               comparison.baseline, comparison.measured, 100'000);
}

void MeasureExchange(VisibleTerminal& terminal, int exchanges) {
  const EchoInstrument bare_instrument(EchoInstrument::Kind::kTcp);
  BareLoop bare(bare_instrument);
  const std::string list = "$REPEAT " + std::to_string(exchanges - 1) + "\nMSV? 1,2,3\n$ENDREPEAT\n";
  const Comparison comparison = Alternate(
      kRounds, [&] { return MicrosecondsPerExchange(bare, exchanges); },
      [&] { return terminal.SecondsToPlay(list) / exchanges * 1e6; });
  PrintAtMostMore({"an exchange through the visible window, TCP", kBareLoop, "us"}, comparison, 60);
}

// The longest time, in ms, between two beats of a timer set to 1 ms.
double LongestGap(const std::function<void()>& wait) {
  double longest = 0;
  QElapsedTimer since;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
    longest = std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e6);
    since.start();
  });
  timer.start(1);
  since.start();
  wait();
  return std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e6);
}

void MeasureWait(VisibleTerminal& terminal) {
  constexpr int kWaitMs = 1000;
  const Comparison comparison = Alternate(
      kRounds,
      [] {
        return LongestGap([] {
          QEventLoop loop;
          QTimer::singleShot(kWaitMs, &loop, &QEventLoop::quit);
          loop.exec();
        });
      },
      [&] { return LongestGap([&] { terminal.AwaitTimeout(kWaitMs); }); });
  PrintAtMost({"longest time without event processing while waiting for an answer", "event loop", "ms"},
              comparison.baseline, comparison.measured, 60);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using namespace kolvane::bench;
  PinToOneCore();
  QApplication application(argc, argv);
  const EchoInstrument instrument(EchoInstrument::Kind::kTcp);
  VisibleTerminal terminal(instrument);
  MeasureRows(terminal, argc > 1 ? std::atoi(argv[1]) : 2000);
  MeasureExchange(terminal, argc > 2 ? std::atoi(argv[2]) : 10000);
  MeasureWait(terminal);
}
