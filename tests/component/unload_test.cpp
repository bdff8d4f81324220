#include "component/ui/terminal_run.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/fake_prompt.h"
#include "base/temp_folder.h"
#include "component/memory_store.h"
#include "device/fake_port_library.h"
#include "device/recording_host.h"
#include "pane/fake_pane.h"
#include "terminal/log_control.h"

namespace kolvane::component {
namespace {

class RecordingLog final : public terminal::Log {
 public:
  explicit RecordingLog(const MemoryStore& store) : store_(store) {}
  void WriteLine(std::string_view) override {}
  bool IsOpen() const override { return true; }
  void OpenLog(const std::string&) override {}
  void CloseLog() override { closed_before_saving = store_.writes.empty(); }
  bool closed_before_saving = false;

 private:
  const MemoryStore& store_;
};

class NoView final : public terminal::ConnectionView {
  void ConnectionChanged() override {}
};

class UnloadTest : public testing::Test {
 protected:
  void Run(std::int16_t oper_mode, bool connected) {
    state_.device.OperMode = oper_mode;
    state_.device.DevIdx = 1;
    state_.device.connected = connected;
    state_.device.gObj = host_;
    failure_ = Unload(state_, core_, log_, store_);
  }

  std::optional<SaveFailure> failure_;
  MemoryStore store_;
  RecordingLog log_{store_};
  ComponentState state_;
  device::FakePortLibrary library_;
  device::FakePortLibrarySource source_{&library_};
  pane::FakePane pane_;
  base::FakePrompt prompt_;
  NoView view_;
  std::shared_ptr<device::RecordingHost> host_ = std::make_shared<device::RecordingHost>();
  terminal::TerminalCore core_{
      {state_.device, state_.connection, state_.terminal}, source_, {pane_, log_, prompt_, view_}};
};

TEST_F(UnloadTest, ClosesTheLogThenSavesThenReleasesTheHost) {
  Run(1, true);
  EXPECT_TRUE(log_.closed_before_saving);
  EXPECT_FALSE(store_.writes.empty());
  EXPECT_EQ(state_.device.gObj, nullptr);
  EXPECT_TRUE(state_.can_unload);
  EXPECT_FALSE(state_.device.connected);
}

TEST_F(UnloadTest, ContinuesIfTheSettingsCannotBeSaved) {
  store_.failure = SaveFailure{"a.ini", 28};
  state_.connection.port_code = device::port_code::kTcpIp;
  Run(2, true);
  ASSERT_TRUE(failure_);
  EXPECT_EQ(failure_->file, "a.ini");
  EXPECT_EQ(store_.flushes, 1);
  EXPECT_EQ(library_.calls.back(), "ClosePort()");
  EXPECT_TRUE(state_.can_unload);
}

TEST_F(UnloadTest, SavesBeforeTheConnectionChanges) {
  state_.connection.port_code = device::port_code::kTcpIp;
  store_.on_flush = [this] {
    EXPECT_TRUE(library_.calls.empty());
    EXPECT_TRUE(host_->script.calls.empty());
    EXPECT_FALSE(state_.can_unload);
  };
  Run(2, true);
  EXPECT_FALSE(library_.calls.empty());
  state_.can_unload = false;
  library_.calls.clear();
  Run(1, false);
  EXPECT_FALSE(host_->script.calls.empty());
  EXPECT_EQ(store_.flushes, 2);
}

TEST_F(UnloadTest, EndsARecordingLog) {
  const base::TempFolder folder;
  terminal::LogControl log(state_.terminal.output, prompt_);
  log.OpenLog(folder.Path("a.LOG"));
  log.PressRecord();
  EXPECT_FALSE(Unload(state_, core_, log, store_));
  EXPECT_FALSE(log.IsOpen());
  EXPECT_FALSE(state_.terminal.output.log_recording);
}

TEST_F(UnloadTest, DoesNotTouchAConnectedHostsDevice) {
  Run(0, true);
  EXPECT_TRUE(host_->script.calls.empty());
}

TEST_F(UnloadTest, OpensAHostsDeviceAgain) {
  Run(0, false);
  EXPECT_EQ(std::count(host_->script.calls.begin(), host_->script.calls.end(), "IO.InitializeDevice(1)"), 1);
  host_->script.calls.clear();
  Run(1, false);
  EXPECT_EQ(std::count(host_->script.calls.begin(), host_->script.calls.end(), "OpenDevice()"), 1);
}

TEST_F(UnloadTest, ClosesItsOwnConnection) {
  state_.connection.port_code = device::port_code::kTcpIp;
  Run(2, true);
  EXPECT_EQ(library_.calls, (std::vector<std::string>{"CloseInterpreter(100, 1)", "ClosePort()"}));
  EXPECT_FALSE(state_.device.connected);
}

TEST_F(UnloadTest, ClosesNothingThatIsNotOpen) {
  Run(2, false);
  EXPECT_TRUE(library_.calls.empty());
  EXPECT_TRUE(state_.can_unload);
}

}  // namespace
}  // namespace kolvane::component
