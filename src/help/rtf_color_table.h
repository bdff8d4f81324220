#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "help/rtf_words.h"

namespace kolvane::help {

/// Collects the colour table, at most kMost entries. One that names no component is the pane's own colour.
class RtfColorTable {
 public:
  static constexpr std::size_t kMost = 256;

  /// Components outside 0 to 255 are held there.
  void Apply(RtfMeaning meaning, std::int32_t parameter);
  /// A ";" ends the entry.
  void AddText(std::string_view text);
  /// 0xBBGGRR; nothing for the pane's own colour and for an index that the table lacks.
  std::optional<std::uint32_t> At(std::int32_t index) const;

 private:
  void SetComponent(unsigned shift, std::int32_t value);

  std::vector<std::optional<std::uint32_t>> colors_;
  std::optional<std::uint32_t> entry_;
};

}  // namespace kolvane::help
