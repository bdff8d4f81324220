#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/byte_values.h"
#include "inspect/template_run.h"

namespace kolvane::inspect {

/// Values of the format code; a format template is kTemplate plus its place in the list.
namespace format {
inline constexpr int kByte = 0;
inline constexpr int kShort = 1;
inline constexpr int kLong = 2;
inline constexpr int kFloat = 3;
inline constexpr int kDouble = 4;
inline constexpr int kTemplate = 5;
}  // namespace format

/// What the inspector keeps from one decode, and one opening of its dialog, to the next.
struct InspectorState {
  int format_code = format::kByte;
  bool network_order = false;
  ByteBuffer buffer{};
};

/// What a choice of the format changes in the dialog; nothing is decoded by it.
struct FormatLayout {
  bool lines_shown = false;  ///< the list of a template's lines, for which the dump makes room
};

/// The option button `option` was clicked while the template list stood at `list_index` (-1: at none). The
/// lines are shown for the first template only.
FormatLayout ClickFormat(InspectorState& state, int option, int list_index);

/// A template was chosen. The lines are shown for the second template only.
FormatLayout ClickTemplate(InspectorState& state, int list_index);

/// What is shown after a decode: a value, or the lines of a template. What is missing stays as it was.
struct Decoded {
  std::optional<std::string> caption;
  std::optional<std::vector<std::string>> lines;
  std::vector<ResultLine> fields;  ///< with `lines`: which bytes each of them shows
  std::vector<TemplateProblem> problems;
};

/// A template's file; nothing where it cannot be opened.
std::optional<Template> LoadTemplate(const std::string& path);

/// A template of more bytes is taken for one that cannot be opened.
inline constexpr std::size_t kLargestTemplate = std::size_t{16} << 20;

/// Reads the value at the caret in the format of the state's code and selects its bytes. `template_path` is
/// the file of codes from format::kTemplate on; one that cannot be opened gives no lines.
Decoded InspectBytePattern(const std::string& template_path, std::string_view decimal_sign, DumpView& view,
                           InspectorState& state);

}  // namespace kolvane::inspect
