#include "help/rtf_words.h"

#include <algorithm>

namespace kolvane::help {
namespace {

using enum RtfMeaning;

constexpr RtfWord kWords[] = {
    {"annotation", kSkip},
    {"b", kBold},
    {"blue", kBlue},
    {"bullet", kInsert, "•"},
    {"cell", kInsert, "\t"},
    {"cf", kColor},
    {"colortbl", kColorTable},
    {"emdash", kInsert, "—"},
    {"endash", kInsert, "–"},
    {"filetbl", kSkip},
    {"fldinst", kSkip},
    {"fonttbl", kSkip},
    {"footer", kSkip},
    {"footerf", kSkip},
    {"footerl", kSkip},
    {"footerr", kSkip},
    {"footnote", kSkip},
    {"green", kGreen},
    {"header", kSkip},
    {"headerf", kSkip},
    {"headerl", kSkip},
    {"headerr", kSkip},
    {"info", kSkip},
    {"ldblquote", kInsert, "“"},
    {"line", kInsert, "\n"},
    {"listoverridetable", kSkip},
    {"listtable", kSkip},
    {"lquote", kInsert, "‘"},
    {"nonshppict", kSkip},
    {"object", kSkip},
    {"page", kParagraph},
    {"par", kParagraph},
    {"pict", kSkip},
    {"plain", kPlain},
    {"rdblquote", kInsert, "”"},
    {"red", kRed},
    {"revtbl", kSkip},
    {"row", kParagraph},
    {"rquote", kInsert, "’"},
    {"rsidtbl", kSkip},
    {"sect", kParagraph},
    {"stylesheet", kSkip},
    {"tab", kInsert, "\t"},
    {"tc", kSkip},
    {"u", kUnicode},
    {"uc", kFallbackLength},
    {"xe", kSkip},
};

// A line end behind a backslash is a \par.
constexpr RtfWord kSymbols[] = {
    {"\n", kParagraph},       {"\r", kParagraph},    {"*", kSkip},
    {"-", kInsert, "\u00AD"}, {"\\", kInsert, "\\"}, {"_", kInsert, "\u2011"},
    {"{", kInsert, "{"},      {"}", kInsert, "}"},   {"~", kInsert, "\u00A0"},
};

static_assert(std::ranges::is_sorted(kWords, {}, &RtfWord::name));

}  // namespace

RtfWord FindRtfWord(std::string_view name) {
  const auto found = std::ranges::lower_bound(kWords, name, {}, &RtfWord::name);
  return found != std::end(kWords) && found->name == name ? *found : RtfWord{name};
}

RtfWord FindRtfSymbol(std::string_view byte) {
  const auto found = std::ranges::find(kSymbols, byte, &RtfWord::name);
  return found != std::end(kSymbols) ? *found : RtfWord{byte};
}

}  // namespace kolvane::help
