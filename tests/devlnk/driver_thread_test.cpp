#include "devlnk/driver_thread.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <future>
#include <new>
#include <thread>

namespace kolvane::devlnk {
namespace {

std::int32_t GiveUp(void*, std::int32_t) { return 1; }
std::int32_t KeepWaiting(void* calls, std::int32_t) {
  ++*static_cast<int*>(calls);
  return 0;
}

/// A driver that blocks until it is released.
struct Driver {
  std::promise<void> release;
  std::shared_future<void> released = release.get_future().share();

  std::function<Received(std::span<char>)> Reading(std::string bytes, Status status = Status::kOk) {
    return [released = released, bytes, status](std::span<char> room) {
      released.wait();
      bytes.copy(room.data(), room.size());
      return Received{bytes.size(), status};
    };
  }
};

class DriverThreadTest : public testing::Test {
 protected:
  std::string ReadUntilGivenUp(Driver& driver, const std::string& bytes) {
    Waiting waiting({GiveUp, nullptr});
    Deadline deadline(20'000, &waiting);
    const Received received = thread_.Read(room_, deadline, driver.Reading(bytes));
    EXPECT_TRUE(deadline.given_up());
    return {room_.data(), received.bytes};
  }
  std::string Read(Driver& driver, const std::string& bytes) {
    Deadline deadline(20'000);
    return {room_.data(), thread_.Read(room_, deadline, driver.Reading(bytes)).bytes};
  }

  std::array<char, 4> room_{};
  DriverThread thread_;
};

TEST_F(DriverThreadTest, CallsWithoutAHandlerRunOnTheCallersThread) {
  Deadline deadline(20'000);
  std::thread::id thread;
  EXPECT_TRUE(thread_.Run(deadline, [&] { thread = std::this_thread::get_id(); }));
  EXPECT_TRUE(thread == std::this_thread::get_id());
}

TEST_F(DriverThreadTest, TheHandlerIsCalledWhileTheDriverBlocks) {
  Driver driver;
  int calls = 0;
  struct Context {
    int& calls;
    Driver& driver;
  } context{calls, driver};
  const auto release_at_second_call = [](void* at, std::int32_t) {
    auto& context_of_call = *static_cast<Context*>(at);
    if (++context_of_call.calls == 2) context_of_call.driver.release.set_value();
    return std::int32_t{0};
  };
  Waiting waiting({release_at_second_call, &context});
  Deadline deadline(20'000, &waiting);
  EXPECT_EQ(thread_.Read(room_, deadline, driver.Reading("ab")).bytes, 2u);
  EXPECT_GE(calls, 2);
}

TEST_F(DriverThreadTest, AReadThatWasGivenUpDeliversLater) {
  Driver first;
  EXPECT_EQ(ReadUntilGivenUp(first, "ab"), "");
  first.release.set_value();
  Driver second;
  second.release.set_value();
  EXPECT_EQ(Read(second, "cd"), "ab");
  EXPECT_EQ(Read(second, "cd"), "cd");
}

TEST_F(DriverThreadTest, ALateEmptyReadIsForgotten) {
  Driver first;
  EXPECT_EQ(ReadUntilGivenUp(first, ""), "");
  first.release.set_value();
  Driver second;
  second.release.set_value();
  EXPECT_EQ(Read(second, "cd"), "cd");
}

TEST_F(DriverThreadTest, BytesThatDoNotFitStay) {
  Driver first;
  EXPECT_EQ(ReadUntilGivenUp(first, "abc"), "");
  first.release.set_value();
  Deadline deadline(20'000);
  std::array<char, 2> small{};
  const auto none = [](std::span<char>) { return Received{}; };
  EXPECT_EQ(thread_.Read(small, deadline, none).bytes, 2u);
  EXPECT_EQ(std::string(small.data(), 2), "ab");
  EXPECT_EQ(thread_.Read(small, deadline, none).bytes, 1u);
  EXPECT_EQ(small[0], 'c');
  EXPECT_EQ(thread_.Read(small, deadline, none).bytes, 0u);
}

TEST_F(DriverThreadTest, TheNextCallWaitsForOneThatWasGivenUp) {
  Driver first;
  EXPECT_EQ(ReadUntilGivenUp(first, "ab"), "");
  Deadline short_time(60);
  EXPECT_FALSE(thread_.Run(short_time, [] { FAIL(); }));
  int calls = 0;
  Waiting waiting({KeepWaiting, &calls});
  Deadline attended(120, &waiting);
  EXPECT_FALSE(thread_.AwaitIdle(attended));
  EXPECT_GE(calls, 1);
  first.release.set_value();
  Deadline deadline(20'000);
  EXPECT_TRUE(thread_.AwaitIdle(deadline));
  thread_.DropLate();
  Driver second;
  second.release.set_value();
  EXPECT_EQ(Read(second, "cd"), "cd");
}

TEST_F(DriverThreadTest, WhatTheCallThrowsReachesTheCaller) {
  int calls = 0;
  Waiting waiting({KeepWaiting, &calls});
  Deadline attended(20'000, &waiting);
  EXPECT_THROW((void)thread_.Run(attended, [] { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_TRUE(thread_.Run(attended, [] {}));
}

TEST_F(DriverThreadTest, WhatACallThrowsAfterItWasGivenUpIsDropped) {
  Driver driver;
  Waiting waiting({GiveUp, nullptr});
  Deadline given_up(20'000, &waiting);
  EXPECT_FALSE(thread_.Run(given_up, [released = driver.released] {
    released.wait();
    throw std::bad_alloc();
  }));
  driver.release.set_value();
  int calls = 0;
  Waiting attending({KeepWaiting, &calls});
  Deadline attended(20'000, &attending);
  EXPECT_TRUE(thread_.Run(attended, [] {}));
}

TEST_F(DriverThreadTest, ItsIdleThreadEndsWithIt) {
  auto ended = std::make_shared<std::promise<void>>();
  auto has_ended = ended->get_future();
  {
    int calls = 0;
    DriverThread thread;
    Waiting waiting({KeepWaiting, &calls});
    Deadline deadline(20'000, &waiting);
    EXPECT_TRUE(thread.Run(deadline, [ended] { ended->set_value_at_thread_exit(); }));
    EXPECT_TRUE(thread.AwaitIdle(deadline));
  }
  EXPECT_EQ(has_ended.wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

TEST_F(DriverThreadTest, ACallMayOutliveIt) {
  Driver driver;
  auto ended = std::make_shared<std::promise<void>>();
  auto has_ended = ended->get_future();
  {
    DriverThread thread;
    Waiting waiting({GiveUp, nullptr});
    Deadline deadline(20'000, &waiting);
    EXPECT_FALSE(thread.Run(deadline, [released = driver.released, ended] {
      released.wait();
      ended->set_value();
    }));
  }
  driver.release.set_value();
  has_ended.wait();
}

}  // namespace
}  // namespace kolvane::devlnk
