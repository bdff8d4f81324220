#include "device/waits.h"

#include <gtest/gtest.h>

#include <new>

#include "device/device_world.h"

namespace kolvane::device {
namespace {

/// A library whose calls wait: each tick of 50 ms calls the handler, which may give the call up.
class WaitingLibrary final : public PortLibrarySource {
 public:
  explicit WaitingLibrary(FakeClock& clock) : clock_(clock) {}

  PortLibrary* Library() override { return nullptr; }
  std::string Failure() const override { return {}; }
  void SetWaitHandler(const WaitHandler& handler) override { handler_ = handler; }
  bool IsAttended() const override { return handler_.function != nullptr; }

  /// Whether the call completed.
  bool Wait(int ticks) {
    for (int tick = 1; tick <= ticks; ++tick) {
      clock_.Advance(0.050);
      if (handler_.function(handler_.context, tick * 50) != 0) return false;
    }
    return true;
  }
  bool has_handler() const { return handler_.function != nullptr; }

 private:
  FakeClock& clock_;
  WaitHandler handler_;
};

struct WaitsTest : testing::Test {
  FakeClock clock;
  WaitingLibrary library{clock};
  RecordingWaitListener listener;
};

TEST_F(WaitsTest, TheListenerLearnsTheReasonAndTimeOfAWait) {
  Waits waits(library, clock, listener);
  const Waits::Scope scope(waits, Operation::kAnswer);
  EXPECT_TRUE(library.Wait(2));
  {
    const Waits::Scope inner(waits, Operation::kSending);
    EXPECT_TRUE(library.Wait(1));
  }
  ASSERT_EQ(listener.waited.size(), 3u);
  EXPECT_EQ(listener.waited[0].operation, Operation::kAnswer);
  EXPECT_NEAR(listener.waited[1].seconds, 0.100, 1e-9);
  EXPECT_EQ(listener.waited[2].operation, Operation::kSending);
  EXPECT_NEAR(listener.waited[2].seconds, 0.150, 1e-9) << "since the outermost operation began to wait";
  EXPECT_EQ(listener.over, 0);
}

TEST_F(WaitsTest, TheEndIsReportedOnceIfThereWasAWait) {
  Waits waits(library, clock, listener);
  { const Waits::Scope quick(waits, Operation::kAnswer); }
  EXPECT_EQ(listener.over, 0);
  {
    const Waits::Scope outer(waits, Operation::kAnswer);
    const Waits::Scope inner(waits, Operation::kSending);
    library.Wait(1);
  }
  EXPECT_EQ(listener.over, 1);
  EXPECT_FALSE(waits.IsUnderWay());
}

TEST_F(WaitsTest, GivenUpHoldsUntilTheOutermostOperationEnds) {
  Waits waits(library, clock, listener);
  {
    const Waits::Scope exchange(waits, Operation::kAnswer);
    listener.patience = 0;
    EXPECT_FALSE(library.Wait(1));
    listener.patience = SIZE_MAX;
    EXPECT_FALSE(library.Wait(1)) << "the rest of the exchange";
    EXPECT_FALSE(waits.Attend());
  }
  const Waits::Scope next(waits, Operation::kAnswer);
  EXPECT_TRUE(library.Wait(1));
}

TEST_F(WaitsTest, BetweenThePartsItCallsEvery50Milliseconds) {
  Waits waits(library, clock, listener);
  const Waits::Scope scope(waits, Operation::kAnswer);
  for (int part = 0; part < 5; ++part) {
    EXPECT_TRUE(waits.Attend());
    clock.Advance(0.03125);
  }
  EXPECT_EQ(listener.waited.size(), 2u);
  listener.patience = 0;
  clock.Advance(0.0625);
  EXPECT_FALSE(waits.Attend());
}

TEST_F(WaitsTest, LackOfMemoryGivesUp) {
  struct Poor final : WaitListener {
    bool Waiting(Operation, double) override { throw std::bad_alloc(); }
  } poor;
  Waits waits(library, clock, poor);
  const Waits::Scope scope(waits, Operation::kAnswer);
  EXPECT_FALSE(library.Wait(1));
}

TEST_F(WaitsTest, TheHandlerIsRemovedWithIt) {
  {
    const Waits waits(library, clock, listener);
    EXPECT_TRUE(library.has_handler());
  }
  EXPECT_FALSE(library.has_handler());
}

TEST_F(WaitsTest, ADelayWithoutALibraryFails) {
  Waits waits(library, clock, listener);
  EXPECT_EQ(waits.Delay(10), device_status::kNoPortLibrary);
}

TEST(Unattended, IsReportedBeforeEachCallThatMayTakeLong) {
  for (const std::int16_t mode :
       {operating_mode::kHostByIndex, operating_mode::kHost, operating_mode::kPortLibrary}) {
    SCOPED_TRACE(mode);
    DeviceWorld world(mode);
    world.io.Open();
    EXPECT_EQ(world.listener.unattended, 1);
    world.io.Write("A", "\n", 0);
    world.io.ReadText("\n", 10, world.answer, world.buffer);
    world.io.ReadBinary("\n", 1, world.buffer);
    EXPECT_EQ(world.listener.unattended, 4);
    world.io.SetTimeout(1);
    world.io.LastError();
    EXPECT_EQ(world.listener.unattended, 4);
  }
}

TEST(Unattended, AReadOfAnAnswerThatWasGivenUpReadsNothing) {
  DeviceWorld world(operating_mode::kPortLibrary);
  world.library.replies = {{"a"}, {"b"}};
  const Waits::Scope scope(world.waits, Operation::kAnswer);
  EXPECT_EQ(world.io.ReadBinary("", 1, world.buffer), 1u);
  world.listener.patience = 0;
  world.clock.Advance(0.0625);
  EXPECT_EQ(world.io.ReadBinary("", 1, world.buffer), 0u);
  EXPECT_EQ(world.io.LastError().code, device_status::kGivenUp);
  EXPECT_EQ(world.library.replies.size(), 1u);
}

}  // namespace
}  // namespace kolvane::device
