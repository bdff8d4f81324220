#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "device/device.h"

namespace kolvane::device {

/// Control characters as \r, \n, \0, so that a test can write down what it expects.
inline std::string Escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\r') {
      out += "\\r";
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\0') {
      out += "\\0";
    } else {
      out += c;
    }
  }
  return out;
}

/// A device that records its calls and answers from queues. Each operation ends with the result in its public
/// field, which a test may change at any time; a read from an empty queue ends with `read_error`.
class FakeDevice final : public Device {
 public:
  static DeviceError TimeOut() { return {-5, "Zeitüberschreitung"}; }

  void Open() override {
    Record("Open", open_result);
    on_open();
  }
  void Close() override { Record("Close", close_result); }

  void Write(std::string_view command, std::string_view terminator, std::int16_t extra) override {
    Record("Write " + std::string(command) + "|" + Escaped(terminator) + "|" + std::to_string(extra),
           write_result);
  }

  void ReadText(std::string_view terminator, std::int32_t count, std::string& answer,
                Bytes& /*buffer*/) override {
    const bool has_answer = !text_answers.empty();
    Record("ReadText " + Escaped(terminator) + " " + std::to_string(count),
           has_answer ? DeviceError{} : read_error);
    if (!has_answer) return;
    answer = text_answers.front();
    text_answers.pop_front();
    on_text();
  }

  std::size_t ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) override {
    auto wanted = static_cast<std::size_t>(count);
    const std::size_t end = terminator.empty() ? std::string::npos : incoming.find(terminator.back());
    if (end < wanted) wanted = end + 1;
    const bool succeeds = reads_copy_nothing || wanted <= incoming.size();
    Record("ReadBinary " + std::to_string(count), succeeds ? DeviceError{} : read_error);
    if (buffer.size() < wanted) buffer.resize(wanted);
    if (!succeeds) return 0;
    if (reads_copy_nothing) return wanted;
    std::transform(incoming.begin(), incoming.begin() + static_cast<std::ptrdiff_t>(wanted), buffer.begin(),
                   [](char c) { return static_cast<std::uint8_t>(c); });
    incoming.erase(0, wanted);
    return wanted;
  }

  void SetTimeout(std::int32_t milliseconds) override {
    calls.push_back("SetTimeout " + std::to_string(milliseconds));
  }

  DeviceError LastError() override {
    calls.emplace_back("LastError");
    return last_error;
  }

  void ClearLastError() override { Record("ClearLastError", {}); }

  std::optional<std::int32_t> FlushInput() override {
    calls.emplace_back("FlushInput");
    return flushed;
  }

  void ActivateInterpreter() override { calls.emplace_back("ActivateInterpreter"); }

  std::int32_t BytesWaiting() override { return waiting(); }
  int WaitDescriptor() override { return wait_descriptor; }
  void Pause(std::int32_t milliseconds) override {
    paused_ms += milliseconds;
    Record("Pause " + std::to_string(milliseconds), pause_result);
  }

  std::size_t CountCalls(std::string_view start) const {
    return static_cast<std::size_t>(std::count_if(
        calls.begin(), calls.end(), [&](const std::string& call) { return call.starts_with(start); }));
  }

  std::vector<std::string> calls;
  std::function<void()> on_open = [] {};
  std::function<void()> on_text = [] {};
  DeviceError open_result;
  DeviceError close_result;
  DeviceError write_result;
  DeviceError read_error = TimeOut();
  std::deque<std::string> text_answers;  ///< UTF-8, terminators included
  std::string incoming;                  ///< bytes of binary answers
  bool reads_copy_nothing = false;       ///< binary reads succeed and leave the buffer as it is
  std::optional<std::int32_t> flushed;
  std::function<std::int32_t()> waiting = [] { return 0; };
  int wait_descriptor = -1;
  std::int32_t paused_ms = 0;
  device::DeviceError pause_result;
  device::DeviceError last_error;

 private:
  void Record(std::string call, const DeviceError& result) {
    calls.push_back(std::move(call));
    last_error = result;
  }
};

}  // namespace kolvane::device
