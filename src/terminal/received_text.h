#pragma once

#include <string>
#include <string_view>

namespace kolvane::terminal {

/// Takes off a text answer what does not belong to it: the blanks around it, then one NUL, then the
/// terminator (CR LF in any case; part of it where the device left only that).
void TrimAnswer(std::string& answer, std::string_view receive_terminator);

/// Appends received bytes as they are shown: the characters with these Windows-1252 codes or, with `binary`,
/// <0D> for each.
void AppendDisplayForm(std::string_view bytes, bool binary, std::string& text);

}  // namespace kolvane::terminal
