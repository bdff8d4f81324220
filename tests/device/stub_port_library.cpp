// A complete port library whose ReadPort hands over the calls it has seen; with KOLVANE_STUB_LACKS_READ it
// lacks that function, with KOLVANE_STUB_REFUSES_TIMEOUT it refuses time-outs, with KOLVANE_STUB_IS_PLAIN it
// lacks the optional functions.
#include <algorithm>
#include <string>

#include "devlnk/devlnk.h"

namespace {

std::string& Log() {
  static std::string log;
  return log;
}

template <typename... Numbers>
std::int32_t Note(const char* name, Numbers... numbers) {
  Log() += name;
  ((Log() += ' ' + std::to_string(numbers)), ...);
  Log() += ';';
  return static_cast<std::int32_t>(Log().size());
}

}  // namespace

int32_t QDX_OpenPort(int16_t port, int32_t baud, const char* text, int32_t data_bits, int16_t stop_bits,
                     int16_t receive_buffer) {
  return Note(("open " + std::string(text)).c_str(), port, baud, data_bits, stop_bits, receive_buffer);
}
int32_t QDX_SelectDevice(int16_t address) { return Note("select", address); }
#ifdef KOLVANE_STUB_REFUSES_TIMEOUT
int32_t QDX_SetTimeout(int32_t) { return -7; }
#else
int32_t QDX_SetTimeout(int32_t milliseconds) { return Note("timeout", milliseconds); }
#endif
int32_t QDX_SetGPIBCtrlBlock(int16_t eoi_on_write, int16_t stop_read_on_eos, int16_t eoi_with_eos,
                             int16_t eos_char, int16_t zero, int16_t repeat_addressing,
                             int32_t milliseconds) {
  return Note("gpib", eoi_on_write, stop_read_on_eos, eoi_with_eos, eos_char, zero, repeat_addressing,
              milliseconds);
}
int32_t QDX_EnableNTPortIO(int16_t port) { return Note("enable", port); }
int32_t QDX_WritePort(const char* text) { return Note(text); }
#ifndef KOLVANE_STUB_LACKS_READ
int32_t QDX_ReadPort(char* buffer, int32_t count, int32_t* first, int32_t* second, int16_t terminator) {
  if (first == nullptr || second == nullptr) return -1;
  Note("read", count, terminator);
  *first = *second = count;
  std::copy_n(Log().begin(), std::min(Log().size(), static_cast<std::size_t>(count)), buffer);
  Log().clear();
  return count;
}
#endif
#ifndef KOLVANE_STUB_IS_PLAIN
int32_t QDX_SetNode(int16_t port, const char* node) {
  return Note(("node " + std::string(node)).c_str(), port);
}
#endif
int32_t QDX_FlushInQueue(void) { return Note("flush"); }
int32_t QDX_ActivateInterpreter(int16_t value) { return Note("activate", value); }
int32_t QDX_CloseInterpreterEx(int16_t port, int16_t value) { return Note("close interpreter", port, value); }
int32_t QDX_ClosePort(void) { return Note("close"); }
int32_t QDX_Delay(int32_t milliseconds) { return Note("delay", milliseconds); }
int32_t USB_GetMaxUsbDevice(void) { return Note("usb"); }
int32_t USB_ScanUsbDevice(int32_t slots, char* buffer) {
  buffer[0] = 'S';
  return Note("scan", slots);
}
