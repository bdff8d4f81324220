#include "headless/transcript.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

#include "base/encoding.h"
#include "device/device_state.h"
#include "headless/texts.h"

namespace kolvane::headless {
namespace {

constexpr int kDecimals = 6;

std::string_view NameOf(Transcript::Way way) {
  switch (way) {
    case Transcript::Way::kOpen:
      return "open";
    case Transcript::Way::kOut:
      return "out";
    case Transcript::Way::kIn:
      return "in";
    case Transcript::Way::kClose:
      break;
  }
  return "close";
}

std::string SecondsText(double seconds) {
  std::array<char, 64> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed, kDecimals);
  return {text.data(), end.ptr};
}

constexpr std::int16_t kNoTerminator = 0;

}  // namespace

int Transcript::Open(const std::string& file, bool times) {
  name_ = file;
  times_ = times;
  file_ = base::OpenForAppending(file);
  return file_ ? 0 : errno;
}

int Transcript::Write(Way way, std::string_view bytes, const Moment& moment, std::int32_t status) {
  if (!file_) return 0;
  std::string line = "{";
  if (times_)
    line.append("\"t\":" + SecondsText(moment.seconds) + ",\"time\":\"" + base::UtcTimeText(moment.time_ms) +
                "\",");
  line.append("\"way\":\"").append(NameOf(way)).append("\",\"bytes\":\"");
  line.append(base::Base64(bytes)).append("\"");
  if (status != 0) line.append(",\"status\":" + std::to_string(status));
  line += "}\n";
  const int error = base::AppendWhole(file_.get(), line);
  if (error != 0) file_ = base::Descriptor();
  return error;
}

std::int32_t RecordedPort::OpenPort(std::int16_t port, std::int32_t baud, const std::string& text,
                                    std::int32_t data_bits, std::int16_t stop_bits,
                                    std::int16_t receive_buffer) {
  NoteClosed();
  const std::int32_t status = library_.OpenPort(port, baud, text, data_bits, stop_bits, receive_buffer);
  open_ = status >= 0;
  if (open_) Write(Transcript::Way::kOpen, {}, transcript_.Now());
  return status;
}

std::int32_t RecordedPort::WritePort(const std::string& text) {
  const Transcript::Moment before = transcript_.Now();
  const std::int32_t status = library_.WritePort(text);
  // For the library a NUL ends the text.
  if (status >= 0) Write(Transcript::Way::kOut, text.substr(0, text.find('\0')), before);
  return Checked(status);
}

// The library strips a lone terminator and does not return the number of bytes. So the buffer is filled with
// the terminator beforehand: the answer ends with the first one, whoever wrote it.
std::int32_t RecordedPort::ReadPort(char* buffer, std::int32_t count, std::int16_t terminator) {
  const auto size = static_cast<std::size_t>(std::max(count, 0));
  const char last = static_cast<char>(terminator);
  buffer_.assign(size + 1, last);
  const std::int32_t status = library_.ReadPort(buffer_.data(), count, terminator);
  if (status < 0) {
    WriteReceived();
    return Checked(status);
  }
  const std::size_t found = terminator == kNoTerminator ? size : std::min(buffer_.find(last), size);
  const bool pair = last == '\n' && found > 0 && found < size && buffer_[found - 1] == '\r';
  std::copy_n(buffer_.begin(), pair ? found + 1 : found, buffer);
  Receive(std::min(found + 1, size));
  // An answer read byte by byte becomes one line.
  if (count != 1 || library_.BytesWaiting() <= 0) WriteReceived();
  NoteLoss();
  return status;
}

std::int32_t RecordedPort::FlushInQueue() {
  const std::int32_t drained = Drain();
  const std::int32_t status = library_.FlushInQueue();
  NoteLoss();
  return status < 0 ? Checked(status) : status + drained;
}

std::int32_t RecordedPort::ClosePort() {
  NoteClosed();
  return library_.ClosePort();
}

std::int32_t RecordedPort::Checked(std::int32_t status) {
  if (open_ && lost_ == 0 && device::EndsConnection(status)) lost_ = status;
  NoteLoss();
  return status;
}

// Bytes that came before are still to be read.
void RecordedPort::NoteLoss() {
  if (lost_ != 0 && library_.BytesWaiting() <= 0) NoteClosed();
}

void RecordedPort::NoteClosed() {
  if (!open_) return;
  Drain();
  Write(Transcript::Way::kClose, {}, transcript_.Now(), std::exchange(lost_, 0));
  open_ = false;
}

std::int32_t RecordedPort::Drain() {
  const std::int32_t count = open_ ? library_.BytesWaiting() : 0;
  if (count <= 0) return 0;
  buffer_.assign(static_cast<std::size_t>(count) + 1, '\0');
  if (library_.ReadPort(buffer_.data(), count, kNoTerminator) < 0) return 0;
  Receive(static_cast<std::size_t>(count));
  WriteReceived();
  return count;
}

// A line has the time of its first bytes.
void RecordedPort::Receive(std::size_t count) {
  if (received_.empty()) received_at_ = transcript_.Now();
  received_.append(buffer_, 0, count);
}

void RecordedPort::WriteReceived() {
  if (const std::string received = std::exchange(received_, {}); !received.empty())
    Write(Transcript::Way::kIn, received, received_at_);
}

void RecordedPort::Write(Transcript::Way way, std::string_view bytes, const Transcript::Moment& moment,
                         std::int32_t status) {
  if (way != Transcript::Way::kIn) WriteReceived();
  if (const int error = transcript_.Write(way, bytes, moment, status))
    prompt_.ShowError(texts::TranscriptNotWritten(transcript_.file(), error));
}

device::PortLibrary* RecordedSource::Library() {
  device::PortLibrary* library = source_.Library();
  if (library != nullptr && port_ == nullptr)
    port_ = std::make_unique<RecordedPort>(*library, transcript_, prompt_);
  return library == nullptr ? nullptr : port_.get();
}

}  // namespace kolvane::headless
