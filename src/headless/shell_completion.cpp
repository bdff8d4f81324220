#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/text.h"
#include "headless/shell.h"
#include "script/completion.h"

namespace kolvane::headless {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kRun = "$RUN ";

bool BeginsWith(std::string_view text, std::string_view begin) {
  return text.size() >= begin.size() && base::EqualsNoCase(text.substr(0, begin.size()), begin);
}

// Folders end with "/"; hidden files are offered only if the typed name starts with ".".
std::vector<std::string> Files(std::string_view typed) {
  const std::size_t slash = typed.rfind('/');
  const std::string_view folder = typed.substr(0, slash == typed.npos ? 0 : slash + 1);
  const std::string_view begin = typed.substr(folder.size());
  std::vector<std::string> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder.empty() ? "." : fs::path(folder), error), end;
       !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (!name.starts_with(begin) || (begin.empty() && name.starts_with('.'))) continue;
    std::error_code ignored;
    found.push_back(std::string(folder) + name + (entry->is_directory(ignored) ? "/" : ""));
  }
  std::ranges::sort(found);
  return found;
}

}  // namespace

std::vector<std::string> CompleteShellLine(std::string_view typed) {
  std::vector<std::string> found;
  for (const std::string_view with_file : {kRun, std::string_view("$OPENLOG ")}) {
    if (!BeginsWith(typed, with_file)) continue;
    const std::string word(typed.substr(0, with_file.size()));
    for (const std::string& file : Files(typed.substr(word.size()))) found.push_back(word + file);
    return found;
  }
  const script::CommandList none;
  for (const script::Completion& each : script::Completions(typed, none)) found.push_back(each.row);
  if (typed.starts_with('$') && BeginsWith(kRun, typed)) found.emplace_back(kRun);
  for (const std::string_view word : {"DCL", "RES", "STP", "*RST"})
    if (!typed.empty() && BeginsWith(word, typed)) found.emplace_back(word);
  return found;
}

}  // namespace kolvane::headless
