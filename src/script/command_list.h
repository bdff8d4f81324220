#pragma once

#include <array>
#include <string>

namespace kolvane::script {

/// Rows of a command list, numbered from 1.
inline constexpr int kListRows = 1024;

/// The texts of a command list's rows, UTF-8.
class CommandList {
 public:
  const std::string& Text(int row) const { return rows_.at(static_cast<std::size_t>(row - 1)); }
  void SetText(int row, std::string text) { rows_.at(static_cast<std::size_t>(row - 1)) = std::move(text); }

 private:
  std::array<std::string, kListRows> rows_;
};

}  // namespace kolvane::script
