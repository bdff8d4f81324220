#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/inspector_state.h"
#include "inspect/template_run.h"

namespace kolvane::inspect {

/// What is shown after a decode: a value, or the lines of a template. What is missing stays as it was.
struct Decoded {
  std::optional<std::string> caption;
  std::optional<std::vector<std::string>> lines;
};

/// A template of more bytes is taken for one that cannot be opened.
inline constexpr std::size_t kLargestTemplate = std::size_t{16} << 20;

/// Reads the value at the caret in the format of the state's code and selects its bytes. `template_path` is
/// the file of codes from format::kTemplate on; one that cannot be opened gives no lines.
Decoded InspectBytePattern(const std::string& template_path, std::string_view decimal_sign, DumpView& view,
                           InspectorState& state);

}  // namespace kolvane::inspect
