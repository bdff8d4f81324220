#include "terminal/receive_controls.h"

#include <gtest/gtest.h>

#include <string>

#include "base/runtime_error.h"

namespace kolvane::terminal {
namespace {

template <typename Step>
std::string ErrorOf(Step step) {
  try {
    step();
  } catch (const base::RuntimeError& error) {
    return error.what();
  }
  return "";
}

TEST(TypedNumbers, ATimeoutIsA32BitNumber) {
  EXPECT_EQ(TypedTimeout("3000"), 3000);
  EXPECT_EQ(TypedTimeout(" 2147483647 "), 2147483647);
  EXPECT_EQ(TypedTimeout("-1"), -1);
  EXPECT_EQ(ErrorOf([] { TypedTimeout("2147483648"); }), "Timeout (ms): Überlauf");
  EXPECT_EQ(ErrorOf([] { TypedTimeout("bald"); }), "Timeout (ms): Typen unverträglich");
  EXPECT_EQ(ErrorOf([] { TypedTimeout(""); }), "Timeout (ms): Typen unverträglich");
}

TEST(TypedNumbers, ReportWhatIsWrongWithoutThrowing) {
  EXPECT_EQ(TimeoutFault("3000"), "");
  EXPECT_EQ(TimeoutFault("bald"), "Timeout (ms): Typen unverträglich");
  EXPECT_EQ(CountFault("1025"), "");
  EXPECT_EQ(CountFault("1026"), "Anzahl: Index außerhalb des gültigen Bereichs");
}

TEST(TypedNumbers, ACountIsWithinItsLimit) {
  EXPECT_EQ(TypedCount("0"), 0u);
  EXPECT_EQ(TypedCount("1025"), 1025u);
  EXPECT_EQ(TypedCount("1026"), 1026u);
  CheckCount(1025);
  EXPECT_EQ(ErrorOf([] { CheckCount(1026); }), "Anzahl: Index außerhalb des gültigen Bereichs");
  EXPECT_EQ(ErrorOf([] { TypedCount("-1"); }), "Anzahl: Index außerhalb des gültigen Bereichs");
  EXPECT_EQ(ErrorOf([] { TypedCount("32768"); }), "Anzahl: Überlauf");
  EXPECT_EQ(ErrorOf([] { TypedCount("vier"); }), "Anzahl: Typen unverträglich");
}

}  // namespace
}  // namespace kolvane::terminal
