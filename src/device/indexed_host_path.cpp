#include "device/indexed_host_path.h"

#include "device/terminator_code.h"

namespace kolvane::device {

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

}  // namespace kolvane::device
