#include "device/host_path.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "device/test_answer.h"

namespace kolvane::device {
namespace {

constexpr std::int16_t kText = 0;
constexpr std::int16_t kBinary = 1;

std::int16_t Limited(std::int32_t code) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(std::clamp<std::int32_t>(code, Limits::min(), Limits::max()));
}

void CopyToStart(const Bytes& received, std::size_t count, Bytes& buffer) {
  if (buffer.size() < count) buffer.resize(count);
  const auto end = std::copy_n(received.begin(), std::min(received.size(), count), buffer.begin());
  std::fill(end, buffer.begin() + static_cast<std::ptrdiff_t>(count), std::uint8_t{0});
}

}  // namespace

void HostPath::ReadText(std::string_view terminator, std::int32_t count, std::string& answer, Bytes& buffer) {
  HostRead read{kText, ReadTerminatorCode(terminator), count, std::string(SizeOf(count), ' '), buffer};
  answer.clear();
  Run([&](HostObject& host) {
    Read(host, read);
    answer = base::TrimSpacesRight(read.answer.ToText());
  });
}

std::size_t HostPath::ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) {
  HostRead read{kBinary, ReadTerminatorCode(terminator), count, std::string(), Bytes(SizeOf(count))};
  const bool done = Run([&](HostObject& host) {
    Read(host, read);
    const Bytes received = read.buffer.ToBytes();
    read_was_empty_ = count == 1 && received.empty();
    CopyToStart(received, SizeOf(count), buffer);
  });
  return done && !read_was_empty_ ? SizeOf(count) : 0;
}

DeviceError HostPath::LastError() {
  DeviceError error;
  if (!failure_)
    failure_ = FailureOf([&](HostObject& host) { error.code = Limited(host.LastError().ToInt32()); });
  if (failure_) {
    error = {device_status::kHostFailed, *failure_};
  } else {
    error.description = HostDescription();
    if (read_was_empty_ && error.code >= 0) error.code = device_status::kHostFailed;
  }
  state_.last_result = error.code;
  return error;
}

void HostPath::ClearLastError() {
  Run([](HostObject& host) { host.SetLastError(0); });
}

// A host whose description throws must keep its own error code.
std::string HostPath::HostDescription() const {
  std::string text;
  const auto failure = FailureOf([&](HostObject& host) { text = host.LastErrorDescription(); });
  return failure ? *failure : text;
}

void IndexedHostPath::Open() {
  Run([this](HostObject& host) { host.IO().InitializeDevice(state().DevIdx); });
}

void IndexedHostPath::Close() {
  Run([this](HostObject& host) { host.IO().CloseDevice(state().DevIdx); });
}

void IndexedHostPath::Write(std::string_view command, std::string_view terminator, std::int16_t extra) {
  std::string text(command);
  std::int16_t code = WriteTerminatorCode(terminator);
  if (code == kWriteNothing) text += terminator;
  Run([&](HostObject& host) { host.IO().WriteCommand(state().DevIdx, text, code, extra); });
}

void IndexedHostPath::SetTimeout(std::int32_t milliseconds) {
  Run([&](HostObject& host) { host.IO().SetIOTimeout(state().DevIdx, milliseconds); });
}

std::optional<std::int32_t> IndexedHostPath::FlushInput() {
  Run([this](HostObject& host) { host.IO().FlushInQ(state().DevIdx); });
  return 0;
}

void IndexedHostPath::ActivateInterpreter() { Open(); }

void IndexedHostPath::Read(HostObject& host, HostRead& read) {
  std::int16_t zero = 0;
  host.IO().Read(state().DevIdx, read.binary, zero, read.terminator, read.count, read.answer, read.buffer);
}

void SingleHostPath::Open() {
  Run([](HostObject& host) { host.OpenDevice(); });
}

void SingleHostPath::Close() {
  Run([](HostObject& host) { host.CloseDevice(); });
}

void SingleHostPath::Write(std::string_view command, std::string_view terminator, std::int16_t) {
  message_.assign(command).append(terminator);
  Run([this](HostObject& host) { host.WriteCommand(message_); });
}

std::optional<std::int32_t> SingleHostPath::FlushInput() {
  std::int32_t count = 0;
  return Run([&](HostObject& host) { host.FlushInQ(count); }) ? count : 0;
}

void SingleHostPath::Read(HostObject& host, HostRead& read) {
  host.Read(read.binary, read.terminator, read.count, read.answer, read.buffer);
}

}  // namespace kolvane::device
