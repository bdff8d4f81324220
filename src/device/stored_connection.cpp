#include "device/stored_connection.h"

#include <algorithm>
#include <array>
#include <string>

#include "device/number_entry.h"
#include "device/port_table.h"
#include "device/timeout_entry.h"

namespace kolvane::device {
namespace {

constexpr std::array<std::int32_t, 3> kRates = {9600, 19200, 38400};
constexpr std::array<const char*, 8> kGpibTimeouts = {"100 ms", "300 ms", "1 s",   "3 s",
                                                      "10 s",   "30 s",   "100 s", "300 s"};
constexpr std::array<const char*, 5> kLptTimeouts = {"3 s", "10 s", "30 s", "100 s", "300 s"};

// The entry of `list` that a stored index stands for; the nearest one for an index outside it.
template <typename List>
auto Entry(const List& list, std::int32_t index) {
  const auto last = static_cast<std::int32_t>(list.size()) - 1;
  return list[static_cast<std::size_t>(std::clamp(index, 0, last))];
}

void ApplySerial(ConnectionParameters& p) {
  p.baud = Entry(kRates, p.baud_index);
  p.timeout_ms = Rs232Timeout(std::to_string(p.timeout_entries.rs232_seconds));
}

}  // namespace

void ApplyStoredConnection(ConnectionParameters& p) {
  const PortKind* kind = PortKindOfOption(p.port_option);
  if (kind == nullptr) return;
  p.port_code = kind->code;
  p.data_bits = 8;
  p.stop_bits = 1;
  p.receive_buffer = 4096;
  switch (kind->page) {
    case ParameterPage::kRs232:
      ApplySerial(p);
      break;
    case ParameterPage::kGpib:
      p.timeout_ms = GpibTimeout(Entry(kGpibTimeouts, p.timeout_entries.gpib_index));
      break;
    case ParameterPage::kTcpIp:
      p.timeout_ms = TcpIpTimeout(std::to_string(p.timeout_entries.tcpip_seconds));
      break;
    case ParameterPage::kParallel:
      p.baud = BaudOfLptMode(p.lpt_mode);
      p.timeout_ms = ParallelTimeout(Entry(kLptTimeouts, p.timeout_entries.lpt_index));
      break;
  }
}

}  // namespace kolvane::device
