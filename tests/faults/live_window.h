#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "device/loaded_port_library.h"
#include "faults/faulty_instrument.h"
#include "gui/box_answers.h"
#include "window/window_records.h"

namespace kolvane::faults {

/// A terminal window, shown, whose port library is the real one and leads to a faulty instrument.
class LiveWindow : private window::WindowRecords {
 public:
  LiveWindow(Port port, Fault fault);
  ~LiveWindow();

  FaultyInstrument& instrument() { return instrument_; }
  terminal::TerminalState& terminal() { return terminal_; }
  device::ConnectionParameters& connection() { return connection_; }
  script::InterpreterState& interpreter() { return script_.interpreter; }
  window::MainWindow& window() { return window_; }

  void Press(const char* key);
  /// Types the command and presses the send button.
  void Send(const std::string& command);
  /// Disconnects and connects again, by the button.
  void Reconnect();
  /// The pane's new lines since the last call, joined by "|"; those about connections are <+> and <->,
  /// without date and device.
  std::string NewLines();
  /// The texts of the message boxes so far, each of which was confirmed.
  std::vector<std::string> boxes() const;
  bool connected() const { return device_.connected; }
  void Play(const std::string& rows);

 private:
  static device::ConnectionParameters ParametersOf(const FaultyInstrument& instrument);

  FaultyInstrument instrument_;
  base::TempFolder folder_;
  device::LazyPortLibrary library_{""};
  window::MainWindow window_;
  gui::BoxAnswers boxes_;
  qsizetype shown_ = 0;
};

/// A live window on each kind of port that the suite names.
class LiveWindowTest : public testing::TestWithParam<Port> {
 protected:
  /// Connected, after one exchange; `fault` is what the instrument does with FAULT.
  LiveWindow& Open(Fault fault) {
    live_ = std::make_unique<LiveWindow>(GetParam(), std::move(fault));
    live_->Send("FIRST");
    EXPECT_EQ(live_->NewLines(), "<+>|FIRST|FIRST");
    return *live_;
  }

  std::unique_ptr<LiveWindow> live_;
};

inline std::string PortName(const testing::TestParamInfo<Port>& info) { return NameOf(info.param); }

}  // namespace kolvane::faults
