// How fast the output pane takes lines and how it responds when full, compared with a QPlainTextEdit fed in
// batches of 33 ms. Usage: pane_bench [lines] [rounds]; by default a million lines and seven rounds. Needs a
// display; shows the window.
#include <malloc.h>
#include <unistd.h>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "pane/ui/output_pane.h"
#include "pane/ui/pane_find.h"
#include "pane/ui/regex_matcher.h"
#include "row.h"
#include "terminal/output.h"

namespace {

using kolvane::bench::Claim;
using kolvane::bench::Comparison;
using kolvane::bench::Median;
using kolvane::pane::OutputPane;
using kolvane::pane::PlainMatcher;
using kolvane::pane::RegexMatcher;

class NoLog : public kolvane::terminal::Log {
 public:
  void WriteLine(std::string_view) override {}
  bool IsOpen() const override { return true; }
  void OpenLog(const std::string&) override {}
  void CloseLog() override {}
};

std::size_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::size_t size = 0;
  std::size_t resident = 0;
  statm >> size >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// The longest time between two beats of a timer set to 5 ms.
class Heartbeat {
 public:
  Heartbeat() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Beat(); });
    since_.start();
    timer_.start(5);
  }
  double LongestMs() {
    Beat();
    return longest_;
  }

 private:
  void Beat() {
    longest_ = std::max(longest_, static_cast<double>(since_.nsecsElapsed()) / 1e6);
    since_.start();
  }

  QTimer timer_;
  QElapsedTimer since_;
  double longest_ = 0;
};

