#include "device/port_path.h"

#include <algorithm>
#include <cstring>

#include "base/encoding.h"
#include "base/text.h"
#include "device/device_state.h"
#include "device/open_sequence.h"
#include "device/test_answer.h"

namespace kolvane::device {
namespace {

constexpr std::int16_t kCloseValue = 1;

// Keeps the capacity of `out` for text that is the same in both encodings.
void AssignDecoded(std::string_view bytes, bool utf8, std::string& out) {
  if (base::IsAscii(bytes)) {
    out.assign(bytes);
  } else {
    out = base::FromDevice(bytes, utf8);
  }
}

}  // namespace

PortPath::PortPath(DeviceState& state, ConnectionParameters& parameters, PortLibrarySource& source,
                   const base::Clock& clock, DateTimeSource date_time, Waits& waits)
    : state_(state),
      parameters_(parameters),
      source_(source),
      clock_(clock),
      waits_(waits),
      test_answer_(std::move(date_time)) {}

// The end of a test answer is not a failure of the next operation.
void PortPath::StartTestAnswer() {
  test_answer_.Restart();
  state_.last_result = 0;
}

// Calls the library, unless offline, and keeps its status; true if that is not a failure.
template <typename Call>
bool PortPath::Run(Call call) {
  if (Offline()) return false;
  PortLibrary* library = source_.Library();
  state_.last_result = library == nullptr ? device_status::kNoPortLibrary : call(*library);
  return state_.last_result >= 0;
}

void PortPath::Open() {
  waits_.BeforeLibraryCall();
  test_answer_.Restart();
  state_.last_result = OpenSequence(state_, parameters_, source_, clock_, waits_).Run();
}

void PortPath::Close() {
  if (Offline()) return;
  waits_.BeforeLibraryCall();
  Run([this](PortLibrary& library) { return library.CloseInterpreter(parameters_.port_code, kCloseValue); });
  Run([](PortLibrary& library) { return library.ClosePort(); });
}

[[gnu::hot]] void PortPath::Write(std::string_view command, std::string_view terminator, std::int16_t) {
  if (Offline()) return StartTestAnswer();
  waits_.BeforeLibraryCall();
  message_.assign(command).append(terminator);
  if (!state_.utf8 && !base::IsAscii(message_)) message_ = base::ToWindows1252(message_);
  Run([this](PortLibrary& library) { return library.WritePort(message_); });
}

[[gnu::hot]] void PortPath::ReadText(std::string_view terminator, std::int32_t count, std::string& answer,
                                     Bytes& buffer) {
  if (Offline()) {
    StartTestAnswer();
    answer = test_answer_.Text();
    return;
  }
  waits_.BeforeLibraryCall();
  answer.clear();
  const std::int16_t code = ReadTerminatorCode(terminator);
  if (code == kReadWithoutTerminator) {
    ReceiveBytes(count, code, buffer);
    return;
  }
  const std::string_view received = ReceiveText(count, code);
  // A character that the count cuts belongs to the next answer.
  const bool full = state_.utf8 && received.size() == SizeOf(count);
  const std::size_t whole = received.size() - (full ? base::UnfinishedUtf8(received) : 0);
  AssignDecoded(received.substr(0, whole), state_.utf8, answer);
  if (full) state_.put_back.append(received.substr(whole));
  std::memset(text_buffer_.data(), ' ', received.size());
}

std::size_t PortPath::ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) {
  if (Offline()) {
    const bool taken = test_answer_.Take(count, buffer);
    state_.last_result = taken ? 0 : device_status::kTestAnswerEnd;
    return taken ? SizeOf(count) : 0;
  }
  waits_.BeforeLibraryCall();
  return ReceiveBytes(count, ReadTerminatorCode(terminator), buffer);
}

