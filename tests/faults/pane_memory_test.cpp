// A pane that runs out of memory while it takes lines or lays them out: its content stays consistent.
#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "faults/failing_new.h"
#include "pane/pane_state.h"
#include "pane/ui/output_pane_rows.h"

namespace kolvane::faults {
namespace {

using pane::OutputPaneMetrics;
using pane::OutputPaneRows;
using pane::PaneText;

/// Runs `step` repeatedly, failing the nth allocation of the nth run, until none fails; runs `check` after
/// each.
template <typename Step, typename Check>
void FailEachAllocation(Step step, Check check) {
  bool hit = true;
  for (int nth = 1; hit; ++nth) {
    SCOPED_TRACE(nth);
    try {
      const FailingNew failing(nth);
      step();
      hit = failing.hit();
    } catch (const std::bad_alloc&) {
    }
    check();
    if (testing::Test::HasFailure()) return;
  }
}

void ExpectWholeLines(const std::string& line) {
  std::unique_ptr<PaneText> text;
  const auto append = [&] {
    text = std::make_unique<PaneText>();
    for (int i = 0; i < 100; ++i) text->AppendLine(line, i % 2 == 1 ? base::kCommandColor : base::kNoColor);
  };
  FailEachAllocation(append, [&] {
    if (text == nullptr) return;
    text->AppendLine(line, base::kNoColor);
    const pane::PaneStore& store = text->store();
    EXPECT_EQ(text->Length(), (store.LineCount() - 1) * (line.size() + 1));
    for (std::size_t i = 1; i < store.LineCount(); ++i) EXPECT_EQ(store.Line(i), line) << i;
  });
}

TEST(PaneMemory, Row28ALineIsThereOrNot) {
  ExpectWholeLines("line");
  ExpectWholeLines(std::string(2000, 'x'));
}

TEST(PaneMemory, Row28RowsAreFoundAgain) {
  PaneText text;
  for (int i = 0; i < 20; ++i) text.AppendLine("a line that is wrapped, wherever that is", base::kNoColor);
  const OutputPaneMetrics metrics{QFont(QStringLiteral("Courier New"), 10)};
  OutputPaneRows rows(text.store(), metrics);
  rows.SetLayout(metrics, metrics.space_width() * 10);
  const auto check_rows = [&] {
    rows.Sync();
    std::size_t reached = 0;
    for (std::size_t row = 0; row < rows.Total(); ++row) {
      const pane::PaneRow range = rows.RowAt(row);
      EXPECT_EQ(range.begin, reached);
      EXPECT_EQ(rows.RowOf(range.begin), row);
      reached = range.end + (range.ends_line ? 1 : 0);
    }
    EXPECT_EQ(reached, text.Length() + 1);
  };
  FailEachAllocation([&] { rows.SetLayout(metrics, metrics.space_width() * 10), check_rows(); }, check_rows);
}

}  // namespace
}  // namespace kolvane::faults
