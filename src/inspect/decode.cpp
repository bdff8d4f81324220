#include "inspect/decode.h"

#include <filesystem>
#include <new>
#include <system_error>

#include "base/files.h"
#include "base/number.h"
#include "inspect/byte_values.h"

namespace kolvane::inspect {

FormatLayout ClickFormat(InspectorState& state, int option, int list_index) {
  state.format_code = option < format::kTemplate ? option : format::kTemplate + list_index;
  return {.lines_shown = state.format_code == format::kTemplate};
}

FormatLayout ClickTemplate(InspectorState& state, int list_index) {
  state.format_code = format::kTemplate + list_index;
  return {.lines_shown = state.format_code == format::kTemplate + 1};
}

namespace {

std::int32_t BytesOf(int format_code) {
  switch (format_code) {
    case format::kByte:
      return 1;
    case format::kShort:
      return 2;
    case format::kDouble:
      return 8;
    default:
      return 4;
  }
}

std::string ValueText(const InspectorState& state, std::string_view decimal_sign) {
  switch (state.format_code) {
    case format::kByte:
      return std::to_string(state.buffer[0]);
    case format::kShort:
      return std::to_string(*ShortAt(state.buffer, 0, state.network_order));
    case format::kLong:
      return std::to_string(*LongAt(state.buffer, 0, state.network_order));
    case format::kFloat:
      return base::SingleText(*FloatAt(state.buffer, 0, state.network_order), decimal_sign);
    default:
      return base::DoubleText(*DoubleAt(state.buffer, 0), decimal_sign);
  }
}

std::optional<std::string> ReadTemplate(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kLargestTemplate) return std::nullopt;
  std::string bytes;
  if (base::ReadFile(path, bytes) != 0) return std::nullopt;
  return bytes;
}

Decoded RunFile(const std::string& path, const NumberForm& form, DumpView& view, ByteBuffer& buffer) {
  Decoded decoded;
  decoded.lines.emplace();
  try {
    auto parsed = LoadTemplate(path);
    if (!parsed) return decoded;
    decoded.fields = RunTemplate(*parsed, form, view, buffer);
    decoded.problems = std::move(parsed->problems);
    for (const ResultLine& field : decoded.fields) decoded.lines->push_back(field.text);
  } catch (const std::bad_alloc&) {
    // A huge template must not end the program.
    decoded.fields.clear();
    decoded.lines->clear();
  }
  return decoded;
}

}  // namespace

std::optional<Template> LoadTemplate(const std::string& path) {
  const auto file = ReadTemplate(path);
  if (!file) return std::nullopt;
  return ParseTemplate(*file);
}

Decoded InspectBytePattern(const std::string& template_path, std::string_view decimal_sign, DumpView& view,
                           InspectorState& state) {
  view.selected = 0;
  const NumberForm form{state.network_order, decimal_sign};
  if (state.format_code >= format::kTemplate) return RunFile(template_path, form, view, state.buffer);
  [[maybe_unused]] const bool fitted = BuildByteBuf(BytesOf(state.format_code), view, state.buffer);
  Decoded decoded;
  decoded.caption = ValueText(state, decimal_sign);
  return decoded;
}

}  // namespace kolvane::inspect
