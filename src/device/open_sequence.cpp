#include "device/open_sequence.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/encoding.h"
#include "base/text.h"
#include "device/connection_texts.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

constexpr std::int32_t kConnected = 0;
constexpr std::int32_t kFailed = -1;
constexpr std::int32_t kReplySize = 255;
constexpr std::int16_t kReplyTerminator = 10;
constexpr double kShortestWait = 0.010;
constexpr std::int32_t kPauseMs = 50;
constexpr std::int32_t kDefaultTimeoutMs = 5000;
constexpr std::int16_t kSoleAddress = 1;
constexpr std::int32_t kNoBaud = 1;
constexpr std::int16_t kGpibFifthValue = 0;

// Replies are enclosed in line ends, in a buffer padded with spaces. A single CR may occur within one, as
// between an echo and the reply to it.
std::string WithoutLineEnds(std::string reply) {
  std::ranges::replace_if(
      reply, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return base::FromWindows1252(base::TrimSpaces(reply));
}

bool IsConnectReply(std::string_view reply) { return base::ContainsNoCase(reply, "CONNECT"); }

}  // namespace

std::vector<std::string> ModemCommands(const std::string& script) {
  std::vector<std::string> commands;
  for (std::size_t at = 0; at < script.size();) {
    const std::size_t end = std::min(script.find("\r\n", at), script.size());
    if (end > at) commands.push_back(script.substr(at, end - at));
    at = end + 2;
  }
  return commands;
}

bool IsRefusal(std::string_view word) {
  return std::ranges::any_of(std::array{"NO CARRIER", "BUSY", "NO ANSWER", "NO DIALTONE", "ERROR"},
                             [word](const char* refusal) { return base::ContainsNoCase(word, refusal); });
}

void ModemDialler::Report(const std::string& command, double seconds_left) {
  waits_.ReportDialling({command, last_word_, static_cast<std::int32_t>(std::lround(seconds_left))});
}

// A read without a reply keeps the last word.
std::int32_t ModemDialler::ReadReply() {
  reply_.assign(kReplySize, ' ');
  const std::int32_t status = library_.ReadPort(reply_.data(), kReplySize, kReplyTerminator);
  if (std::string word = WithoutLineEnds(reply_); !word.empty()) last_word_ = std::move(word);
  return status;
}

// A read normally blocks until the time-out. If it returns empty at once (the port has gone), a pause keeps
// the loop from spinning. Negative if the pause fails too.
std::int32_t ModemDialler::ReadReplyPaced() {
  const double begin = clock_.Seconds();
  const std::int32_t status = ReadReply();
  const bool empty = status < 0 || base::TrimSpacesRight(reply_).empty();
  if (!empty || clock_.Seconds() - begin >= kShortestWait) return 0;
  return library_.Delay(kPauseMs);
}

std::int32_t ModemDialler::Dial(const std::vector<std::string>& commands, std::int32_t timeout_s) {
  library_.FlushInQueue();
  for (const std::string& command : commands) {
    library_.WritePort(base::ToWindows1252(command) + '\r');
    Report(command, 0);
    last_word_.clear();
    ReadReply();
    if (!waits_.AttendNow()) return kFailed;
  }
  for (const double begin = clock_.Seconds(); !IsConnectReply(reply_);) {
    const double left = timeout_s - (clock_.Seconds() - begin);
    if (left < 0) return kFailed;
    Report({}, left);
    if (ReadReplyPaced() < 0 || !waits_.AttendNow()) return kFailed;
  }
  return kConnected;
}

bool WasClosedAgain(const DeviceState& state, const ConnectionParameters& parameters) {
  return IsSerial(parameters.port_code) && state.open_step_status < 0;
}

std::int32_t OpenSequence::Run() {
  state_.test_mode = 0;
  if (parameters_.port_code == port_code::kOffline) {
    state_.test_mode = parameters_.port_code;
    return 0;
  }
  PortLibrary* library = source_.Library();
  if (library == nullptr) return device_status::kNoPortLibrary;
  if (const std::int32_t result = ChooseNode(*library); result < 0) return result;
  Prepare(*library);
  if (const std::int32_t result = OpenPort(*library); result < 0) return result;
  if (parameters_.port_code != port_code::kGpib) SetTimeout(*library);
  if (const std::int32_t result = library->SelectDevice(parameters_.address); result < 0) return result;
  return Finish(*library);
}

std::int32_t OpenSequence::ChooseNode(PortLibrary& library) {
  if (parameters_.node.empty()) return 0;
  if (!library.TakesNode()) return device_status::kNoNodeFunction;
  return library.SetNode(parameters_.port_code, parameters_.node);
}

void OpenSequence::Prepare(PortLibrary& library) {
  const std::int16_t code = parameters_.port_code;
  const GpibOptions& gpib = parameters_.gpib;
  if (code == port_code::kGpib) {
    state_.open_step_status = library.SetGpibControlBlock(
        gpib.send_eoi_on_write, gpib.stop_read_on_eos, gpib.send_eoi_with_eos, gpib.eos_char, kGpibFifthValue,
        gpib.repeat_addressing, parameters_.timeout_ms);
  }
  if (IsPointToPoint(code)) parameters_.address = kSoleAddress;
  if (IsParallel(code)) state_.open_step_status = library.EnablePortIo(code);
  if (parameters_.timeout_ms == 0) parameters_.timeout_ms = kDefaultTimeoutMs;
  if (IsPointToPoint(code)) SetTimeout(library);
}

std::int32_t OpenSequence::OpenPort(PortLibrary& library) {
  std::int32_t baud = parameters_.baud;
  std::int32_t data_bits = parameters_.data_bits;
  std::string text = ParityLetter(parameters_.parity);
  if (IsPointToPoint(parameters_.port_code)) baud = kNoBaud;
  if (parameters_.port_code == port_code::kTcpIp) {
    text = base::ToWindows1252(parameters_.ip_address);
    data_bits = parameters_.ip_port;
  } else if (parameters_.port_code == port_code::kUsb) {
    text = base::ToWindows1252(parameters_.usb_address);
  }
  return library.OpenPort(parameters_.port_code, baud, text, data_bits, parameters_.stop_bits,
                          static_cast<std::int16_t>(parameters_.receive_buffer));
}

std::int32_t OpenSequence::Finish(PortLibrary& library) {
  if (IsSerial(parameters_.port_code)) {
    const std::vector<std::string> commands = ModemCommands(parameters_.modem_script);
    if (!commands.empty()) Dial(library, commands);
  }
  if (WasClosedAgain(state_, parameters_)) {
    library.ClosePort();
    return 0;
  }
  library.ActivateInterpreter(kInterpreterValue);
  return 0;
}

void OpenSequence::Dial(PortLibrary& library, const std::vector<std::string>& commands) {
  ModemDialler dialler(library, clock_, waits_);
  state_.open_step_status = dialler.Dial(commands, parameters_.dial_timeout_s);
  if (state_.open_step_status < 0) state_.modem_word = dialler.last_word();
}

void OpenSequence::SetTimeout(PortLibrary& library) {
  state_.open_step_status = library.SetTimeout(parameters_.timeout_ms);
}

}  // namespace kolvane::device
