#include "device/modem_script_file.h"

#include "device/folder_file.h"

namespace kolvane::device {

std::string LoadModemScript(const std::string& folder) {
  std::string script;
  const auto lines = ReadLines(FolderFile(folder, kModemScriptFile));
  if (!lines) return script;
  for (const std::string& line : *lines) {
    if (line.empty()) continue;
    if (!script.empty()) script += "\r\n";
    script += line;
  }
  return script;
}

void SaveModemScript(const std::string& folder, const std::string& script) {
  WriteLines(FolderFile(folder, kModemScriptFile), {script});
}

}  // namespace kolvane::device
