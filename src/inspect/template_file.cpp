#include "inspect/template_file.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"
#include "inspect/byte_values.h"

namespace kolvane::inspect {
namespace {

constexpr std::string_view kByteCount = "BYTECOUNT=";
constexpr std::string_view kString = "STRING*";
constexpr std::int16_t kHighestBit = 14;

struct TypeRow {
  std::string_view word;
  FieldType type;
  std::int32_t length;
};

constexpr TypeRow kTypes[] = {{"BYTE", FieldType::kByte, 1},
                              {"SHORT", FieldType::kShort, 2},
                              {"LONG", FieldType::kLong, 4},
                              {"FLOAT", FieldType::kFloat, 4},
                              {"DOUBLE", FieldType::kDouble, 8}};

bool HasBits(FieldType type) {
  return type == FieldType::kByte || type == FieldType::kShort || type == FieldType::kLong;
}

constexpr std::string_view kSupplied[] = {"KVA-1-KOPF.BNS", "KVA-2-INT16.BNS", "KVA-3-FLOAT32.BNS"};

bool ComesFirst(const TemplateFile& a, const TemplateFile& b) {
  const std::string upper_a = base::UpperCase(a.name);
  const std::string upper_b = base::UpperCase(b.name);
  return upper_a == upper_b ? a.name < b.name : upper_a < upper_b;
}

std::vector<TemplateFile> TemplatesIn(const std::string& folder) {
  namespace fs = std::filesystem;
  std::vector<TemplateFile> files;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename();
    std::error_code type_error;
    if (base::ContainsNoCase(name, ".BNS") && entry->is_regular_file(type_error))
      files.push_back({name, entry->path()});
  }
  std::sort(files.begin(), files.end(), ComesFirst);
  return files;
}

bool Has(const std::vector<TemplateFile>& files, std::string_view name) {
  return std::ranges::any_of(
      files, [name](const TemplateFile& file) { return base::EqualsNoCase(file.name, name); });
}

}  // namespace

BitRange BitsFromTo(std::int16_t first, std::int16_t last) {
  int mask = 0;
  for (int bit = std::max<std::int16_t>(first, 0); bit <= std::min(last, kHighestBit); ++bit)
    mask |= 1 << bit;
  const auto bits = static_cast<std::int16_t>(mask);
  return {bits, last <= first ? bits : std::int16_t{1}};
}

std::optional<FieldLine> SplitFieldLine(std::string_view stripped) {
  FieldLine line;
  while (line.count < FieldLine::kMaxFields) {
    const std::size_t end = stripped.find(';');
    line.fields[line.count++] = stripped.substr(0, end);
    if (end == std::string_view::npos) break;
    stripped.remove_prefix(end + 1);
  }
  if (line.count < 2) return std::nullopt;
  return line;
}

std::optional<std::string_view> ByteCountText(std::string_view line, std::string_view stripped) {
  if (stripped.find('=') == std::string_view::npos) return std::nullopt;
  const std::size_t keyword = base::UpperCase(stripped).find(kByteCount);
  if (keyword == std::string::npos) return std::nullopt;
  return line.substr(std::min(keyword + kByteCount.size(), line.size()));
}

std::optional<std::string_view> StringLengthText(std::string_view type) {
  const std::size_t keyword = type.find(kString);
  if (keyword == std::string_view::npos) return std::nullopt;
  return type.substr(keyword + kString.size());
}

namespace {

std::optional<std::int32_t> Number32(std::string_view text) {
  return base::FitInt32(base::LeadingNumber(text));
}

std::optional<std::int16_t> Number16(std::string_view text) {
  return base::FitInt16(base::LeadingNumber(text));
}

// "&H10" is also a number; "abc" would count as 0, which is never intended.
bool HoldsNumber(std::string_view text) {
  text = base::TrimSpaces(text);
  return !text.empty() && std::string_view("0123456789+-.&").find(text.front()) != std::string_view::npos;
}

class Parser {
 public:
  void Line(std::string_view line) {
    ++line_;
    const std::string_view stripped = base::TrimSpaces(line);
    if (const auto count = ByteCountText(line, stripped)) {
      ReadCount(*count);
    } else if (const auto field = SplitFieldLine(stripped)) {
      ReadOffset(*field);
      const auto bits = ReadBits(*field);
      AddField(*field, bits);
    }
  }

  Template Take() { return std::move(template_); }

 private:
  using Kind = TemplateProblem::Kind;

  void ReadCount(std::string_view text) {
    Assign(byte_count_, Number32(text), Kind::kByteCount, text);
    template_.steps.emplace_back(ByteCount{byte_count_});
  }

