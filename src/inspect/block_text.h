#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::inspect {

/// The formats in which bytes are copied.
enum class CopyForm { kHex, kC, kPython, kBase64, kDump, kText };

/// The bytes in that format, UTF-8; lines end in LF, except the last. `offset` is that of the first byte in
/// the dump.
std::string CopyText(CopyForm form, std::string_view bytes, std::size_t offset);

/// The bytes to search for, as typed: text in quotation marks is encoded as Windows-1252, pairs of
/// hexadecimal digits (spaces between them) are bytes, anything else is text. No value if nothing was typed,
/// or for a character not in the code page.
std::optional<std::string> SearchBytes(std::string_view typed);

/// The offset as typed: "17", "&H11" or "0x11", or "+4" and "-4" relative to `at`. No value if it is invalid;
/// it may be outside the block.
std::optional<std::int64_t> TypedOffset(std::string_view typed, std::int64_t at);

}  // namespace kolvane::inspect
