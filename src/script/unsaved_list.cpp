#include "script/unsaved_list.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

#include "base/encoding.h"
#include "base/files.h"
#include "base/text.h"

namespace kolvane::script {
namespace {

namespace fs = std::filesystem;

constexpr char kPrefix[] = "list-";
constexpr std::chrono::milliseconds kAtOnce{0};

// Returns 0 or an errno. A folder found before its owner has locked it would look abandoned, so it is created
// and locked under the lock of its parent folder.
int MakeFolder(const std::string& folder, std::optional<CopyFolder>& made) {
  std::error_code failure;
  fs::create_directories(folder, failure);
  if (failure) return failure.value();
  const base::FolderLock around(folder);
  if (!around.IsHeld()) return EBUSY;
  CopyFolder own{folder + "/" + kPrefix + "XXXXXX", nullptr};
  if (mkdtemp(own.path.data()) == nullptr) return errno;
  own.lock = std::make_unique<base::FolderLock>(own.path, kAtOnce);
  made = std::move(own);
  return 0;
}

// The full path; empty if the copy, which is UTF-8 and holds it in one line, cannot hold it.
std::string FullName(const std::string& name) {
  std::error_code failure;
  const std::string full = name.empty() ? name : fs::absolute(name, failure).string();
  return full.find_first_of("\r\n") == full.npos && base::IsUtf8(full) ? full : std::string();
}

// No value if the file cannot be read, an empty text if it does not exist.
std::optional<std::string> ReadText(const std::string& file, std::time_t& saved_at) {
  struct stat about {};
  std::string bytes;
  int error = stat(file.c_str(), &about) == 0 ? 0 : errno;
  if (error == 0) error = base::ReadFile(file, bytes);
  saved_at = about.st_mtime;
  if (error != 0 && error != ENOENT) return std::nullopt;
  return bytes;
}

std::optional<AbandonedCopy> ReadCopy(CopyFolder folder) {
  std::time_t saved_at = 0;
  const std::optional<std::string> text = ReadText(folder.File(), saved_at);
  if (!text) return std::nullopt;
  std::vector<std::string> lines = base::LinesOf(*text);
  if (lines.size() < 2 || !base::IsUtf8(*text)) {
    folder.Remove();
    return std::nullopt;
  }
  std::string name = std::move(lines.front());
  lines.erase(lines.begin());
  lines.resize(std::min<std::size_t>(lines.size(), kListRows));
  return AbandonedCopy(std::move(folder), std::move(name), std::move(lines), saved_at);
}

std::optional<CopyFolder> Claim(const fs::path& path) {
  if (!path.filename().string().starts_with(kPrefix)) return std::nullopt;
  auto lock = std::make_unique<base::FolderLock>(path.string(), kAtOnce);
  if (!lock->IsHeld()) return std::nullopt;
  return CopyFolder{path.string(), std::move(lock)};
}

}  // namespace

void CopyFolder::Remove() const {
  std::error_code ignored;
  fs::remove_all(path, ignored);
}

int UnsavedCopy::Update(const CommandList& list) {
  if (folder_.empty() || list.revision() == written_) return 0;
  if (list.modified() && list.LastUsedRow() > 0) return Write(list);
  if (own_) own_->Remove();
  own_.reset();
  written_ = list.revision();
  return 0;
}

int UnsavedCopy::Write(const CommandList& list) {
  std::error_code failure;
  if (own_ && !fs::exists(own_->path, failure)) own_.reset();
  if (!own_) {
    if (const int error = MakeFolder(folder_, own_)) return error;
  }
  std::string bytes = FullName(list.file_name()) + '\n';
  for (int row = 1; row <= list.LastUsedRow(); ++row) bytes += list.Text(row) + '\n';
  const int error = base::ReplaceFile(own_->File(), bytes);
  if (error == 0) written_ = list.revision();
  return error;
}

bool AbandonedCopy::Restore(CommandList& list) const {
  if (!list.ShowFile(name_, rows_, 0)) return false;
  list.MarkModified();
  return true;
}

std::vector<AbandonedCopy> AbandonedCopies(const std::string& folder) {
  std::vector<AbandonedCopy> copies;
  const base::FolderLock around(folder);
  if (folder.empty() || !around.IsHeld()) return copies;
  std::error_code failure;
  for (fs::directory_iterator entry(folder, failure); !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    std::optional<CopyFolder> left = Claim(entry->path());
    std::optional<AbandonedCopy> copy = left ? ReadCopy(*std::move(left)) : std::nullopt;
    if (copy) copies.push_back(*std::move(copy));
  }
  std::ranges::stable_sort(copies, std::greater(), &AbandonedCopy::saved_at);
  for (std::size_t old = kMaxAbandonedCopies; old < copies.size(); ++old) copies[old].Remove();
  if (copies.size() > kMaxAbandonedCopies) copies.erase(copies.begin() + kMaxAbandonedCopies, copies.end());
  return copies;
}

}  // namespace kolvane::script
