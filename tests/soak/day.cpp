// A day of a terminal that is never closed, in less time: day_test SECONDS [ROUNDS]. Each round plays a list
// in which waits are given up and connections end; unasked lines arrive between the lists. The values window
// is open, pane and log have time stamps. A round stands for a minute with an exchange every second. After
// ROUNDS rounds (60) an hour is over, and pane and values are cleared. Nothing may be lost, doubled or
// changed, and only the text may grow. Exit status 1 if that does not hold.

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <optional>

#include "base/temp_folder.h"
#include "base/text.h"
#include "device/loaded_port_library.h"
#include "gui/box_answers.h"
#include "soak/day_instrument.h"
#include "soak/measures.h"
#include "window/window_records.h"

namespace kolvane::soak {
namespace {

constexpr int kUnasked = 12;
// A round's: the repeated ones, MUTE, DROP, CUT, HALF and SAY.
constexpr int kExchanges = 60;
constexpr int kMinHours = 3;
constexpr int kCheckIntervalMs = 5;  // ms between checks; a wait is given up once the instrument is silent
constexpr qint64 kEventTimeoutMs = 60'000;  // for expected events
constexpr double kMaxHeapGrowth = 0.25e6;   // bytes of the heap
constexpr double kMaxResidentGrowth = 4e6;  // bytes

std::string Repeated(int times) { return "$REPEAT " + std::to_string(times - 1) + "\nMSV? 1\n$ENDREPEAT\n"; }

std::string Round() {
  return Repeated(20) + "MUTE\n" + Repeated(10) + "DROP\n" + Repeated(10) + "CUT\n" + Repeated(10) +
         "HALF\n" + Repeated(5) + "SAY " + std::to_string(kUnasked) + "\n";
}

bool IsStamp(std::string_view text) {
  constexpr std::string_view kForm = "0000-00-00 00:00:00.000 ";
  return std::ranges::equal(text, kForm,
                            [](char c, char form) { return form == '0' ? base::IsDigit(c) : c == form; });
}

/// Reads a log as it grows, and sorts its lines.
class LogReader {
 public:
  explicit LogReader(const std::string& file) : file_(file, std::ios::binary) {}

  void ReadNewLines() {
    for (std::string line; std::getline(file_, line);) {
      if (file_.eof()) return StepBack(line);
      Handle(line);
    }
    file_.clear();
  }

  std::int64_t numbered = 0;  ///< lines of the instrument whose number follows the last one
  std::int64_t wrong = 0;     ///< the instrument's other lines
  std::int64_t given_up = 0;
  std::int64_t lost = 0;  ///< failed because the connection ended
  std::int64_t connected = 0;
  std::int64_t unexpected = 0;
  std::int64_t unstamped = 0;  ///< without a time, or earlier than the line before
  std::string first_fault;     ///< the lines up to the first wrong or unexpected one

 private:
  void StepBack(const std::string& incomplete) {
    file_.clear();
    file_.seekg(-static_cast<std::streamoff>(incomplete.size()), std::ios::cur);
  }

  void Handle(const std::string& line) {
    constexpr std::size_t kStamp = 24;
    const std::string time = line.substr(0, kStamp);
    if (!IsStamp(time) || time < last_time_) ++unstamped;
    last_time_ = time;
    if (line.size() > kStamp) Sort(line.substr(kStamp, line.size() - kStamp - 1));
  }

  void CountFault(std::int64_t& faults) {
    ++faults;
    if (first_fault.empty())
      for (const std::string& line : recent_) first_fault += line + '\n';
  }

  void Sort(const std::string& text) {
    recent_.push_back(last_time_ + text);
    if (recent_.size() > kRecent) recent_.pop_front();
    if (text == NumberedLine(numbered + 1)) {
      ++numbered;
    } else if (text.find(",") == 10) {
      CountFault(wrong);
    } else if (text == "-60") {
      ++given_up;
    } else if (text == "-40" || text == "-41" || text == "Write error: -40" || text == "Write error: -41") {
      ++lost;
    } else if (text.find("  Verbindung hergestellt mit ") != std::string::npos) {
      ++connected;
    } else if (text.find("  Verbindung getrennt von ") == std::string::npos) {
      CountFault(unexpected);
    }
  }

