#pragma once

#include <array>
#include <string_view>

namespace kolvane::terminal {

/// Optional behaviour, off by default: turned on in the window by the menu mnuExtras, on the command line by
/// options.
struct Extras {
  bool queries_only = false;     ///< a command without "?" is not followed by a read
  bool listen = false;           ///< unasked bytes are shown as they arrive
  bool blocks = false;           ///< an answer that starts with "#" and a digit is read as a block
  bool device_words = true;      ///< DCL, RES and STP end an exchange
  bool reconnect = false;        ///< after a lost connection the next command connects first
  bool time_stamps = false;      ///< the time of each line is shown beside it
  bool log_time_stamps = false;  ///< each line of the log starts with its time
  bool utf8 = false;             ///< the device's bytes are UTF-8
};

/// A flag and the name under which it is saved.
struct ExtrasFlag {
  std::string_view name;
  bool Extras::*value;
};

inline constexpr std::array<ExtrasFlag, 8> kExtrasFlags = {{
    {"QueriesOnly", &Extras::queries_only},
    {"Listen", &Extras::listen},
    {"Blocks", &Extras::blocks},
    {"DeviceWords", &Extras::device_words},
    {"Reconnect", &Extras::reconnect},
    {"TimeStamps", &Extras::time_stamps},
    {"LogTimeStamps", &Extras::log_time_stamps},
    {"Utf8", &Extras::utf8},
}};

}  // namespace kolvane::terminal
