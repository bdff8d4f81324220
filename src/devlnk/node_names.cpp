#include "devlnk/node_names.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "base/descriptor.h"
#include "base/encoding.h"
#include "base/system.h"
#include "base/text.h"

namespace kolvane::devlnk {
namespace {

constexpr std::size_t kReadLimit = std::size_t{64} << 10;

std::string_view Unquote(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

bool IsRegularFile(int fd) {
  struct stat status {};
  return fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

std::filesystem::path PortsFile() {
  const std::filesystem::path folder = base::UserConfigFolder();
  return folder.empty() ? folder : folder / "ports.ini";
}

std::string_view FindPort(std::string_view text, std::string_view key) {
  if (text.starts_with(base::kUtf8Mark)) text.remove_prefix(base::kUtf8Mark.size());
  std::string_view found;
  bool in_section = false;
  while (!text.empty()) {
    const std::string_view line = base::TrimWhiteSpace(base::TakeLine(text));
    if (line.starts_with('[')) in_section = base::EqualsNoCase(line, kPortsSection);
    const std::size_t sign = line.find('=');
    if (!in_section || sign == std::string_view::npos) continue;
    const std::string_view value = Unquote(base::TrimWhiteSpace(line.substr(sign + 1)));
    if (base::EqualsNoCase(base::TrimWhiteSpace(line.substr(0, sign)), key) &&
        std::ranges::none_of(value, base::IsAsciiControl))
      found = value;
  }
  return found;
}

std::string ReadPortsFile() {
  // O_NONBLOCK: do not wait for a writer if the path names a pipe.
  const base::Descriptor file(open(PortsFile().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file || !IsRegularFile(file.get())) return {};
  std::string text(kReadLimit, '\0');
  std::size_t size = 0;
  while (size < kReadLimit) {
    const ssize_t got =
        base::Uninterrupted([&] { return read(file.get(), text.data() + size, kReadLimit - size); });
    if (got <= 0) break;
    size += static_cast<std::size_t>(got);
  }
  // A line cut by the limit might name another node.
  text.resize(size < kReadLimit ? size : text.rfind('\n') + 1);
  return text;
}

namespace {

struct Row {
  std::string_view name;
  const char* variable;
  std::string_view node;
};

constexpr Row kRows[] = {
    {"COM1", "KOLVANE_COM1", "/dev/ttyS0"},
    {"COM2", "KOLVANE_COM2", "/dev/ttyS1"},
    {"LPT1", "KOLVANE_LPT1", "/dev/parport0"},
    {"LPT2", "KOLVANE_LPT2", "/dev/parport1"},
    {"GPIB", "KOLVANE_GPIB", "0"},
};

const Row* FindRow(std::string_view name) {
  for (const Row& row : kRows) {
    if (row.name == name) return &row;
  }
  return nullptr;
}

std::string FixedNodeOf(const Row& row) {
  const char* value = std::getenv(row.variable);
  return value == nullptr ? std::string() : value;
}

std::string NodeOf(const Row& row) {
  std::string fixed = FixedNodeOf(row);
  if (!fixed.empty()) return fixed;
  const std::string file = ReadPortsFile();
  const std::string_view node = FindPort(file, row.name);
  return std::string(node.empty() ? row.node : node);
}

}  // namespace

std::string FixedNode(std::string_view name) {
  const Row* row = FindRow(name);
  return row == nullptr ? std::string() : FixedNodeOf(*row);
}

std::string NodeFor(std::string_view name) {
  const Row* row = FindRow(name);
  return row == nullptr ? std::string() : NodeOf(*row);
}

std::string_view DefaultNode(std::string_view name) {
  const Row* row = FindRow(name);
  return row == nullptr ? std::string_view() : row->node;
}

}  // namespace kolvane::devlnk