  static constexpr std::size_t kRecent = 30;

  std::ifstream file_;
  std::string last_time_;
  std::deque<std::string> recent_;
};

/// A visible terminal with all options on.
class Terminal : private window::WindowRecords {
 public:
  Terminal(DayInstrument& instrument, const std::string& log)
      : instrument_(instrument), library_(KOLVANE_LIBRARY_FOLDER) {
    connection_.port_code = device::port_code::kTcpIp;
    connection_.ip_address = "127.0.0.1";
    connection_.ip_port = static_cast<std::int16_t>(instrument.port());
    connection_.timeout_ms = 60000;
    terminal_.shown.timeout = "60000";
    terminal_.options.show_commands = false;
    terminal_.extras.reconnect = true;
    terminal_.extras.listen = true;
    terminal_.extras.time_stamps = true;
    terminal_.extras.log_time_stamps = true;
    window_.emplace(ContextWith(library_, ""));
    window_->Load();
    window_->show();
    boxes_.Start();
    Press("mnuValues");
    Load("$OPENLOG \"" + log + "\"\n$AUTOLOG ON\n");
    Play();
    // Only once, or each load would become a step of undo.
    Load(Round());
    window_->PressConnect();
    QObject::connect(&check_timer_, &QTimer::timeout, &check_timer_, [this] { GiveUpIfSilent(); });
    check_timer_.start(kCheckIntervalMs);
  }
  ~Terminal() { window_->close(); }

  void Play() { Press("TB_PLAY"); }
  void Clear() {
    Pane().Clear();
    Press("ValuesClear");
    QApplication::processEvents();
  }
  void Disconnect() { window_->PressConnect(); }

  std::int64_t values() const {
    return window_->findChild<QAbstractItemView*>(QStringLiteral("ValuesTable"))->model()->rowCount();
  }
  qsizetype boxes() const { return boxes_.texts().size(); }

 private:
  void Press(const char* name) { window_->findChild<QAction*>(QLatin1String(name))->trigger(); }

  pane::OutputPane& Pane() { return *window_->findChild<pane::OutputPane*>(QStringLiteral("TermWin")); }
  void Load(const std::string& rows) {
    base::WriteBytes(folder_.Path("a.CMD"), rows);
    window_->OpenCommandFile(folder_.Path("a.CMD"));
  }

  void GiveUpIfSilent() {
    if (!instrument_.tally().silent) return;
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&*window_, &escape);
    instrument_.GiveUp();
  }

  DayInstrument& instrument_;
  base::TempFolder folder_;
  device::LazyPortLibrary library_;
  std::optional<window::MainWindow> window_;
  gui::BoxAnswers boxes_;
  QTimer check_timer_;
};

class Day {
 public:
  Day(std::int64_t seconds, int rounds_per_hour)
      : milliseconds_(seconds * 1000), rounds_per_hour_(rounds_per_hour) {}

  bool Run() {
    QElapsedTimer time;
    time.start();
    for (; is_complete_ && (hours_ < kMinHours || time.elapsed() < milliseconds_); ++hours_) {
      for (int round = 0; is_complete_ && round < rounds_per_hour_; ++round) PlayRound();
      FinishHour();
    }
    terminal_.Disconnect();
    log_.ReadNewLines();
    CheckTotals();
    return expectations_.all_hold();
  }

 private:
  void PlayRound() {
    log_.ReadNewLines();
    const std::int64_t before = log_.numbered;
    terminal_.Play();
    log_.ReadNewLines();
    answered_ += log_.numbered - before;
    ++rounds_;
    AwaitUnasked();
  }

  template <typename Done>
  static bool Await(Done done) {
    QElapsedTimer timer;
    for (timer.start(); !done(); QApplication::processEvents(QEventLoop::WaitForMoreEvents))
      if (timer.elapsed() > kEventTimeoutMs) return false;
    return true;
  }

  // The last unasked lines arrive after the list: it may end before the instrument has received its last row.
  void AwaitUnasked() {
    is_complete_ = Await([this] {
      log_.ReadNewLines();
      return instrument_.tally().say_commands == rounds_ && log_.numbered == instrument_.tally().lines;
    });
    unasked_ += kUnasked;
  }

