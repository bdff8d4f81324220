#include "app/shell_typing.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/descriptor.h"
#include "base/encoding.h"
#include "base/files.h"
#include "base/system.h"
#include "base/text.h"

namespace kolvane::app {
namespace {

constexpr char kCtrlC = '\x03';
constexpr char kEscape = '\x1B';

// Commands may be confidential.
constexpr mode_t kMode = 0600;

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text.append(line).append(1, '\n');
  return text;
}

}  // namespace

bool HasGivenUp(std::string_view typed) {
  if (typed.find(kCtrlC) != typed.npos) return true;
  for (std::size_t at = typed.find(kEscape); at != typed.npos; at = typed.find(kEscape, at + 1)) {
    // Function keys and Alt combinations send more characters after Esc.
    if (at + 1 == typed.size() || static_cast<unsigned char>(typed[at + 1]) <= ' ') return true;
  }
  return false;
}

void TypeAhead::Append(std::string_view bytes) {
  if (begin_ > bytes_.size() / 2) {
    bytes_.erase(0, begin_);
    searched_ -= std::min(searched_, begin_);
    begin_ = 0;
  }
  bytes_ += bytes;
}

char TypeAhead::Take() { return bytes_[begin_++]; }

bool TypeAhead::HasGivenUp() {
  const std::size_t from = std::max(begin_, searched_);
  searched_ = bytes_.size();
  return app::HasGivenUp(std::string_view(bytes_).substr(from));
}

void TypeAhead::Clear() {
  bytes_.clear();
  begin_ = 0;
  searched_ = 0;
}

std::string CommonPrefix(const std::vector<std::string>& candidates) {
  if (candidates.empty()) return {};
  std::string_view common = candidates.front();
  for (const std::string& each : candidates) {
    const auto differs = std::ranges::mismatch(common, each);
    common = common.substr(0, static_cast<std::size_t>(differs.in1 - common.begin()));
  }
  return std::string(base::Utf8Prefix(candidates.front(), common.size()));
}

ShellHistory::ShellHistory(std::string file) : file_(std::move(file)) {
  std::string bytes;
  if (file_.empty() || base::ReadFile(file_, bytes) != 0) return;
  for (std::string_view rest = bytes; !rest.empty();) {
    if (const std::string_view line = base::TakeLine(rest); !line.empty()) lines_.emplace_back(line);
  }
  const bool long_file = lines_.size() >= 2 * kKept;
  if (lines_.size() > kKept) lines_.erase(lines_.begin(), lines_.end() - kKept);
  if (long_file) (void)base::ReplaceFile(file_, Joined(lines_));
}

std::string ShellHistory::UserFile() {
  const std::filesystem::path folder = base::UserStateFolder();
  return folder.empty() ? std::string() : (folder / "shell-history").string();
}

void ShellHistory::Add(std::string_view line) {
  if (line.find_first_not_of(' ') == line.npos || (!lines_.empty() && lines_.back() == line)) return;
  lines_.emplace_back(line);
  if (file_.empty()) return;
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(file_).parent_path(), ignored);
  const base::Descriptor file = base::OpenForAppending(file_, kMode);
  if (file) (void)base::AppendWhole(file.get(), lines_.back() + '\n');
}

std::vector<std::string> ShellHistory::StartingWith(std::string_view typed) const {
  std::vector<std::string> found;
  const auto add = [&](const std::string& text) {
    if (text.starts_with(typed) && text != typed && std::ranges::find(found, text) == found.end())
      found.push_back(text);
  };
  for (auto line = lines_.rbegin(); line != lines_.rend(); ++line) {
    add(line->substr(0, line->find(' ')));
    add(*line);
  }
  return found;
}

}  // namespace kolvane::app
