#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/encoding.h"
#include "pane/matcher.h"
#include "pane/pane_store.h"

namespace kolvane::pane {

/// Whether `text` can stand in one line as it is: ASCII without CR and LF. Every other byte, NUL included,
/// may occur.
bool IsPlainLine(std::string_view text);

/// `text` as the pane keeps it: CR LF, a lone CR and a lone LF each become one LF, and what is no UTF-8
/// becomes U+FFFD.
std::string ToPaneText(std::string_view text);

/// The code point that begins at `at` of well-formed text.
base::CodePoint DecodeAt(std::string_view text, std::size_t at);

/// UTF-16 units that `text` takes, and the byte at which unit `units` begins (inside a pair: the pair's).
std::size_t Utf16Length(std::string_view text);
std::size_t ByteOfUnit(std::string_view text, std::size_t units);

/// End of the cluster that begins at `at`, and begin of the one that ends there: a character together with
/// the combining marks after it. The caret stands between clusters only.
std::size_t ClusterEnd(std::string_view text, std::size_t at);
std::size_t ClusterBegin(std::string_view text, std::size_t end);

/// Where the caret goes from `offset`; at either end of the text it stays.
std::size_t NextCharacter(const PaneStore& store, std::size_t offset);
std::size_t PreviousCharacter(const PaneStore& store, std::size_t offset);
/// Begin of the next word, number or sign, and of the one before; a line's end is a stop of its own.
std::size_t NextWord(const PaneStore& store, std::size_t offset);
std::size_t PreviousWord(const PaneStore& store, std::size_t offset);

/// The word, run of spaces or run of signs around `offset`, within its line.
PaneRange WordAround(const PaneStore& store, std::size_t offset);
/// The line with its break.
PaneRange LineAround(const PaneStore& store, std::size_t offset);

}  // namespace kolvane::pane
