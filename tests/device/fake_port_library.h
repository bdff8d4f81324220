#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "device/fake_clock.h"
#include "device/port_library.h"

namespace kolvane::device {

/// What one ReadPort delivers.
struct FakeReply {
  std::string bytes;
  std::int32_t status = 0;
  double seconds = 0;  ///< how long the read takes
  std::size_t at = 0;  ///< where in the caller's buffer the bytes go
};

/// A port library without a port. It records each call, "ReadPort(16000, 10)", and can be switched while a
/// test runs: accept serves `results` and `replies`, fail refuses everything at once, stall lets each
/// transfer run into its time-out. A read without a reply times out as well.
class FakePortLibrary final : public PortLibrary {
 public:
  enum class Mode { kAccept, kFail, kStall };
  static constexpr std::int32_t kRefused = -7;
  static constexpr std::int32_t kTimedOut = -9;

  explicit FakePortLibrary(FakeClock* clock = nullptr) : clock_(clock) {}

  Mode mode = Mode::kAccept;
  std::vector<std::string> calls;
  std::map<std::string, std::deque<std::int32_t>> results;  ///< by function; 0 if none is left
  std::deque<FakeReply> replies;
  std::string scan;  ///< what a USB scan finds
  bool takes_node = true;
  std::int32_t bytes_waiting = 0;
  std::int32_t delivered = -1;
  std::string status_text;

  std::int32_t OpenPort(std::int16_t port, std::int32_t baud, const std::string& text, std::int32_t data_bits,
                        std::int16_t stop_bits, std::int16_t receive_buffer) override {
    return Call("OpenPort", {Text(port), Text(baud), Quoted(text), Text(data_bits), Text(stop_bits),
                             Text(receive_buffer)});
  }
  bool TakesNode() const override { return takes_node; }
  std::int32_t BytesWaiting() override { return bytes_waiting; }
  std::int32_t Delivered() const override { return delivered; }
  std::string StatusText(std::int32_t) override { return status_text; }
  std::int32_t SetNode(std::int16_t port, const std::string& node) override {
    return Call("SetNode", {Text(port), Quoted(node)});
  }
  std::int32_t SelectDevice(std::int16_t address) override { return Call("SelectDevice", {Text(address)}); }
  std::int32_t SetTimeout(std::int32_t milliseconds) override {
    timeout_ms_ = milliseconds;
    return Call("SetTimeout", {Text(milliseconds)});
  }
  std::int32_t SetGpibControlBlock(std::int16_t eoi_on_write, std::int16_t stop_read_on_eos,
                                   std::int16_t eoi_with_eos, std::int16_t eos_char, std::int16_t zero,
                                   std::int16_t repeat_addressing, std::int32_t milliseconds) override {
    return Call("SetGpibControlBlock",
                {Text(eoi_on_write), Text(stop_read_on_eos), Text(eoi_with_eos), Text(eos_char), Text(zero),
                 Text(repeat_addressing), Text(milliseconds)});
  }
  std::int32_t EnablePortIo(std::int16_t port) override { return Call("EnablePortIo", {Text(port)}); }
  std::int32_t WritePort(const std::string& text) override { return Transfer("WritePort", {Quoted(text)}); }
  std::int32_t ReadPort(char* buffer, std::int32_t count, std::int16_t terminator) override {
    const std::int32_t status = Transfer("ReadPort", {Text(count), Text(terminator)});
    return mode == Mode::kAccept ? Deliver(buffer, count) : status;
  }
  std::int32_t FlushInQueue() override { return Call("FlushInQueue", {}); }
  std::int32_t ActivateInterpreter(std::int16_t value) override {
    return Call("ActivateInterpreter", {Text(value)});
  }
  std::int32_t CloseInterpreter(std::int16_t port, std::int16_t value) override {
    return Call("CloseInterpreter", {Text(port), Text(value)});
  }
  std::int32_t ClosePort() override { return Call("ClosePort", {}); }
  std::int32_t Delay(std::int32_t milliseconds) override {
    Wait(milliseconds / 1000.0);
    return Call("Delay", {Text(milliseconds)});
  }
  std::int32_t MaxUsbDevices() override { return Call("MaxUsbDevices", {}); }
  std::int32_t ScanUsbDevices(std::int32_t slots, char* buffer) override {
    std::copy(scan.begin(), scan.end(), buffer);
    return Call("ScanUsbDevices", {Text(slots)});
  }

 private:
  static std::string Text(std::int32_t number) { return std::to_string(number); }
  static std::string Quoted(const std::string& text) { return '"' + text + '"'; }

  void Wait(double seconds) {
    if (clock_ != nullptr) clock_->Advance(seconds);
  }

  std::int32_t Call(const std::string& name, const std::vector<std::string>& arguments) {
    std::string line = name + "(";
    for (const std::string& argument : arguments) line += (line.back() == '(' ? "" : ", ") + argument;
    calls.push_back(line + ")");
    if (mode == Mode::kFail) return kRefused;
    auto& scripted = results[name];
    if (scripted.empty()) return 0;
    const std::int32_t status = scripted.front();
    scripted.pop_front();
    return status;
  }

  std::int32_t Transfer(const std::string& name, const std::vector<std::string>& arguments) {
    const std::int32_t status = Call(name, arguments);
    if (mode != Mode::kStall) return status;
    Wait(timeout_ms_ / 1000.0);
    return kTimedOut;
  }

  std::int32_t Deliver(char* buffer, std::int32_t count) {
    FakeReply reply{{}, kTimedOut, timeout_ms_ / 1000.0};
    if (!replies.empty()) {
      reply = replies.front();
      replies.pop_front();
    }
    Wait(reply.seconds);
    const auto room = static_cast<std::size_t>(count) - std::min<std::size_t>(reply.at, count);
    std::copy_n(reply.bytes.begin(), std::min(reply.bytes.size(), room), buffer + reply.at);
    return reply.status;
  }

  FakeClock* clock_;
  std::int32_t timeout_ms_ = 5000;
};

/// Returns the library it was given, or none.
class FakePortLibrarySource final : public PortLibrarySource {
 public:
  explicit FakePortLibrarySource(PortLibrary* given) : library(given) {}
  PortLibrary* Library() override {
    ++uses;
    return library;
  }
  std::string Failure() const override { return library == nullptr ? failure : ""; }

  PortLibrary* library;
  std::string failure = "Die Portbibliothek fehlt.";
  int uses = 0;
};

}  // namespace kolvane::device
