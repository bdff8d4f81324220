#include "devlnk/sysfs.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include "base/text.h"

namespace kolvane::devlnk::sysfs {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestValue = 4096;  // bytes

std::string FileStart(const fs::path& path) {
  std::string text(kLongestValue, '\0');
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return {};
  std::ifstream file(path, std::ios::binary);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(file.gcount()));
  return text;
}

fs::path UsbDeviceAbove(const fs::path& below, const fs::path& root) {
  std::error_code error;
  fs::path folder = fs::canonical(below, error);
  const fs::path top = fs::canonical(root, error);
  while (!error && folder != top && folder.has_relative_path()) {
    if (fs::exists(folder / "idVendor", error)) return folder;
    folder = folder.parent_path();
  }
  return {};
}

}  // namespace

std::string Root() {
  const char* named = std::getenv("KOLVANE_SYSFS");
  return named == nullptr || named[0] == '\0' ? "/sys" : named;
}

std::vector<fs::path> EntriesOf(const fs::path& folder, std::string_view prefix) {
  std::vector<fs::path> entries;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (entry->path().filename().string().starts_with(prefix)) entries.push_back(entry->path());
  }
  std::sort(entries.begin(), entries.end(), [](const fs::path& a, const fs::path& b) {
    const std::size_t left = a.native().size();
    const std::size_t right = b.native().size();
    return left != right ? left < right : a < b;
  });
  return entries;
}

std::string Attribute(const fs::path& path) {
  std::string text = FileStart(path);
  text.erase(std::min(text.find('\n'), text.size()));
  std::ranges::replace_if(text, base::IsAsciiControl, ' ');
  return std::string(base::TrimSpaces(text));
}

std::string NodeOf(const fs::path& entry) {
  constexpr std::string_view kKey = "DEVNAME=";
  const std::string text = "\n" + FileStart(entry / "uevent");
  const std::size_t at = text.find("\n" + std::string(kKey));
  if (at == std::string::npos) return "/dev/" + entry.filename().string();
  const std::size_t start = at + 1 + kKey.size();
  const std::string name = text.substr(start, text.find('\n', start) - start);
  return name.starts_with('/') ? name : "/dev/" + name;
}

// The link leads to the interface or port that the driver uses; without one the entry's own folder is taken.
fs::path UsbDeviceOf(const fs::path& entry, const fs::path& root) {
  const fs::path device = UsbDeviceAbove(entry / "device", root);
  return device.empty() ? UsbDeviceAbove(entry, root) : device;
}

std::string DescriptionOf(const fs::path& usb_device) {
  const std::string maker = Attribute(usb_device / "manufacturer");
  const std::string product = Attribute(usb_device / "product");
  if (maker.empty() || product.empty()) return maker + product;
  return product.starts_with(maker) ? product : maker + " " + product;
}

}  // namespace kolvane::devlnk::sysfs
