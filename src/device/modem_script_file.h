#pragma once

#include <string>

namespace kolvane::device {

inline constexpr const char* kModemScriptFile = "MODEM.INI";

/// The dial script (UTF-8), its lines separated by CR LF, without the empty ones. No file is an empty script.
std::string LoadModemScript(const std::string& folder);

/// Writes the script, lines separated by CR LF, and one CR LF behind it; quiet where the file cannot be
/// written.
void SaveModemScript(const std::string& folder, const std::string& script);

}  // namespace kolvane::device
