#include "host_device.h"

#include <stdexcept>

namespace host {
namespace {

using kolvane::Variant;

// A device that this host reaches over TCP/IP; the terminal shows it as such.
constexpr std::int16_t kTcpIp = 100;
constexpr char kAddress[] = "192.0.2.1";
constexpr int kTimedOut = -7;

// `text` as a literal in source code: "MSV?\r\n".
std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
  return quoted + '"';
}

template <typename... Numbers>
std::string List(Numbers... numbers) {
  std::string list;
  ((list += (list.empty() ? "" : ", ") + std::to_string(numbers)), ...);
  return list;
}

// Throws for an unknown index: OpenTerminal passes it on while the terminal opens; later the command fails.
Instrument& At(Bench& bench, std::int16_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= bench.instruments.size())
    throw std::out_of_range("Kein Gerät mit dem Index " + std::to_string(index));
  return bench.instruments[static_cast<std::size_t>(index)];
}

Variant Property(int number) {
  switch (number) {
    case 2:
      return kTcpIp;
    case 3:
      return std::int32_t{9600};
    case 5:
      return std::int16_t{8};
    case 6:
      return std::int16_t{1};
    case 9:
      return kAddress;
    default:
      return std::int16_t{0};
  }
}

std::string WithoutLineEnd(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text;
}

}  // namespace

void Bench::Line(const std::string& call) const { std::fprintf(trace, "%s\n", call.c_str()); }

void Bench::Fail(int code, const std::string& why) {
  error = code;
  description = why;
}

void Bench::Read(Instrument& instrument, bool binary, int terminator, std::int32_t count, Variant& answer,
                 Variant& buffer) {
  const auto given = instrument.Give(binary ? 0 : terminator, static_cast<std::size_t>(count));
  if (!given) return Fail(kTimedOut, "Zeitüberschreitung");
  Line("  gives " + Quoted(*given));
  if (binary) {
    buffer = kolvane::Bytes(given->begin(), given->end());
  } else {
    answer = *given;
  }
}

void Io::InitializeDevice(std::int16_t& DevIdx) { bench_.Line("IO.InitializeDevice(" + List(DevIdx) + ")"); }

void Io::CloseDevice(std::int16_t& DevIdx) { bench_.Line("IO.CloseDevice(" + List(DevIdx) + ")"); }

void Io::WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                      std::int16_t& Extra) {
  bench_.Line("IO.WriteCommand(" + List(DevIdx) + ", " + Quoted(Command) + ", " + List(Terminator, Extra) +
              ")");
  At(bench_, DevIdx).Take(Command);
}

void Io::Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
              std::int32_t& Count, Variant& Answer, Variant& Buffer) {
  bench_.Line("IO.Read(" + List(DevIdx, Binary, Zero, Terminator, Count) + ")");
  bench_.Read(At(bench_, DevIdx), Binary != 0, Terminator, Count, Answer, Buffer);
}

void Io::SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds) {
  bench_.Line("IO.SetIOTimeout(" + List(DevIdx, Milliseconds) + ")");
}

void Io::FlushInQ(std::int16_t& DevIdx) {
  bench_.Line("IO.FlushInQ(" + List(DevIdx) + ")");
  At(bench_, DevIdx).Discard();
}

void Io::GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, Variant& Value) {
  bench_.Line("IO.GetDeviceProperty(" + List(DevIdx, Number) + ")");
  At(bench_, DevIdx);
  Value = Property(Number);
}

HostDevice::HostDevice(std::FILE* trace, const std::function<void()>& bye)
    : bench_{trace, {{"INSTRUMENT A", bye}, {"INSTRUMENT B", bye}}, 0, {}} {}

void HostDevice::OpenDevice() { bench_.Line("OpenDevice()"); }

void HostDevice::CloseDevice() { bench_.Line("CloseDevice()"); }

void HostDevice::WriteCommand(const std::string& Command) {
  bench_.Line("WriteCommand(" + Quoted(Command) + ")");
  bench_.instruments.front().Take(WithoutLineEnd(Command));
}

void HostDevice::Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, Variant& Answer,
                      Variant& Buffer) {
  bench_.Line("Read(" + List(Binary, Terminator, Count) + ")");
  bench_.Read(bench_.instruments.front(), Binary != 0, Terminator, Count, Answer, Buffer);
}

void HostDevice::FlushInQ(std::int32_t& Count) {
  Count = static_cast<std::int32_t>(bench_.instruments.front().Discard());
  bench_.Line("FlushInQ()");
}

void HostDevice::GetDeviceInfo(Variant& Kind, Variant& Address) {
  bench_.Line("GetDeviceInfo()");
  Kind = kTcpIp;
  Address = kAddress;
}

Variant HostDevice::LastError() {
  bench_.Line("LastError is " + List(bench_.error));
  return std::int32_t{bench_.error};
}

void HostDevice::SetLastError(std::int16_t Code) {
  bench_.Line("SetLastError(" + List(Code) + ")");
  bench_.Fail(Code, "");
}

std::string HostDevice::LastErrorDescription() {
  bench_.Line("LastErrorDescription is " + Quoted(bench_.description));
  return bench_.description;
}

}  // namespace host
