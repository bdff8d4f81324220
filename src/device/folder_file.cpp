#include "device/folder_file.h"

#include <filesystem>
#include <system_error>

#include "base/codepage.h"
#include "base/folding.h"
#include "base/read_file.h"
#include "base/replace_file.h"
#include "base/take_line.h"

namespace kolvane::device {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLineEnd = "\r\n";

std::optional<std::string> ReadBytes(const std::string& path) {
  std::error_code error;
  std::string bytes;
  if (!fs::is_regular_file(path, error) || base::ReadFile(path, bytes) != 0) return std::nullopt;
  return bytes;
}

std::string BytesOf(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes.append(base::ToWindows1252(line)).append(kLineEnd);
  return bytes;
}

}  // namespace

std::string FolderFile(const std::string& folder, std::string_view name) {
  if (folder.empty()) return {};
  const fs::path exact = fs::path(folder) / name;
  std::error_code error;
  if (fs::exists(exact, error)) return exact;
  std::string found;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string other = entry->path().filename();
    if (base::EqualsNoCase(other, name) && (found.empty() || other < found)) found = other;
  }
  return found.empty() ? exact : fs::path(folder) / found;
}

std::string FirstFolderFile(const std::vector<std::string>& folders, std::string_view name) {
  for (const std::string& folder : folders) {
    const std::string file = FolderFile(folder, name);
    std::error_code error;
    if (fs::exists(file, error)) return file;
  }
  return folders.empty() ? std::string() : FolderFile(folders.front(), name);
}

std::optional<std::vector<std::string>> ReadLines(const std::string& path) {
  const std::optional<std::string> bytes = ReadBytes(path);
  if (!bytes) return std::nullopt;
  std::vector<std::string> lines;
  for (std::string_view rest = *bytes; !rest.empty();)
    lines.push_back(base::FromWindows1252(base::TakeLine(rest)));
  return lines;
}

void WriteLines(const std::string& path, const std::vector<std::string>& lines) {
  if (path.empty()) return;
  const std::string bytes = BytesOf(lines);
  // Most starts and most uses of the dialog change nothing, which spares the disk.
  if (ReadBytes(path) == bytes) return;
  [[maybe_unused]] const int error = base::ReplaceFile(path, bytes);
}

void CreateLines(const std::string& path, const std::vector<std::string>& lines) {
  [[maybe_unused]] const int error = base::CreateFile(path, BytesOf(lines));
}

}  // namespace kolvane::device
