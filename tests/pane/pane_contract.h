#pragma once

#include <gtest/gtest.h>

#include <string>

#include "pane/pane.h"

namespace kolvane::pane {

/// What every Pane guarantees. `Case` has `pane()`, and `Text()` for what has been shown so far, with LF for
/// each line break and without the first one.
template <typename Case>
class PaneContract : public testing::Test {
 protected:
  Pane& pane() { return case_.pane(); }
  std::string Text() { return case_.Text(); }

 private:
  Case case_;
};
TYPED_TEST_SUITE_P(PaneContract);

TYPED_TEST_P(PaneContract, EachLineIsOneOfItsOwn) {
  this->pane().AppendLine(LineKind::kCommand, "*IDN?");
  this->pane().Refresh();
  this->pane().AppendLine(LineKind::kAnswer, "Verstärker");
  this->pane().Refresh();
  EXPECT_EQ(this->Text(), "*IDN?\nVerstärker");
}

TYPED_TEST_P(PaneContract, AnEmptyLineIsALine) {
  this->pane().AppendLine(LineKind::kAnswer, "a");
  this->pane().AppendLine(LineKind::kAnswer, "");
  this->pane().AppendLine(LineKind::kAnswer, "b");
  EXPECT_EQ(this->Text(), "a\n\nb");
}

TYPED_TEST_P(PaneContract, TextContinuesTheLine) {
  this->pane().AppendLine(LineKind::kAnswer, "1,5");
  this->pane().AppendText(LineKind::kTime, " (dt = 1 ms)", 0);
  this->pane().AppendLine(LineKind::kAnswer, "2");
  EXPECT_EQ(this->Text(), "1,5 (dt = 1 ms)\n2");
}

TYPED_TEST_P(PaneContract, MayBeClearedAndWrittenAgain) {
  this->pane().Clear();
  this->pane().AppendLine(LineKind::kAnswer, "new");
  this->pane().Refresh();
  EXPECT_EQ(this->Text(), "new");
}

REGISTER_TYPED_TEST_SUITE_P(PaneContract, EachLineIsOneOfItsOwn, AnEmptyLineIsALine, TextContinuesTheLine,
                            MayBeClearedAndWrittenAgain);

}  // namespace kolvane::pane
