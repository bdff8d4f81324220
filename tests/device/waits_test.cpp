#include "device/waits.h"

#include <gtest/gtest.h>

#include <new>

#include "device/device_rig.h"

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
  EXPECT_EQ(listener.ended_waits, 0);
}

TEST_F(WaitsTest, TheEndIsReportedOnceIfThereWasAWait) {
  Waits waits(library, clock, listener);
  { const Waits::Scope quick(waits, Operation::kAnswer); }
  EXPECT_EQ(listener.ended_waits, 0);
  {
    const Waits::Scope outer(waits, Operation::kAnswer);
    const Waits::Scope inner(waits, Operation::kSending);
    library.Wait(1);
  }
  EXPECT_EQ(listener.ended_waits, 1);
  EXPECT_FALSE(waits.IsUnderWay());
}

TEST_F(WaitsTest, GivenUpHoldsUntilTheOutermostOperationEnds) {
  Waits waits(library, clock, listener);
  {
    const Waits::Scope exchange(waits, Operation::kAnswer);
    listener.max_steps = 0;
    EXPECT_FALSE(library.Wait(1));
    listener.max_steps = SIZE_MAX;
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
  listener.max_steps = 0;
  clock.Advance(0.0625);
  EXPECT_FALSE(waits.Attend());
}

TEST_F(WaitsTest, LackOfMemoryGivesUp) {
  struct OutOfMemory final : WaitListener {
    bool Waiting(Operation, double) override { throw std::bad_alloc(); }
  } listener_without_memory;
  Waits waits(library, clock, listener_without_memory);
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
    DeviceRig rig(mode);
    rig.io.Open();
    EXPECT_EQ(rig.listener.unattended, 1);
    rig.io.Write("A", "\n", 0);
    rig.io.ReadText("\n", 10, rig.answer, rig.buffer);
    rig.io.ReadBinary("\n", 1, rig.buffer);
    EXPECT_EQ(rig.listener.unattended, 4);
    rig.io.SetTimeout(1);
    rig.io.LastError();
    EXPECT_EQ(rig.listener.unattended, 4);
    rig.io.Close();
    EXPECT_EQ(rig.listener.unattended, 5);
  }
}

TEST(Unattended, AReadOfAnAnswerThatWasGivenUpReadsNothing) {
  DeviceRig rig(operating_mode::kPortLibrary);
  rig.library.replies = {{"a"}, {"b"}};
  const Waits::Scope scope(rig.waits, Operation::kAnswer);
  EXPECT_EQ(rig.io.ReadBinary("", 1, rig.buffer), 1u);
  rig.listener.max_steps = 0;
  rig.clock.Advance(0.0625);
  EXPECT_EQ(rig.io.ReadBinary("", 1, rig.buffer), 0u);
  EXPECT_EQ(rig.io.LastError().code, device_status::kGivenUp);
  EXPECT_EQ(rig.library.replies.size(), 1u);
}

}  // namespace
}  // namespace kolvane::device
