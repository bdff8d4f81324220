#include "component/ini_text.h"

#include <algorithm>
#include <functional>

#include "base/text.h"
#include "component/ini_value.h"

namespace kolvane::component {

bool IniLines::Next(IniLine& line) {
  if (at_ >= bytes_.size()) return false;
  std::size_t end = at_;
  while (end < bytes_.size() && bytes_[end] != '\n' && bytes_[end] != '\r') ++end;
  line = {.begin = at_, .next = After(end), .section = section_, .key = {}, .value = {}};
  ParseLine(base::TrimWhiteSpace(bytes_.substr(at_, end - at_)), line);
  at_ = line.next;
  return true;
}

std::size_t IniLines::After(std::size_t end) const {
  if (bytes_.substr(end, 2) == "\r\n") return end + 2;
  return std::min(end + 1, bytes_.size());
}

void IniLines::ParseLine(std::string_view text, IniLine& line) {
  if (text.starts_with('[')) {
    text.remove_prefix(1);
    line.section = section_ = base::TrimWhiteSpace(text.substr(0, text.find(']')));
    line.is_section = true;
  } else if (const std::size_t equals = text.find('='); !text.starts_with(';') && equals != text.npos) {
    line.key = base::TrimWhiteSpace(text.substr(0, equals));
    line.value = text.substr(equals + 1);
  }
}

namespace {

struct Edit {
  std::size_t begin;
  std::size_t end;  // equal: new lines
  std::string text;
};

constexpr std::size_t kNowhere = std::string::npos;

// A section to change.
struct Section {
  std::map<std::string, std::size_t, std::less<>> last;  // index of each key's last edit
  std::size_t end = kNowhere;                            // after its last key
};

// Collects the edits that put the entries into the file.
class Editor {
 public:
  Editor(std::string_view bytes, const IniEntries& entries) : bytes_(bytes), entries_(entries) {
    for (const auto& [path, text] : entries) sections_[path.first].last[path.second] = kNowhere;
    const std::size_t end = bytes.find('\n');
    if (end != bytes.npos && end > 0 && bytes[end - 1] == '\r') line_end_ = "\r\n";
  }

  std::string Run() {
    IniLine line;
    for (IniLines lines(bytes_); lines.Next(line);) Note(line);
    std::map<std::string, std::string> added;
    for (const auto& [path, text] : entries_) {
      const std::size_t last = sections_[path.first].last[path.second];
      if (last != kNowhere)
        Change(edits_[last], path.second, text);
      else
        added[path.first] += LineOf(path.second, text);
    }
    return Apply(added);
  }

 private:
  std::string LineOf(const std::string& key, const std::string& text) const {
    return key + "=" + EncodeIniValue(text) + line_end_;
  }

  // All lines of a changed key are removed; the last one is replaced by the new text.
  void Note(const IniLine& line) {
    const auto section = sections_.find(line.section);
    if (section == sections_.end() || (!line.is_section && line.key.empty())) return;
    section->second.end = line.next;
    const auto last = section->second.last.find(line.key);
    if (line.is_section || last == section->second.last.end()) return;
    last->second = edits_.size();
    edits_.push_back({line.begin, line.next, ""});
  }

  // A line that already has this value stays as written.
  void Change(Edit& edit, const std::string& key, const std::string& text) const {
    IniLine old;
    const std::string_view bytes = bytes_.substr(edit.begin, edit.end - edit.begin);
    const bool same = IniLines(bytes).Next(old) && DecodeIniValue(old.value) == text;
    edit.text = same ? std::string(bytes) : LineOf(key, text);
  }

  std::string Apply(const std::map<std::string, std::string>& added) {
    for (const auto& [section, lines] : added) {
      if (const std::size_t end = sections_[section].end; end != kNowhere)
        edits_.push_back({end, end, lines});
    }
    std::stable_sort(edits_.begin(), edits_.end(),
                     [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
    std::string out;
    std::size_t at = 0;
    for (const Edit& edit : edits_) {
      out.append(bytes_.substr(at, edit.begin - at));
      if (edit.begin == edit.end) EndLine(out);
      out.append(edit.text);
      at = edit.end;
    }
    out.append(bytes_.substr(at));
    for (const auto& [section, lines] : added) {
      if (sections_[section].end == kNowhere) AddSection(out, section, lines);
    }
    return out;
  }

  void AddSection(std::string& out, const std::string& section, const std::string& lines) const {
    EndLine(out);
    if (!out.empty() && out != kUtf8Mark) out += line_end_;
    out += "[" + section + "]" + line_end_ + lines;
  }

  // A file's last line may have no line end.
  void EndLine(std::string& out) const {
    if (!out.empty() && out != kUtf8Mark && out.back() != '\n' && out.back() != '\r') out += line_end_;
  }

  std::string_view bytes_;
  const IniEntries& entries_;
  std::string line_end_ = "\n";
  std::map<std::string, Section, std::less<>> sections_;
  std::vector<Edit> edits_;
};

}  // namespace

IniText::IniText(std::string bytes) : bytes_(std::move(bytes)) {
  IniLine line;
  for (IniLines lines(bytes_); lines.Next(line);) {
    if (!line.key.empty()) sections_[line.section].push_back({line.key, line.value});
  }
}

std::optional<std::string> IniText::Find(const std::string& section, const std::string& key) const {
  const auto found = sections_.find(section);
  if (found == sections_.end()) return std::nullopt;
  const auto& entries = found->second;
  const auto last =
      std::find_if(entries.rbegin(), entries.rend(), [&](const Entry& e) { return e.key == key; });
  if (last == entries.rend()) return std::nullopt;
  return DecodeIniValue(last->value);
}

std::string WithIniEntries(std::string_view bytes, const IniEntries& entries) {
  return Editor(bytes, entries).Run();
}

}  // namespace kolvane::component
