#pragma once

#include <string>

#include "base/clock.h"
#include "device/connection_parameters.h"
#include "device/device.h"
#include "device/device_state.h"
#include "device/port_library.h"
#include "device/test_answer.h"
#include "device/waits.h"

namespace kolvane::device {

/// Operating mode 2: the terminal's own connection through the port library. Texts are passed to the library
/// as Windows-1252. Every library call stores its status as the last result; without a library that is
/// kNoPortLibrary, with the source's sentence as description.
///
/// While the port code is -1 the library is never called: writes are dropped, text reads return the test
/// answer at once, binary reads return it piece by piece (TestAnswer). ClearLastError and Write start a new
/// test answer.
class PortPath final : public Device {
 public:
  PortPath(DeviceState& state, ConnectionParameters& parameters, PortLibrarySource& source,
           const base::Clock& clock, DateTimeSource date_time, Waits& waits);

  void Open() override;
  void Close() override;
  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override;
  void ReadText(std::string_view terminator, std::int32_t count, std::string& answer, Bytes& buffer) override;
  std::size_t ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) override;
  void SetTimeout(std::int32_t milliseconds) override;
  /// The last result truncated to 16 bits, that number as text, and the library's text for a failure.
  DeviceError LastError() override;
  /// Keeps the last result unless it is the end of a test answer.
  void ClearLastError() override;
  std::optional<std::int32_t> FlushInput() override;
  void ActivateInterpreter() override;
  std::int32_t BytesWaiting() override;
  int WaitDescriptor() override;
  void Pause(std::int32_t milliseconds) override;

 private:
  /// Whether the test mode answers, without the library.
  bool Offline() const { return state_.test_mode != 0 || parameters_.port_code == port_code::kOffline; }
  bool LacksNodeFunction() const;
  DeviceError ErrorOfLastResult() const;
  std::string Words() const;
  void StartTestAnswer();
  template <typename Call>
  bool Run(Call call);
  std::string_view ReceiveText(std::int32_t count, std::int16_t terminator);
  std::size_t ReceiveBytes(std::int32_t count, std::int16_t terminator, Bytes& buffer);

  DeviceState& state_;
  ConnectionParameters& parameters_;
  PortLibrarySource& source_;
  const base::Clock& clock_;
  Waits& waits_;
  TestAnswer test_answer_;
  std::string message_;
  std::string text_buffer_;  // all spaces between two reads
  Bytes byte_buffer_;
};

}  // namespace kolvane::device
