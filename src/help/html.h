#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::help {

/// The character that an entity stands for, by its name without '&' and ';' ("auml", "#228", "#xE4"); 0 for
/// one that is not known.
std::uint32_t EntityCharacter(std::string_view name);

/// One piece of an HTML text: a tag, or the text up to the next one.
struct HtmlPiece {
  bool is_tag = false;
  std::string_view name;  ///< of a tag, "/p" for an end, as written
  std::string_view text;  ///< of a tag what follows its name
};

/// Takes the next piece off the front of `html`; nothing at its end. Comments are skipped. Any bytes are
/// good enough: a tag that never ends is text.
std::optional<HtmlPiece> TakePiece(std::string_view& html);

/// The value of an attribute of a tag, entities resolved; empty where it is missing.
std::string Attribute(std::string_view tag_text, std::string_view name);

/// Text with its entities (&amp;, &auml;, &#228;, &#xE4; …) as characters; unknown ones stay.
std::string ResolveEntities(std::string_view text);

/// What a page says: its title, its key words (of the meta element "keywords") and its text, one space for
/// each run of white space.
struct PageText {
  std::string title;
  std::string key_words;
  std::string text;
};
PageText ReadPageText(std::string_view html);

/// The bytes as UTF-8: as they are where they are that already, from Windows-1252 otherwise.
std::string AsUtf8(std::string bytes);

}  // namespace kolvane::help