  void ReadOffset(const FieldLine& line) {
    if (const auto text = line.Field(2)) Assign(offset_, Number32(*text), Kind::kOffset, *text);
  }

  std::optional<BitRange> ReadBits(const FieldLine& line) {
    const auto first = line.Field(3);
    if (!first) return std::nullopt;
    Assign(first_, Number16(*first), Kind::kBits, *first);
    if (const auto last = line.Field(4)) {
      Assign(last_, Number16(*last), Kind::kBits, *last);
    } else {
      last_ = first_;
    }
    return BitsFromTo(first_, last_);
  }

  void AddField(const FieldLine& line, const std::optional<BitRange>& bits) {
    TemplateField field{std::string(line.name()), FieldType::kByte, offset_, 0, {}};
    const auto* row = std::ranges::find_if(
        kTypes, [&](const TypeRow& each) { return base::EqualsNoCase(line.type(), each.word); });
    if (row != std::end(kTypes)) {
      field.type = row->type;
      field.length = row->length;
      if (HasBits(row->type)) field.bits = bits;
    } else if (const auto length = StringLengthText(line.type())) {
      Assign(string_length_, Number32(*length), Kind::kLength, *length);
      field.type = FieldType::kString;
      field.length = string_length_;
    } else {
      return AddProblem(Kind::kType, line.type());
    }
    Check(line, field);
    template_.steps.emplace_back(std::move(field));
  }

  void Check(const FieldLine& line, const TemplateField& field) {
    if (HasProblem()) return;
    const auto end = std::int64_t{field.offset} + field.length;
    if (field.offset < 0 || field.length < 0 || end > static_cast<std::int64_t>(ByteBuffer{}.size())) {
      AddProblem(Kind::kOutside, line.Field(2).value_or(line.type()));
    } else if (field.bits && field.bits->divisor == 0) {
      AddProblem(Kind::kBits, *line.Field(3));
    } else if (field.bits && std::max(first_, last_) > kHighestBit) {
      AddProblem(Kind::kHighBits, line.Field(4).value_or(*line.Field(3)));
    }
  }

  // A step that fails leaves its target as it was.
  template <typename Number>
  void Assign(Number& target, const std::optional<Number>& value, Kind kind, std::string_view text) {
    if (value) target = *value;
    if (!value || !HoldsNumber(text)) AddProblem(kind, text);
  }

  void AddProblem(Kind kind, std::string_view text) {
    template_.problems.push_back({line_, kind, std::string(text)});
  }
  bool HasProblem() const { return !template_.problems.empty() && template_.problems.back().line == line_; }

  Template template_;
  int line_ = 0;
  // Each keeps its value until a later line sets it.
  std::int32_t byte_count_ = 0;
  std::int32_t offset_ = 0;
  std::int32_t string_length_ = 0;
  std::int16_t first_ = 0;
  std::int16_t last_ = 0;
};

}  // namespace

Template ParseTemplate(std::string_view file) {
  std::string converted;
  if (file.starts_with(base::kUtf8Mark) && base::IsUtf8(file)) {
    converted = base::ToWindows1252(file.substr(base::kUtf8Mark.size()));
    file = converted;
  }
  Parser parser;
  while (!file.empty()) parser.Line(base::TakeLine(file));
  return parser.Take();
}

std::optional<std::size_t> Template::RecordLength() const {
  std::int32_t longest = 0;
  for (const auto& step : steps) {
    if (const auto* count = std::get_if<ByteCount>(&step)) longest = std::max(longest, count->bytes);
  }
  if (longest == 0) return std::nullopt;
  return static_cast<std::size_t>(longest);
}

std::vector<TemplateField> Template::Fields() const {
  std::vector<TemplateField> fields;
  for (const auto& step : steps) {
    if (const auto* field = std::get_if<TemplateField>(&step)) fields.push_back(*field);
  }
  return fields;
}

bool IsSupplied(std::string_view name) {
  return std::ranges::any_of(kSupplied,
                             [name](std::string_view own) { return base::EqualsNoCase(own, name); });
}

std::vector<TemplateFile> ListTemplates(const std::string& user_folder, const std::string& component_folder) {
  std::vector<TemplateFile> files = TemplatesIn(user_folder);
  std::vector<TemplateFile> others = TemplatesIn(component_folder);
  std::erase_if(others, [&files](const TemplateFile& file) { return Has(files, file.name); });
  std::stable_partition(others.begin(), others.end(),
                        [](const TemplateFile& file) { return !IsSupplied(file.name); });
  files.insert(files.end(), others.begin(), others.end());
  return files;
}

}  // namespace kolvane::inspect
