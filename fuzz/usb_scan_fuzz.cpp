// The buffer filled by a port library's scan for USB devices.
#include "device/attached_ports.h"

#include "device/fake_port_library.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/utf8.h"

/// The first byte is the number of slots that the library claims; each field is one of the lines after it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  constexpr std::size_t kField = 255;
  constexpr std::size_t kMaxSlots = 4;
  static device::FakePortLibrary library;
  library.calls.clear();
  fuzz::Input input(data, size);
  const std::size_t slots = input.Byte() % (kMaxSlots + 1);
  library.results["MaxUsbDevices"] = {static_cast<std::int32_t>(slots)};
  library.scan.clear();
  for (std::size_t field = 0; field < 2 * slots; ++field) {
    library.scan += input.Until('\n').substr(0, kField);
    library.scan.resize((field + 1) * kField, ' ');
  }
  device::DeviceState state;
  const auto found = device::ScanUsb(library, state);
  fuzz::Require(found.size() <= slots);
  for (const std::string& line : found) {
    fuzz::Require(fuzz::IsUtf8(line) && line.find('\0') == std::string::npos);
    fuzz::Require(!line.starts_with(" ") && line.find(" - ") != std::string::npos);
  }
  return 0;
}
