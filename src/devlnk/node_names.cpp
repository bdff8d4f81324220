#include "devlnk/node_names.h"

#include <cstdlib>

#include "devlnk/ports_ini.h"

namespace kolvane::devlnk {
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

std::string NodeOf(const Row& row) {
  const char* value = std::getenv(row.variable);
  if (value != nullptr && value[0] != '\0') return value;
  const std::string file = ReadPortsFile();
  const std::string_view node = FindPort(file, row.name);
  return std::string(node.empty() ? row.node : node);
}

}  // namespace

std::string NodeFor(std::string_view name) {
  const Row* row = FindRow(name);
  return row == nullptr ? std::string() : NodeOf(*row);
}

std::string_view DefaultNode(std::string_view name) {
  const Row* row = FindRow(name);
  return row == nullptr ? std::string_view() : row->node;
}

}  // namespace kolvane::devlnk
