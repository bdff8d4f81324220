#pragma once

#include <string>

#include "pane/pane_store.h"
#include "pane/pane_text.h"

namespace kolvane::pane {

/// The pane as one string: "/" for a line break, "|" the caret, "[" and "]" the selection; "a[b|]/c".
inline std::string State(const PaneText& pane) {
  const PaneRange selection = pane.Selection();
  std::string out;
  for (std::size_t at = 0; at <= pane.Length(); ++at) {
    if (!selection.empty() && at == selection.begin) out += '[';
    if (at == pane.caret()) out += '|';
    if (!selection.empty() && at == selection.end) out += ']';
    if (at < pane.Length()) out += pane.store().Text(at, at + 1, "/");
  }
  return out;
}

/// The ranges of one colour: "0:/plain 255:red".
inline std::string Colors(const PaneText& pane) {
  std::string out;
  for (std::size_t at = 0; at < pane.Length();) {
    const ColorStretch stretch = StretchAt(pane.store(), at);
    if (!out.empty()) out += ' ';
    out += std::to_string(stretch.color) + ':' + pane.store().Text(stretch.begin, stretch.end, "/");
    at = stretch.end;
  }
  return out;
}

}  // namespace kolvane::pane
