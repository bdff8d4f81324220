#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::inspect {

/// The forms in which bytes are copied.
enum class CopyForm { kHex, kC, kPython, kBase64, kDump, kText };

/// The bytes in that form, UTF-8, lines ended by LF but for the last. `offset` is that of the first byte in
/// the dump.
std::string CopyText(CopyForm form, std::string_view bytes, std::size_t offset);

/// What to search for, typed: text between quotation marks is looked for as Windows-1252, pairs of
/// hexadecimal digits (spaces between them) as bytes, anything else as text. Nothing where nothing was typed,
/// or a character that the code page lacks.
std::optional<std::string> SearchBytes(std::string_view typed);

/// The offset that was typed: "17", "&H11" or "0x11", "+4" and "-4" from `at` on. Nothing where it is none;
/// it may lie outside the block.
std::optional<std::int64_t> TypedOffset(std::string_view typed, std::int64_t at);

}  // namespace kolvane::inspect
