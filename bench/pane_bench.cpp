// How the output pane takes lines and how it answers when full, beside a QPlainTextEdit fed in batches of 33
// ms. Usage: pane_bench [LINES]; 1000000 lines without an argument. Needs a display; shows the window.
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
#include <string>

#include "terminal/output.h"
#include "terminal/ui/output_pane.h"

namespace {

using kolvane::terminal::OutputPane;

class NoLog : public kolvane::terminal::LogSink {
 public:
  void WriteLine(std::string_view) override {}
  void Close() override {}
};

std::size_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::size_t size = 0;
  std::size_t resident = 0;
  statm >> size >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// The longest time between two beats of a timer that wants to beat every 5 ms.
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

double MsOf(const std::function<void()>& work) {
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

// `add` takes the number of a line; every `events_each` lines the window gets a turn.
void Fill(const char* name, int lines, int events_each, const std::function<void(int)>& add) {
  malloc_trim(0);  // what the case before has left
  const std::size_t memory = ResidentBytes();
  Heartbeat heart;
  const int tenth = std::max(1, lines / 10);
  double first = 0;
  double last = 0;
  double all = 0;
  for (int part = 0; part < 10; ++part) {
    last = MsOf([&] {
      for (int i = part * tenth; i < (part + 1) * tenth; ++i) {
        add(i);
        if (i % events_each == 0) QCoreApplication::processEvents();
      }
    });
    if (part == 0) first = last;
    all += last;
  }
  const double count = 10.0 * tenth;
  std::printf("%-44s %9.3f %9.1f %9.2f %9.1f\n", name, all * 1000 / count,
              static_cast<double>(ResidentBytes() - memory) / count, last / first, heart.LongestMs());
}

void Row(const char* name, double ms) { std::printf("  %-42s %9.3f ms\n", name, ms); }

void MeasureWhenFull(OutputPane& pane) {
  const auto show = [&pane] { pane.viewport()->repaint(); };
  QScrollBar& bar = *pane.verticalScrollBar();
  Row("select all", MsOf([&] { pane.selectAll(), show(); }));
  Row("copy all to the clipboard", MsOf([&] { pane.copy(); }));
  QGuiApplication::clipboard()->clear();
  Row("jump to the middle and paint", MsOf([&] { bar.setValue(bar.maximum() / 2), show(); }));
  Row("scroll a page and paint (mean of 100)", MsOf([&] {
                                                 for (int i = 0; i < 100; ++i)
                                                   bar.triggerAction(QScrollBar::SliderPageStepAdd), show();
                                               }) / 100);
  const std::size_t middle = pane.text().Length() / 2;
  Row("insert a character in the middle and paint", MsOf([&] {
        pane.ReplaceRange({middle, middle}, QStringLiteral("x")), show();
      }));
  Row("insert a thousand lines in the middle", MsOf([&] {
        pane.ReplaceRange({middle, middle}, QStringLiteral("inserted\n").repeated(1000)), show();
      }));
  Row("narrow the window, wrapping anew", MsOf([&] { pane.resize(300, 600), show(); }));
  Row("read plainText", MsOf([&] { (void)pane.plainText(); }));
  Row("clear", MsOf([&] { pane.clear(), show(); }));
}

void MeasurePane(int lines, int events_each, const char* name, bool when_full) {
  OutputPane pane;
  Show(pane);
  NoLog log;
  kolvane::terminal::OutputFlags flags;
  kolvane::terminal::Output output(flags, pane, log);
  Fill(name, lines, events_each, [&](int i) { output.AddLine(Line(i), i % 2 == 0 ? 255 : 0); });
  if (when_full) MeasureWhenFull(pane);
}

void MeasureYardstick(int lines) {
  QPlainTextEdit edit;
  edit.setFont(QFont(QStringLiteral("Courier New"), 10));
  edit.setUndoRedoEnabled(false);
  Show(edit);
  QString batch;
  QElapsedTimer since;
  since.start();
  Fill("QPlainTextEdit, batches of 33 ms", lines, 64, [&](int i) {
    batch += QLatin1Char('\n') + QString::fromStdString(Line(i));
    if (since.elapsed() < 33) return;
    QTextCursor end(edit.document());
    end.movePosition(QTextCursor::End);
    end.insertText(std::exchange(batch, QString()));
    edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->maximum());
    since.start();
  });
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const int lines = argc > 1 ? std::max(10, std::atoi(argv[1])) : 1000000;
  std::printf("%d lines of 40 characters\n", lines);
  std::printf("%-44s %9s %9s %9s %9s\n", "", "us/line", "bytes", "last/1st", "gap ms");
  MeasurePane(lines, 64, "AddLine, events every 64 lines", true);
  MeasurePane(lines, 1, "AddLine, events after each line", false);
  MeasurePane(lines, lines, "AddLine, no events", false);
  MeasureYardstick(lines);
  return 0;
}
