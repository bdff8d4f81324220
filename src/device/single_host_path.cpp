#include "device/single_host_path.h"

namespace kolvane::device {

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
