#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "help/rtf_words.h"

namespace kolvane::help {

/// Collects the font table. At most kMost fonts are kept, names of at most kLongestName bytes.
class RtfFontTable {
 public:
  static constexpr std::size_t kMost = 256;
  static constexpr std::size_t kLongestName = 64;

  void Apply(RtfMeaning meaning, std::int32_t parameter);
  /// UTF-8; a ";" ends the entry.
  void AddText(std::string_view text);
  std::map<int, std::string> Take() { return std::move(fonts_); }

 private:
  void Finish();

  std::map<int, std::string> fonts_;
  int number_ = 0;
  std::string name_;
};

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
