#include "devlnk/background_work.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <future>
#include <new>

namespace kolvane::devlnk {
namespace {

TEST(RunWithDeadline, ReturnsTheResultOfTheWork) {
  Deadline deadline(20'000);
  EXPECT_EQ(RunWithDeadline(deadline, [] { return 7; }), 7);
}

TEST(RunWithDeadline, ReturnsNothingIfTheWorkThrows) {
  Deadline deadline(INT32_MAX);
  EXPECT_FALSE(RunWithDeadline(deadline, []() -> int { throw std::bad_alloc(); }));
}

TEST(RunWithDeadline, GivesUpWorkThatDoesNotEnd) {
  std::promise<void> release;
  std::shared_future<void> released = release.get_future().share();
  const auto end = std::make_shared<std::promise<void>>();
  auto has_ended = end->get_future();
  Deadline deadline(0);
  EXPECT_FALSE(RunWithDeadline(deadline, [released, end] {
    released.wait();
    end->set_value();
    return 7;
  }));
  release.set_value();
  has_ended.wait();
}

}  // namespace
}  // namespace kolvane::devlnk
