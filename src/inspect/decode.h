#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/byte_values.h"
#include "inspect/template_run.h"

namespace kolvane::inspect {

/// Values of the format code; a format template is kTemplate plus its index in the list.
namespace format {
inline constexpr int kByte = 0;
inline constexpr int kShort = 1;
inline constexpr int kLong = 2;
inline constexpr int kFloat = 3;
inline constexpr int kDouble = 4;
inline constexpr int kTemplate = 5;
}  // namespace format

/// What the inspector keeps between decodes, and between openings of its dialog.
struct InspectorState {
  int format_code = format::kByte;
  bool network_order = false;
  ByteBuffer buffer{};
};

/// What choosing a format changes in the dialog; nothing is decoded.
struct FormatLayout {
  bool lines_shown = false;  ///< the list of a template's lines, for which the dump makes room
};

/// The option button `option` was clicked while the template list was at `list_index` (-1: at none). The
/// lines are shown only for the first template.
FormatLayout ClickFormat(InspectorState& state, int option, int list_index);

/// A template was chosen. The lines are shown only for the second template.
FormatLayout ClickTemplate(InspectorState& state, int list_index);

/// What is shown after a decode: a value, or the lines of a template. A missing part stays as it was.
struct Decoded {
  std::optional<std::string> caption;
  std::optional<std::vector<std::string>> lines;
  std::vector<ResultLine> fields;  ///< with `lines`: the bytes that each of them shows
  std::vector<TemplateProblem> problems;
};

/// A template's file; no value if it cannot be opened.
std::optional<Template> LoadTemplate(const std::string& path);

/// A template with more bytes counts as one that cannot be opened.
inline constexpr std::size_t kLargestTemplate = std::size_t{16} << 20;

/// Reads the value at the caret in the format of the state's code and selects its bytes. `template_path` is
/// the file of codes from format::kTemplate on; one that cannot be opened gives no lines.
Decoded InspectBytePattern(const std::string& template_path, std::string_view decimal_sign, DumpView& view,
                           InspectorState& state);

}  // namespace kolvane::inspect