  void FinishHour() {
    // The window shows new rows once a frame.
    if (!Await([this] { return terminal_.values() == answered_; })) ++wrong_values_;
    const ResourceUse before_clearing = CurrentResourceUse();
    terminal_.Clear();
    answered_ = 0;
    last_ = CurrentResourceUse();
    if (hours_ == 0) first_ = last_;
    std::printf("hour %4d: heap %s, cleared %s; resident %s, cleared %s; %d descriptors, %d threads\n",
                hours_ + 1, Megabytes(before_clearing.heap).c_str(), Megabytes(last_.heap).c_str(),
                Megabytes(before_clearing.resident).c_str(), Megabytes(last_.resident).c_str(),
                last_.descriptors, last_.threads);
    std::fflush(stdout);
  }

  void CheckTotals() {
    const DayTally& tally = instrument_.tally();
    std::printf(
        "%d hours, %lld commands received, %lld lines sent, %lld of them unasked; %lld waits given up, %lld "
        "connections, %lld failures caused by their ends\n",
        hours_, static_cast<long long>(tally.commands), static_cast<long long>(tally.lines),
        static_cast<long long>(unasked_), static_cast<long long>(log_.given_up),
        static_cast<long long>(log_.connected), static_cast<long long>(log_.lost));
    expectations_.Expect(log_.numbered == tally.lines && log_.wrong == 0,
                         "the log has each line that the instrument sent, once and in order");
    std::fputs(log_.first_fault.c_str(), stdout);
    expectations_.Expect(log_.unexpected == 0, "the log has no other lines than those for what happened");
    expectations_.Expect(log_.unstamped == 0, "each line has a time stamp");
    expectations_.Expect(tally.unknown == 0, "each command arrived unchanged");
    // Of the lost commands only each round's CUT was received.
    expectations_.Expect(tally.commands + log_.lost - rounds_ == rounds_ * kExchanges,
                         "no command was sent twice");
    expectations_.Expect(log_.given_up == 2 * rounds_,
                         "each wait for an answer that was not sent was given up");
    expectations_.Expect(tally.ends == 2 * rounds_ && log_.connected == 2 * rounds_ + 1,
                         "each connection that ended was followed by exactly one other");
    expectations_.Expect(wrong_values_ == 0, "the values window had a row for each answer");
    expectations_.Expect(terminal_.boxes() == 0, "no message box was shown");
    CheckGrowth();
  }

  void CheckGrowth() {
    expectations_.Expect(last_.descriptors == first_.descriptors, "no file is left open");
    expectations_.Expect(last_.threads == first_.threads, "no thread is left");
    if (!kMemoryIsMeasurable) return;
    expectations_.Expect(last_.heap - first_.heap <= kMaxHeapGrowth,
                         "the heap is as large as after the first hour");
    expectations_.Expect(last_.resident - first_.resident <= kMaxResidentGrowth, "so is the resident memory");
  }

  const qint64 milliseconds_;
  const int rounds_per_hour_;
  const base::TempFolder folder_;
  DayInstrument instrument_;
  Terminal terminal_{instrument_, folder_.Path("day.LOG")};
  LogReader log_{folder_.Path("day.LOG")};
  Expectations expectations_;
  ResourceUse first_{};
  ResourceUse last_{};
  int hours_ = 0;
  std::int64_t rounds_ = 0;
  std::int64_t unasked_ = 0;
  std::int64_t answered_ = 0;  // in this hour
  int wrong_values_ = 0;
  bool is_complete_ = true;  // nothing is missing so far
};

}  // namespace
}  // namespace kolvane::soak

int main(int argc, char** argv) {
  const long long seconds = argc > 1 ? std::atoll(argv[1]) : -1;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 60;
  if (argc > 3 || seconds < 0 || rounds < 1) {
    std::fputs("usage: day_test SECONDS [ROUNDS]\n", stderr);
    return 2;
  }
  QApplication application(argc, argv);
  return kolvane::soak::Day(seconds, rounds).Run() ? 0 : 1;
}
