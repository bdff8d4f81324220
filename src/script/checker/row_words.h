#pragma once

#include <string>
#include <string_view>

#include "script/special_line.h"

namespace kolvane::script::checker {

/// A row split as runner and interpreter do it. Holds views of its text, which must outlive this object.
struct RowParts {
  explicit RowParts(std::string_view text);

  bool IsComment() const { return line.starts_with('\''); }
  bool IsSpecial() const { return line.starts_with('$'); }
  /// Whether it is executed or sent.
  bool IsExecutable() const { return !line.empty() && !IsComment(); }

  std::string_view line;              ///< without the spaces around it
  const SpecialWord* word = nullptr;  ///< null if the row is not a known $ command
  // Of a row that begins with "$":
  std::string_view name;  ///< up to the first space or comma, as written
  bool has_argument = false;
  std::string_view argument;
  std::string_view rest;  ///< what is ignored, trimmed
};

/// What a row with an unknown $ command was probably meant to be.
struct WordProposal {
  const SpecialWord* word = nullptr;  ///< null: none is similar
  std::string row;                    ///< the whole row, corrected
};

WordProposal ProposeWord(const RowParts& parts);

/// Whether other languages use `name` for the second half of a condition.
bool IsElse(std::string_view name);

/// Whether one byte inserted, removed or replaced, or two neighbours swapped, turn one text into the other.
bool DifferByOneLetter(std::string_view a, std::string_view b);

}  // namespace kolvane::script::checker
