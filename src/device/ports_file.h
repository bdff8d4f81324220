#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::device {

/// The keys of ports.ini, docs/formats/ports-ini.md.
inline constexpr std::array<std::string_view, 7> kPortSettings = {"COM1", "COM1_BAUD", "COM2", "COM2_BAUD",
                                                                  "LPT1", "LPT2",      "GPIB"};

/// One key with the user's value.
struct PortSetting {
  std::string name;
  std::string value = {};  ///< empty: the default
  bool fixed = false;      ///< given by an environment variable

  /// The rate of a serial line; else a node or board number.
  bool IsRate() const { return name.ends_with("_BAUD"); }
};

/// The settings, in the order of kPortSettings.
std::vector<PortSetting> LoadPortSettings();

/// `text`, a ports.ini, with that value; an empty value removes the key. All other lines stay unchanged.
std::string WithPortSetting(std::string_view text, std::string_view name, std::string_view value);

/// Writes the settings that are not fixed to the user's ports.ini, unless it has the same values already.
/// Returns 0 or an errno.
[[nodiscard]] int SavePortSettings(const std::vector<PortSetting>& settings);

}  // namespace kolvane::device
