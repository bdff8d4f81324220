#include "device/form_pages.h"

#include "device/port_table.h"

namespace kolvane::device {
namespace {

using namespace form_page;

struct Row {
  int front;
  std::array<int, 3> disabled;  // besides the USB page; the front page stands for "none"
};

constexpr Row kSerialRow = {kRs232, {kRs232, kRs232, kRs232}};
constexpr Row kParallelRow = {kParallel, {kExtended, kGpib, kParallel}};

// By option button.
constexpr std::array<Row, 10> kRows = {{
    kSerialRow,
    kSerialRow,
    kSerialRow,
    kSerialRow,
    kParallelRow,
    kParallelRow,
    {kGpib, {kExtended, kParallel, kGpib}},
    {kOffline, {kExtended, kGpib, kParallel}},
    {kTcpIp, {kExtended, kGpib, kTcpIp}},
    {kUsb, {kUsb, kUsb, kUsb}},
}};

}  // namespace

void FormPages::ClickPort(std::int16_t option) {
  const PortKind* kind = PortKindOfOption(option);
  if (kind == nullptr) return;
  const Row& row = kRows[static_cast<std::size_t>(option)];
  const auto set = [this](int page, bool on) { enabled[static_cast<std::size_t>(page)] = on; };
  set(kUsb, false);
  for (const int page : row.disabled) set(page, false);
  set(kRs232, kind->page == ParameterPage::kRs232);
  if (row.front == kRs232) set(kExtended, true);
  set(row.front, true);
  front = row.front;
}

}  // namespace kolvane::device
