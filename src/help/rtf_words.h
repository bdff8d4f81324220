#pragma once

#include <string_view>

namespace kolvane::help {

enum class RtfMeaning {
  kUnknown,  ///< passed over, its group is read
  kSkip,     ///< the rest of its group is no text of the document
  kColorTable,
  kBold,
  kColor,
  kPlain,
  kParagraph,
  kInsert,  ///< stands for `text`
  kUnicode,
  kFallbackLength,
  kRed,
  kGreen,
  kBlue,
};

struct RtfWord {
  std::string_view name;
  RtfMeaning meaning = RtfMeaning::kUnknown;
  std::string_view text = {};  ///< UTF-8
};

/// What a control word means; names are case-sensitive.
RtfWord FindRtfWord(std::string_view name);

/// The same for the byte behind the backslash of a control symbol.
RtfWord FindRtfSymbol(std::string_view byte);

}  // namespace kolvane::help
