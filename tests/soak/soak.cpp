// Many exchanges through a window that records them into a log: soak_test EXCHANGES. Nothing may be lost,
// doubled or changed between the instrument, the pane and the log, and only the text may grow. Exit status 1
// if that does not hold.

#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "base/temp_folder.h"
#include "device/loaded_port_library.h"
#include "soak/measures.h"
#include "soak/soak_instrument.h"
#include "window/window_records.h"

namespace kolvane::soak {
namespace {

constexpr double kMegabyte = 1e6;
// What the C library and Qt may keep after the largest text was freed, whatever its size.
constexpr double kMaxHeapGrowth = 0.5 * kMegabyte;
constexpr double kMaxResidentGrowth = 4 * kMegabyte;
// What the pane may need for its lines, relative to their bytes.
constexpr double kTextShare = 2;

// A visible terminal connected to the instrument.
class Terminal : private window::WindowRecords {
 public:
  explicit Terminal(std::uint16_t port) : library_(KOLVANE_LIBRARY_FOLDER) {
    connection_.port_code = device::port_code::kTcpIp;
    connection_.ip_address = "127.0.0.1";
    connection_.ip_port = static_cast<std::int16_t>(port);
    connection_.timeout_ms = 60000;
    terminal_.shown.timeout = "60000";
    terminal_.options.show_commands = false;  // pane and log hold only what the instrument sends
    window_.Load();
    window_.show();
    window_.core().connect.Press();
  }
  ~Terminal() { window_.close(); }

  void Play(const std::string& rows) {
    const std::string name = folder_.Path("a.CMD");
    base::WriteBytes(name, rows);
    window_.OpenCommandFile(name);
    window_.findChild<QAction*>(QStringLiteral("TB_PLAY"))->trigger();
    QApplication::processEvents();
  }

  void Exchange(std::int64_t count) {
    Play("$CLEAR\n$REPEAT " + std::to_string(count - 1) + "\n" + NumberingInstrument::kCommand +
         "\n$ENDREPEAT\n");
  }

  void Record(std::int64_t count, const std::string& log) {
    Play("$CLEAR\n$OPENLOG \"" + log + "\"\n$AUTOLOG ON\n$REPEAT " + std::to_string(count - 1) + "\n" +
         NumberingInstrument::kCommand + "\n$ENDREPEAT\n$AUTOLOG OFF\n$CLOSELOG\n");
  }

  void Clear() { Play("$CLEAR\n"); }
  void Disconnect() { window_.core().connect.Press(); }

  // The pane's text in the instrument's encoding; everything that it sends is in Latin-1.
  std::string Text() {
    QString text = window_.findChild<pane::OutputPane*>(QStringLiteral("TermWin"))->plainText();
    return text.replace(QLatin1Char('\n'), QLatin1String("\r\n")).toLatin1().toStdString();
  }

 private:
  base::TempFolder folder_;
  device::LazyPortLibrary library_;
  window::MainWindow window_{ContextWith(library_, "")};
};

void CheckMemory(Expectations& expectations, const ResourceUse& before, const ResourceUse& before_clearing,
                 const ResourceUse& after, double text) {
  std::printf("text %s; heap %s before, %s full, %s cleared; resident %s, %s, %s\n", Megabytes(text).c_str(),
              Megabytes(before.heap).c_str(), Megabytes(before_clearing.heap).c_str(),
              Megabytes(after.heap).c_str(), Megabytes(before.resident).c_str(),
              Megabytes(before_clearing.resident).c_str(), Megabytes(after.resident).c_str());
  expectations.Expect(after.descriptors == before.descriptors, "no file is left open");
  if (!kMemoryIsMeasurable) return;
  expectations.Expect(before_clearing.heap - before.heap <= kTextShare * text + kMaxHeapGrowth,
                      "memory grows only with the text");
  expectations.Expect(after.heap - before.heap <= kMaxHeapGrowth,
                      "the heap is as large as before once the text is cleared");
  expectations.Expect(after.resident - before.resident <= kMaxResidentGrowth, "so is the resident memory");
}

// How an exchange's time has changed: a measurement, not a check.
void PrintTimes(const Tally& tally, std::int64_t warm_up, std::int64_t exchanges) {
  const double tenth = static_cast<double>(warm_up + exchanges) / 10;
  const auto each = [&](std::size_t part) {
    return static_cast<double>(tally.tenths[part + 1] - tally.tenths[part]) / tenth;
  };
  // The first tenth is the warm-up, without the log.
  std::printf("an exchange took %.2f us in the second tenth, %.2f us in the last: x %.3f\n", each(1), each(9),
              each(9) / each(1));
}

// What the instrument sent after that many lines.
std::string SentAfter(std::int64_t lines, const std::string& copy) {
  const std::string all = base::ReadBytes(copy);
  std::size_t start = 0;
  for (std::int64_t line = 0; line < lines; ++line) start = all.find('\n', start) + 1;
  return all.substr(start);
}

void CheckCommands(Expectations& expectations, const Tally& tally, std::int64_t expected) {
  expectations.Expect(tally.commands == expected, "the instrument received each command once");
  expectations.Expect(tally.garbled == 0, "each command arrived unchanged");
}

void CheckTexts(Expectations& expectations, const std::string& sent, const std::string& log,
                const std::string& shown) {
  expectations.Expect(log == sent, "the log has exactly the bytes that the instrument sent");
  // The pane has a line break before each line, the instrument sends one after each.
  expectations.Expect(shown + "\r\n" == "\r\n" + sent, "so has the pane");
}

bool Soak(std::int64_t exchanges) {
  const base::TempFolder folder;
  const std::string copy = folder.Path("sent");
  const std::string log = folder.Path("soak.LOG");
  // Everything that is set up once exists before memory is measured.
  const std::int64_t warm_up = exchanges / 9;
  const std::int64_t all = warm_up + exchanges;
  NumberingInstrument instrument(all, copy);
  Expectations expectations;
  Terminal terminal(instrument.port());
  terminal.Exchange(warm_up);
  terminal.Clear();
  const ResourceUse before = CurrentResourceUse();
  terminal.Record(exchanges, log);
  const ResourceUse before_clearing = CurrentResourceUse();
  // Kept in a file: in memory it would be counted as the terminal's.
  base::WriteBytes(folder.Path("shown"), terminal.Text());
  terminal.Clear();
  const ResourceUse after = CurrentResourceUse();
  terminal.Disconnect();
  instrument.AwaitEnd();

  const std::string sent = SentAfter(warm_up, copy);
  const std::string shown = base::ReadBytes(folder.Path("shown"));
  std::printf("%lld exchanges with a warm-up of %lld, %s sent\n", static_cast<long long>(exchanges),
              static_cast<long long>(warm_up), Megabytes(static_cast<double>(sent.size())).c_str());
  CheckCommands(expectations, instrument.tally(), all);
  CheckTexts(expectations, sent, base::ReadBytes(log), shown);
  CheckMemory(expectations, before, before_clearing, after, static_cast<double>(shown.size()));
  PrintTimes(instrument.tally(), warm_up, exchanges);
  return expectations.all_hold();
}

}  // namespace
}  // namespace kolvane::soak

int main(int argc, char** argv) {
  const long long exchanges = argc == 2 ? std::atoll(argv[1]) : 0;
  if (exchanges < 10) {
    std::fputs("usage: soak_test EXCHANGES (10 or more)\n", stderr);
    return 2;
  }
  QApplication application(argc, argv);
  return kolvane::soak::Soak(exchanges) ? 0 : 1;
}
