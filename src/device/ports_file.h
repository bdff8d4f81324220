#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::device {

/// What ports.ini can say, docs/formats/ports-ini.md.
inline constexpr std::array<std::string_view, 7> kPortSettings = {"COM1", "COM1_BAUD", "COM2", "COM2_BAUD",
                                                                  "LPT1", "LPT2",      "GPIB"};

/// One of them as the user has set it.
struct PortSetting {
  std::string name;
  std::string value = {};  ///< empty: the default
  bool fixed = false;      ///< an environment variable gives it
};

/// The settings in the order of kPortSettings.
std::vector<PortSetting> LoadPortSettings();

/// `text`, a ports.ini, with that value; an empty one takes the key out. All other lines stay as they are.
std::string WithPortSetting(std::string_view text, std::string_view name, std::string_view value);

/// Writes those that are not fixed into the user's ports.ini, unless it says the same already. Returns 0 or
/// an errno.
[[nodiscard]] int SavePortSettings(const std::vector<PortSetting>& settings);

}  // namespace kolvane::device
