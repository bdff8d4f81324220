#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/encoding.h"
#include "pane/pane_store.h"

namespace kolvane::pane {

/// Whether `text` can be one line without changes: ASCII, NUL included, but without CR and LF.
bool IsPlainLine(std::string_view text);

/// `text` as the pane stores it: CR LF, a lone CR and a lone LF each become one LF, and malformed UTF-8
/// becomes U+FFFD.
std::string ToPaneText(std::string_view text);

/// The code point that starts at `at` of well-formed text.
base::CodePoint DecodeAt(std::string_view text, std::size_t at);

/// The UTF-16 units in `text`, and the byte where unit `units` starts (inside a pair: the pair's start).
std::size_t Utf16Length(std::string_view text);
std::size_t ByteOfUnit(std::string_view text, std::size_t units);

/// End of the cluster that starts at `at`, and start of the one that ends at `end`: a character together with
/// the combining marks after it. The caret stands only between clusters.
std::size_t ClusterEnd(std::string_view text, std::size_t at);
std::size_t ClusterStart(std::string_view text, std::size_t end);

/// The caret position after or before `offset`; at either end of the text it stays.
std::size_t NextCharacter(const PaneStore& store, std::size_t offset);
std::size_t PreviousCharacter(const PaneStore& store, std::size_t offset);
/// Start of the next word, number or sign, and of the previous one; a line's end is also a stop.
std::size_t NextWord(const PaneStore& store, std::size_t offset);
std::size_t PreviousWord(const PaneStore& store, std::size_t offset);

/// The word, run of spaces or run of signs around `offset`, within its line.
PaneRange WordAround(const PaneStore& store, std::size_t offset);
/// The line with its break.
PaneRange LineAround(const PaneStore& store, std::size_t offset);

}  // namespace kolvane::pane
