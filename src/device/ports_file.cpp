#include "device/ports_file.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/files.h"
#include "base/text.h"
#include "devlnk/node_names.h"

namespace kolvane::device {
namespace {

namespace fs = std::filesystem;

int ReadPorts(const fs::path& file, std::string& text) {
  const int error = base::ReadFile(file.string(), text);
  return error == ENOENT ? 0 : error;
}

bool HasKey(std::string_view line, std::string_view name) {
  const std::size_t equals = line.find('=');
  return equals != line.npos && base::EqualsNoCase(base::TrimWhiteSpace(line.substr(0, equals)), name);
}

std::string_view TakeWholeLine(std::string_view& text) {
  const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
  const std::string_view line = text.substr(0, size);
  text.remove_prefix(size);
  return line;
}

// New lines end like the first one.
std::string_view LineEndOf(std::string_view text) {
  const std::size_t end = text.find('\n');
  return end != text.npos && text.substr(0, end).ends_with('\r') ? "\r\n" : "\n";
}

// Lets another line follow.
void EndLine(std::string& text, std::string_view line_end) {
  if (!text.empty() && text.back() != '\n') text += line_end;
}

}  // namespace

std::vector<PortSetting> LoadPortSettings() {
  std::string text;
  const bool readable = ReadPorts(devlnk::PortsFile(), text) == 0;
  std::vector<PortSetting> settings;
  for (const std::string_view name : kPortSettings) {
    PortSetting setting{std::string(name), devlnk::FixedNode(name)};
    setting.fixed = !setting.value.empty();
    if (!setting.fixed && readable) setting.value = devlnk::FindPort(text, name);
    settings.push_back(std::move(setting));
  }
  return settings;
}

std::string WithPortSetting(std::string_view text, std::string_view name, std::string_view value) {
  const std::string line_end(LineEndOf(text));
  std::string out;
  std::optional<std::size_t> at;  // of the key, else of the end of the section
  bool in_section = false;
  bool found = false;
  while (!text.empty()) {
    const std::string_view line = TakeWholeLine(text);
    const std::string_view content = base::TrimWhiteSpace(line);
    if (content.starts_with('[')) in_section = base::EqualsNoCase(content, devlnk::kPortsSection);
    const bool is_key = in_section && HasKey(content, name);
    if (!is_key) out += line;
    if (is_key || (in_section && !found && !content.empty())) at = out.size();
    found |= is_key;
  }
  if (value.empty()) return out;
  if (!at) {
    EndLine(out, line_end);
    out += std::string(devlnk::kPortsSection) + line_end;
    at = out.size();
  }
  if (*at == out.size()) {
    EndLine(out, line_end);
    at = out.size();
  }
  return out.insert(*at, std::string(name) + "=" + std::string(value) + line_end);
}

int SavePortSettings(const std::vector<PortSetting>& settings) {
  const fs::path file = devlnk::PortsFile();
  if (file.empty()) return ENOENT;
  std::error_code failure;
  fs::create_directories(file.parent_path(), failure);
  if (failure) return failure.value();
  const base::FolderLock lock(file.parent_path().string());
  std::string before;
  if (const int error = ReadPorts(file, before)) return error;
  std::string text = before;
  for (const PortSetting& setting : settings) {
    if (!setting.fixed && devlnk::FindPort(text, setting.name) != setting.value)
      text = WithPortSetting(text, setting.name, setting.value);
  }
  return text == before ? 0 : base::ReplaceFile(file.string(), text);
}

}  // namespace kolvane::device
