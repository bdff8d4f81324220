// How fast millions of numeric answers are read, kept, painted, summarized and saved. Usage: values_bench
// [values] [rounds]; by default ten million values and seven rounds. Needs a display; shows the window.
#include <malloc.h>
#include <unistd.h>
#include <QApplication>
#include <QKeyEvent>
#include <QWindow>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "row.h"
#include "values/row.h"
#include "values/store.h"
#include "values/ui/values_window.h"

namespace {

using namespace kolvane;
using bench::Comparison;
using bench::SecondsOf;
using values::Store;

// Keeps the compiler from removing an unused result.
template <typename Value>
void Use(const Value& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

std::size_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::size_t size = 0;
  std::size_t resident = 0;
  statm >> size >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// A noisy wave, the same at each call.
double ValueAt(std::size_t i) {
  static const std::vector<double> wave = [] {
    std::vector<double> samples(1 << 20);
    for (std::size_t at = 0; at < samples.size(); ++at)
      samples[at] =
          std::sin(static_cast<double>(at) * 6e-6) + static_cast<double>(at * 2654435761u % 1000) / 1000;
    return samples;
  }();
  return wave[i % wave.size()];
}

// Rows a millisecond apart, each with as many numbers as `fields` holds.
void AddRow(Store& store, std::size_t i, std::vector<double>& fields) {
  for (double& field : fields) field = ValueAt(i) + static_cast<double>(&field - fields.data());
  store.Add(
      {{1795262400000 + static_cast<std::int64_t>(i), static_cast<double>(i) * 1e-3}, "MSV? 1-4", fields});
}

std::unique_ptr<Store> Filled(std::size_t count, std::size_t fields) {
  auto store = std::make_unique<Store>();
  std::vector<double> row(fields);
  for (std::size_t i = 0; i < count / fields; ++i) AddRow(*store, i, row);
  return store;
}

void MeasureAdding(std::size_t count, std::size_t fields, int rounds) {
  double bytes = 0;
  const auto per_value = [count](double seconds) { return seconds / static_cast<double>(count) * 1e6; };
  const Comparison time = bench::Alternate(
      rounds,
      [&] {
        std::vector<double> plain;
        return per_value(SecondsOf([&] {
          for (std::size_t i = 0; i < count; ++i) plain.push_back(ValueAt(i));
        }));
      },
      [&] {
        malloc_trim(0);
        const std::size_t before = ResidentBytes();
        std::unique_ptr<Store> store;
        const double seconds = SecondsOf([&] { store = Filled(count, fields); });
        bytes = std::max(
            bytes, static_cast<double>(ResidentBytes() - before) / static_cast<double>(store->values()));
        return per_value(seconds);
      });
  const std::string rows = std::to_string(count) + " values in rows of " + std::to_string(fields);
  const std::string taking = rows + ": time to store one";
  bench::PrintAtMost({taking.c_str(), "appending to a vector", "us"}, time.baseline, time.measured, 1);
  const std::string memory = rows + ": memory per value";
  bench::PrintAtMost({memory.c_str(), "a double", "bytes"}, sizeof(double), bytes, 24);
}

void MeasureLongestAdd(std::size_t count) {
  const auto longest = [count](const std::function<void(std::size_t)>& take) {
    double maximum = 0;
    for (std::size_t i = 0; i < count; ++i) maximum = std::max(maximum, SecondsOf([&] { take(i); }));
    return maximum * 1e3;
  };
  std::vector<double> plain;
  Store store;
  std::vector<double> row(1);
  const double baseline = longest([&](std::size_t i) { plain.push_back(ValueAt(i)); });
  const double measured = longest([&](std::size_t i) { AddRow(store, i, row); });
  bench::PrintAtMost({"longest time to store one of them", "appending to a vector", "ms"}, baseline, measured,
                     5);
}

// Starts with the text sent by the instrument.
void MeasureAnswers(int rounds) {
  constexpr int kAnswers = 200000;
  static constexpr std::string_view answer = "+12.5023,+215.471,-6.4848";
  const auto each = [](const std::function<void()>& work) { return SecondsOf(work) / kAnswers * 1e6; };
  const Comparison comparison = bench::Alternate(
      rounds,
      [&] {
        return each([] {
          for (int i = 0; i < kAnswers; ++i) {
            double number = 0;
            for (const std::size_t at : {1, 10, 18})
              std::from_chars(answer.data() + at, answer.data() + answer.size(), number);
            Use(number);
          }
        });
      },
      [&] {
        Store store;
        values::RowMaker maker;
        return each([&] {
          for (int i = 0; i < kAnswers; ++i) store.Add(*maker.Make({i, i * 1e-3}, "MSV? 1-3", answer));
        });
      });
  bench::PrintAtMost({"an answer of three numbers, read and stored", "from_chars three times", "us"},
                     comparison.baseline, comparison.measured, 3);
}

void MeasureStatistics(const Store& store, int rounds) {
  const values::Column& column = store.series(0).values();
  std::vector<double> plain(column.size());
  for (std::size_t i = 0; i < plain.size(); ++i) plain[i] = column[i];
  const Comparison comparison = bench::Alternate(
      rounds,
      [&] {
        return SecondsOf([&] { Use(std::accumulate(plain.begin() + 77, plain.end() - 777, 0.0)); }) * 1e3;
      },
      [&] { return SecondsOf([&] { Use(column.Summarize(77, column.size() - 777)); }) * 1e3; });
  bench::PrintAtMost({"statistics of almost all values of a curve", "summing them", "ms"},
                     comparison.baseline, comparison.measured, 0.1);
}

void MeasureCsv(const Store& store, int rounds) {
  const std::size_t count = std::min<std::size_t>(200000, store.rows());
  const auto each = [count](double seconds) { return seconds / static_cast<double>(count) * 1e6; };
  const Comparison comparison = bench::Alternate(
      rounds,
      [&] {
        std::string out;
        return each(SecondsOf([&] {
          char line[128];
          for (std::size_t i = 0; i < count; ++i)
            out.append(line, static_cast<std::size_t>(
                                 std::snprintf(line, sizeof line, "%zu,MSV? 1-4,%.17g\n", i, ValueAt(i))));
        }));
      },
      [&] {
        std::string out;
        values::CsvWriter writer(values::kCommaForm, store.fields());
        values::RowReader reader(store);
        return each(SecondsOf([&] {
          for (std::size_t i = 0; i < count; ++i) writer.Append(reader.Next(), out);
        }));
      });
  bench::PrintAtMost({"a row of CSV", "snprintf of a number and a text", "us"}, comparison.baseline,
                     comparison.measured, 3);
}

class NoPrompt final : public base::Prompt {
 public:
  void ShowError(std::string_view) override {}
  void ShowMessage(std::string_view) override {}
};

// The plot at the largest size that the screen allows, compared with filling as many pixels.
void MeasurePainting(Store& store, const std::string& what, int rounds) {
  values::CurveList curves(store);
  curves.Refresh();
  values::ValuesPlot plot(store, curves, ",");
  plot.resize(1380, 860);
  plot.show();
  while (!plot.windowHandle()->isExposed()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  QImage plain(plot.size() * plot.devicePixelRatio(), QImage::Format_RGB32);
  const auto measure = [&](const std::string& claim) {
    const Comparison comparison = bench::Alternate(
        rounds,
        [&] {
          return SecondsOf([&] {
                   plain.fill(Qt::white);
                   Use(plain);
                 }) *
                 1e3;
        },
        [&] {
          return SecondsOf([&] {
                   plot.ShowRows(store.rows());
                   plot.repaint();
                 }) *
                 1e3;
        });
    bench::PrintAtMost({claim.c_str(), "filling as many pixels", "ms"}, comparison.baseline,
                       comparison.measured, 16);
  };
  measure(what + ", all visible");
  QKeyEvent zoom_in(QEvent::KeyPress, Qt::Key_Plus, Qt::NoModifier);
  for (int steps = 0; steps < 20; ++steps) QApplication::sendEvent(&plot, &zoom_in);
  measure(what + ", a hundredth visible");
}

// The cost of a frame while rows are added: table, plot, statistics and status.
void MeasureFrame(Store& store, int rounds) {
  NoPrompt prompt;
  values::ValuesWindow window({store, prompt, [](const char*) { return QIcon(); }, ","}, nullptr);
  window.resize(1380, 860);
  window.Present();
  while (!window.windowHandle()->isExposed()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  std::vector<double> row(store.fields());
  std::size_t next = store.rows();
  const auto frame = [&] {
    return SecondsOf([&] {
             window.Refresh();
             QCoreApplication::sendPostedEvents();
             QCoreApplication::processEvents();
           }) *
           1e3;
  };
  const Comparison comparison = bench::Alternate(rounds, frame, [&] {
    for (int i = 0; i < 1000; ++i) AddRow(store, next++, row);
    return frame();
  });
  bench::PrintAtMost(
      {"a frame of the window with a thousand rows added to these", "a frame without new rows", "ms"},
      comparison.baseline, comparison.measured, 33);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const auto count = static_cast<std::size_t>(argc > 1 ? std::max(1000, std::atoi(argv[1])) : 10000000);
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;
  for (const std::size_t fields : {1u, 4u}) MeasureAdding(count, fields, rounds);
  MeasureLongestAdd(count);
  MeasureAnswers(rounds);
  auto store = Filled(count, 1);
  MeasureStatistics(*store, rounds);
  MeasureCsv(*store, rounds);
  MeasurePainting(*store, "painting " + std::to_string(count) + " values of one curve", rounds);
  store = Filled(count, 8);
  MeasurePainting(*store, "painting " + std::to_string(count) + " values of eight curves", rounds);
  MeasureFrame(*store, rounds);
  return 0;
}
