#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/utf8.h"

namespace kolvane::terminal {

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
/// the combining marks behind it. The caret stands between clusters only.
std::size_t ClusterEnd(std::string_view text, std::size_t at);
std::size_t ClusterBegin(std::string_view text, std::size_t end);

}  // namespace kolvane::terminal
