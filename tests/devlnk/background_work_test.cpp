#include "devlnk/background_work.h"

#include <gtest/gtest.h>

#include <future>

namespace kolvane::devlnk {
namespace {

TEST(ResultBy, HandsOverWhatTheWorkBrings) {
  Deadline deadline(20'000);
  EXPECT_EQ(ResultBy(deadline, [] { return 7; }), 7);
}

TEST(ResultBy, GivesUpWorkThatDoesNotEnd) {
  std::promise<void> release;
  std::shared_future<void> released = release.get_future().share();
  std::promise<void> ended;
  auto end = std::make_shared<std::promise<void>>(std::move(ended));
  auto has_ended = end->get_future();
  Deadline deadline(0);
  EXPECT_FALSE(ResultBy(deadline, [released, end] {
    released.wait();
    end->set_value();
    return 7;
  }));
  release.set_value();
  has_ended.wait();
}

}  // namespace
}  // namespace kolvane::devlnk
