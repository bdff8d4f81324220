// Numbers as typed, stored and sent.
#include "base/number.h"

#include <cmath>
#include <limits>
#include <optional>

#include "base/runtime_error.h"
#include "device/connection_form.h"
#include "device/test_answer.h"
#include "fuzz/require.h"
#include "fuzz/utf8.h"
#include "terminal/receive_controls.h"

namespace kolvane::fuzz {
namespace {

template <typename Convert>
auto OrNullopt(Convert convert) -> std::optional<decltype(convert())> {
  try {
    return convert();
  } catch (const base::RuntimeError&) {
    return std::nullopt;
  }
}

void CheckConversions(std::string_view text) {
  const auto whole = base::WholeTextNumber(text);
  const auto small = OrNullopt([&] { return base::TextToInt16(text); });
  const auto large = OrNullopt([&] { return base::TextToInt32(text); });
  Require(!std::isnan(base::LeadingNumber(text)) && !std::isnan(base::LeadingTypedNumber(text)));
  Require(!large || whole);
  Require(!small || (large && *small == *large));
  Require(!whole || large || std::abs(*whole) > std::numeric_limits<std::int32_t>::max());
  Require(!whole || *whole == base::LeadingTypedNumber(text));
}

void CheckTexts(double value) {
  if (!std::isfinite(value)) return;
  const std::string text = base::DoubleText(value, ",");
  const auto back = base::WholeTextNumber(text);
  Require(back && (*back == value || std::abs(*back - value) <= 1e-14 * std::abs(value)));
  Require(base::LeadingNumber(base::DoubleText(value, ".")) == *back);
}

void CheckEntries(std::string_view text) {
  Require(device::TypedInt16(text) == 0 || device::TypedInt32(text) != 0);
  Require(device::TypedReceiveBuffer(text) >= 512);
  Require(device::TypedDialTimeout(text) >= 10);
  Require(device::Rs232Timeout(text) >= 0);
  device::TypedByte(text);
  device::TypedIpPort(text);
  device::ParallelTimeout(text);
  device::TcpIpTimeout(text);
  device::GpibTimeout(text);
}

void CheckTerminators(std::string_view text) {
  const auto terminator = OrNullopt([&] { return terminal::ReceiveTerminator(text); });
  if (terminator && *terminator) {
    Require(IsUtf8(**terminator) && Characters(**terminator) <= 2);
    Require(terminal::SendTerminator(text) == **terminator);
  } else if (terminator) {
    Require(terminal::SendTerminator(text) == text);
  }
  const std::int16_t ends = device::ReadTerminatorCode(text);
  Require(ends >= 0 && ends <= 255);
  const std::int16_t written = device::WriteTerminatorCode(text);
  Require(written >= -1 && written <= 255);
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  kolvane::fuzz::CheckConversions(text);
  kolvane::fuzz::CheckTexts(kolvane::base::LeadingTypedNumber(text));
  kolvane::fuzz::CheckEntries(text);
  kolvane::fuzz::CheckTerminators(text);
  return 0;
}