double MillisecondsOf(const std::function<void()>& work) {
  QElapsedTimer clock;
  clock.start();
  work();
  return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

std::string Line(int number) {
  std::string line = "+12.345678,-0.001234,+98.765432 " + std::to_string(10000000 + number);
  line.resize(40, ' ');
  return line;
}

void Show(QWidget& widget) {
  widget.resize(800, 600);
  widget.show();
  for (int i = 0; i < 20; ++i) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

// The cost of taking lines.
struct FillCost {
  double us_per_line = 0;
  double bytes_per_line = 0;
  double last_to_first = 0;  ///< the last tenth's time divided by the first one's
  double longest_gap_ms = 0;
};

// `add` takes the number of a line; every `events_each` lines the window gets a turn.
FillCost Fill(int lines, int events_each, const std::function<void(int)>& add) {
  malloc_trim(0);  // frees what the previous case left
  const std::size_t memory = ResidentBytes();
  Heartbeat heartbeat;
  const int tenth = std::max(1, lines / 10);
  double first = 0;
  double last = 0;
  double all = 0;
  for (int part = 0; part < 10; ++part) {
    last = MillisecondsOf([&] {
      for (int i = part * tenth; i < (part + 1) * tenth; ++i) {
        add(i);
        if (i % events_each == 0) QCoreApplication::processEvents();
      }
    });
    if (part == 0) first = last;
    all += last;
  }
  const double count = 10.0 * tenth;
  const double taken = static_cast<double>(ResidentBytes()) - static_cast<double>(memory);
  return {all * 1000 / count, taken / count, last / first, heartbeat.LongestMs()};
}

// Returns once the whole pane has been searched; processes events meanwhile.
void Find(OutputPane& pane, std::shared_ptr<const kolvane::pane::Matcher> matcher) {
  kolvane::pane::PaneFind find(&pane);
  find.Search(std::move(matcher));
  while (!find.State().complete) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  find.Search(nullptr);
}

// Milliseconds of each round, by action.
using ActionTimes = std::map<std::string, std::vector<double>>;

void MeasureWhenFull(OutputPane& pane, ActionTimes& actions) {
  const auto show = [&pane] { pane.viewport()->repaint(); };
  const auto note = [&actions](const char* what, const std::function<void()>& work) {
    actions[what].push_back(MillisecondsOf(work));
  };
  QScrollBar& bar = *pane.verticalScrollBar();
  note("select all", [&] { pane.selectAll(), show(); });
  note("copy all to the clipboard", [&] { pane.copy(); });
  QGuiApplication::clipboard()->clear();
  note("jump to the middle and paint", [&] { bar.setValue(bar.maximum() / 2), show(); });
  note("scroll a page and paint", [&] { bar.triggerAction(QScrollBar::SliderPageStepAdd), show(); });
  note("find a text", [&] { Find(pane, std::make_shared<PlainMatcher>("10500000", false)); });
  note("find an expression", [&] { Find(pane, std::make_shared<RegexMatcher>("10.*99 ", false)); });
  const std::size_t middle = pane.text().Length() / 2;
  note("insert a character in the middle and paint", [&] {
    pane.ReplaceRange({middle, middle}, QStringLiteral("x")), show();
  });
  note("insert a thousand lines in the middle", [&] {
    pane.ReplaceRange({middle, middle}, QStringLiteral("inserted\n").repeated(1000)), show();
  });
  note("narrow the window, wrapping again", [&] { pane.resize(300, 600), show(); });
  note("clear", [&] { pane.clear(), show(); });
}

FillCost FillPane(int lines, int events_each, ActionTimes* actions = nullptr) {
  OutputPane pane;
  Show(pane);
  NoLog log;
  kolvane::terminal::OutputFlags flags;
  kolvane::terminal::Output output(flags, pane, log);
  const FillCost cost = Fill(lines, events_each, [&](int i) {
    output.AddLine(i % 2 == 0 ? kolvane::LineKind::kCommand : kolvane::LineKind::kAnswer, Line(i));
  });
  if (actions != nullptr) MeasureWhenFull(pane, *actions);
  return cost;
}

FillCost FillBaseline(int lines) {
  QPlainTextEdit edit;
  edit.setFont(QFont(QStringLiteral("Courier New"), 10));
  edit.setUndoRedoEnabled(false);
  Show(edit);
  QString batch;
  QElapsedTimer since;
  since.start();
  return Fill(lines, 64, [&](int i) {
    batch += QLatin1Char('\n') + QString::fromStdString(Line(i));
    if (since.elapsed() < 33) return;
    QTextCursor end(edit.document());
    end.movePosition(QTextCursor::End);
    end.insertText(std::exchange(batch, QString()));
    edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->maximum());
    since.start();
  });
}

double MedianOf(const std::vector<FillCost>& rounds, double FillCost::*figure) {
  std::vector<double> values;
  for (const FillCost& round : rounds) values.push_back(round.*figure);
  return Median(values);
}

// Later rounds may reuse memory left by earlier ones.
double MostBytes(const std::vector<FillCost>& rounds) {
  double most = 0;
  for (const FillCost& round : rounds) most = std::max(most, round.bytes_per_line);
  return most;
}

void Print(const std::string& what, const std::vector<FillCost>& rounds,
           const std::vector<FillCost>& baseline) {
  const auto print = [&](const char* figure, const char* unit, double FillCost::*member, double goal) {
    const std::string claim = what + figure;
    kolvane::bench::PrintAtMost({claim.c_str(), "QPlainTextEdit, batches of 33 ms", unit},
                                MedianOf(baseline, member), MedianOf(rounds, member), goal);
  };
  print(": time per line", "us", &FillCost::us_per_line, 3);
  const std::string bytes = what + ": memory per line";
  kolvane::bench::PrintAtMost({bytes.c_str(), "QPlainTextEdit, batches of 33 ms", "bytes"},
                              MostBytes(baseline), MostBytes(rounds), 320);
  print(": longest time without event processing", "ms", &FillCost::longest_gap_ms, 120);
  print(": last tenth compared with the first", "", &FillCost::last_to_first, 1.3);
}

void Measure(int lines, int rounds) {
  std::vector<FillCost> batched;
  std::vector<FillCost> after_each_line;
  std::vector<FillCost> without_events;
  std::vector<FillCost> baseline;
  ActionTimes actions;
  for (int round = 0; round < rounds; ++round) {
    batched.push_back(FillPane(lines, 64, &actions));
    baseline.push_back(FillBaseline(lines));
    after_each_line.push_back(FillPane(lines, 1));
    without_events.push_back(FillPane(lines, lines));
  }
  const std::string what = std::to_string(lines) + " lines into the pane";
  Print(what, batched, baseline);
  Print(what + ", events processed after each line", after_each_line, baseline);
  Print(what + ", no events processed", without_events, baseline);
  for (const auto& [name, times] : actions) {
    const std::string claim = "a pane of " + std::to_string(lines) + " lines: " + name;
    kolvane::bench::PrintWithoutGoal({claim.c_str(), "", "ms"}, Median(times));
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  Measure(argc > 1 ? std::max(10, std::atoi(argv[1])) : 1000000, argc > 2 ? std::atoi(argv[2]) : 7);
  return 0;
}
