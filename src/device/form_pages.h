#pragma once

#include <array>
#include <cstdint>

namespace kolvane::device {

/// The pages of the connection dialog by their index.
namespace form_page {
inline constexpr int kRs232 = 0;
inline constexpr int kExtended = 1;
inline constexpr int kGpib = 2;
inline constexpr int kParallel = 3;
inline constexpr int kTcpIp = 4;
inline constexpr int kOffline = 5;
inline constexpr int kUsb = 6;
inline constexpr int kCount = 7;
}  // namespace form_page

/// Which page is in front and which can be reached. A choice of port kind changes only what it has to, so
/// what an earlier choice disabled may stay so.
struct FormPages {
  int front = form_page::kRs232;
  std::array<bool, form_page::kCount> enabled = {true, true, true, true, true, true, true};

  /// The page of the kind comes to the front; of the others those that the kind has no use for are disabled.
  /// The page "RS232" is enabled for the kinds that take parameters from it (COM, Offline, USB), "RS232
  /// erweitert" again for COM. A number that is not an option changes nothing.
  void ClickPort(std::int16_t option);
};

}  // namespace kolvane::device
