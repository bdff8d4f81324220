#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::help {

/// The character of an entity, by its name without '&' and ';' ("auml", "#228", "#xE4"); 0 if it is unknown.
std::uint32_t EntityCharacter(std::string_view name);

/// One piece of an HTML text: a tag, or the text up to the next one.
struct HtmlPiece {
  bool is_tag = false;
  std::string_view name;  ///< of a tag, "/p" for an end tag, as written
  std::string_view text;  ///< of a tag: what follows its name
};

/// Takes the next piece from the start of `html`; no value at its end. Comments are skipped. Any bytes are
/// accepted: a tag that never ends is text.
std::optional<HtmlPiece> TakePiece(std::string_view& html);

/// The value of a tag's attribute, entities resolved; empty if it is missing.
std::string Attribute(std::string_view tag_text, std::string_view name);

/// Text with its entities (&amp;, &auml;, &#228;, &#xE4; …) resolved; unknown ones stay.
std::string ResolveEntities(std::string_view text);

/// The content of a page: its title, its key words (from the meta element "keywords") and its text, each run
/// of white space reduced to one space.
struct PageText {
  std::string title;
  std::string key_words;
  std::string text;
};
PageText ReadPageText(std::string_view html);

/// The bytes as UTF-8: if they are that already, only a byte order mark is stripped; else from Windows-1252.
std::string AsUtf8(std::string bytes);

}  // namespace kolvane::help
