#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "device/device.h"

namespace kolvane::device {

/// A device and the means to control it in a test.
class DeviceSetup {
 public:
  virtual ~DeviceSetup() = default;
  virtual Device& device() = 0;
  /// The instrument's next answer, terminator included.
  virtual void Receive(const std::string& bytes) = 0;
  /// Every operation fails from now on.
  virtual void BreakDown() {}
  virtual void Disconnect() {}
};

struct DeviceCase {
  const char* name;
  std::function<std::unique_ptr<DeviceSetup>()> make;
  bool can_fail = true;      ///< offline and window-only paths never do
  bool has_answers = true;   ///< a window without device has none
  bool reads_binary = true;  ///< some fakes of instruments answer lines only
};

inline std::ostream& operator<<(std::ostream& out, const DeviceCase& device) { return out << device.name; }
inline std::string NameOf(const testing::TestParamInfo<DeviceCase>& info) { return info.param.name; }

/// What every Device promises; each program that has one instantiates it.
class DeviceContract : public testing::TestWithParam<DeviceCase> {
 protected:
  Device& io() { return setup_->device(); }

  std::unique_ptr<DeviceSetup> setup_ = GetParam().make();
  std::string answer_;
  Bytes buffer_;
};

TEST_P(DeviceContract, AnOperationThatWorksIsNoError) {
  io().ClearLastError();
  EXPECT_GE(io().LastError().code, 0);
  io().Write("*IDN?", "\n", 0);
  EXPECT_GE(io().LastError().code, 0);
  io().Close();
  EXPECT_GE(io().LastError().code, 0);
}

TEST_P(DeviceContract, AFailureIsReportedAndNeverThrown) {
  setup_->BreakDown();
  const std::function<void()> operations[] = {[this] { io().Open(); }, [this] { io().Write("A", "\n", 0); },
                                              [this] { io().ReadText("\n", 16000, answer_, buffer_); },
                                              [this] { io().ReadBinary("", 1, buffer_); },
                                              [this] { io().Close(); }};
  for (const auto& operation : operations) {
    EXPECT_NO_THROW(operation());
    const DeviceError error = io().LastError();
    EXPECT_TRUE(GetParam().can_fail ? error.code < 0 : error.code >= 0 || !GetParam().reads_binary);
    EXPECT_TRUE(error.code >= 0 || !error.description.empty());
  }
}

TEST_P(DeviceContract, ATextAnswerHasNoFillingAtItsEnd) {
  setup_->Receive(" 1,5 \r\n");
  answer_ = "alt";
  io().ReadText("\r\n", 16000, answer_, buffer_);
  EXPECT_EQ(answer_.empty(), !GetParam().has_answers);
  EXPECT_FALSE(answer_.ends_with(' '));
  EXPECT_GE(io().LastError().code, 0);
}

TEST_P(DeviceContract, ABinaryAnswerNeverShrinksTheBuffer) {
  setup_->Receive("AB");
  buffer_ = Bytes(5, 9);
  io().ReadBinary("", 2, buffer_);
  ASSERT_EQ(buffer_.size(), 5u);
  EXPECT_EQ(buffer_[0] != 9, GetParam().has_answers && GetParam().reads_binary);
  EXPECT_EQ((Bytes{buffer_[2], buffer_[3], buffer_[4]}), (Bytes{9, 9, 9}));
}

TEST_P(DeviceContract, FlushReportsNothingWhileNotConnected) {
  setup_->Disconnect();
  EXPECT_EQ(io().FlushInput(), std::nullopt);
}

TEST_P(DeviceContract, EveryOperationMayComeInAnyOrder) {
  for (int round = 0; round < 2; ++round) {
    EXPECT_NO_THROW(io().Close());
    EXPECT_NO_THROW(io().SetTimeout(-1));
    EXPECT_NO_THROW(io().ActivateInterpreter());
    EXPECT_NO_THROW(io().FlushInput());
    EXPECT_NO_THROW(io().ReadText("", 0, answer_, buffer_));
    EXPECT_NO_THROW(io().ReadBinary("", 0, buffer_));
    EXPECT_NO_THROW(io().Write("", "", 0));
    EXPECT_NO_THROW(io().ClearLastError());
    EXPECT_NO_THROW(io().LastError());
  }
}

}  // namespace kolvane::device