// The received text, wherever the library wrote it in the first `count` bytes; the caller refills these with
// spaces. The buffer is a byte longer for libraries that end their text with NUL.
[[gnu::hot]] std::string_view PortPath::ReceiveText(std::int32_t count, std::int16_t terminator) {
  const std::size_t size = SizeOf(count);
  if (text_buffer_.size() <= size) text_buffer_.resize(size + 1, ' ');
  std::int32_t delivered = -1;
  Run([&](PortLibrary& library) {
    const std::int32_t status = library.ReadPort(text_buffer_.data(), count, terminator);
    delivered = library.Delivered();
    return status;
  });
  text_buffer_[size] = ' ';
  return base::TrimSpacesRight(
      {text_buffer_.data(), delivered < 0 ? size : std::min(SizeOf(delivered), size)});
}

// The library strips a lone terminator and does not return the number of bytes. So the buffer is filled with
// the terminator beforehand: the answer ends with the first one, whoever wrote it.
std::size_t PortPath::ReceiveBytes(std::int32_t count, std::int16_t terminator, Bytes& buffer) {
  const auto last = static_cast<std::uint8_t>(terminator);
  byte_buffer_.assign(SizeOf(count) + 1, last);
  char* start = reinterpret_cast<char*>(byte_buffer_.data());
  if (!Run([&](PortLibrary& library) { return library.ReadPort(start, count, terminator); })) return 0;
  const auto end = byte_buffer_.end() - 1;
  const auto found = terminator == kReadWithoutTerminator ? end : std::find(byte_buffer_.begin(), end, last);
  const auto received = std::min(found + 1, end) - byte_buffer_.begin();
  if (buffer.size() < SizeOf(count)) buffer.resize(SizeOf(count));
  std::copy_n(byte_buffer_.begin(), received, buffer.begin());
  return static_cast<std::size_t>(received);
}

[[gnu::hot]] void PortPath::SetTimeout(std::int32_t milliseconds) {
  Run([&](PortLibrary& library) { return library.SetTimeout(milliseconds); });
}

bool PortPath::LacksNodeFunction() const {
  const PortLibrary* library = source_.Library();
  return !parameters_.node.empty() && library != nullptr && !library->TakesNode();
}

[[gnu::hot]] DeviceError PortPath::LastError() {
  if (state_.last_result == 0) return {0, "0"};  // the usual case, without a conversion
  return ErrorOfLastResult();
}

DeviceError PortPath::ErrorOfLastResult() const {
  const auto code = static_cast<std::int16_t>(state_.last_result);
  if (state_.last_result > 0) return {code, std::to_string(code)};
  if (state_.last_result == device_status::kNoPortLibrary && !source_.Failure().empty())
    return {code, source_.Failure()};
  if (state_.last_result == device_status::kNoNodeFunction && LacksNodeFunction())
    return {code, "Die Portbibliothek kann die Gerätedatei „" + parameters_.node +
                      "“ nicht öffnen: Funktion QDX_SetNode fehlt."};
  return {code, std::to_string(code), Words()};
}

std::string PortPath::Words() const {
  PortLibrary* library = Offline() ? nullptr : source_.Library();
  return library == nullptr ? std::string() : library->StatusText(state_.last_result);
}

[[gnu::hot]] void PortPath::ClearLastError() {
  if (Offline()) StartTestAnswer();
}

std::optional<std::int32_t> PortPath::FlushInput() {
  if (Offline()) return std::nullopt;
  const auto put_back = static_cast<std::int32_t>(state_.put_back.size());
  if (Run([](PortLibrary& library) { return library.FlushInQueue(); })) return state_.last_result + put_back;
  return state_.last_result;
}

void PortPath::ActivateInterpreter() {
  Run([](PortLibrary& library) { return library.ActivateInterpreter(kInterpreterValue); });
}

std::int32_t PortPath::BytesWaiting() {
  PortLibrary* library = Offline() ? nullptr : source_.Library();
  if (library == nullptr) return 0;
  return library->BytesWaiting() + static_cast<std::int32_t>(state_.put_back.size());
}

int PortPath::WaitDescriptor() {
  PortLibrary* library = Offline() ? nullptr : source_.Library();
  return library == nullptr ? -1 : library->WaitDescriptor();
}

void PortPath::Pause(std::int32_t milliseconds) {
  Run([this, milliseconds](PortLibrary& /*library*/) { return waits_.Delay(milliseconds); });
}

}  // namespace kolvane::device
