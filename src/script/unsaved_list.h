#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/files.h"
#include "script/command_list.h"

/// Copies of lists that no command file holds, see docs/formats/unsaved-list.md.
namespace kolvane::script {

/// A window's own folder for its copy; no other window takes it while this object exists.
struct CopyFolder {
  std::string path;
  std::unique_ptr<base::FolderLock> lock;

  std::string File() const { return path + "/list"; }
  /// Removes the folder and its content.
  void Remove() const;
};

/// Keeps the copy of one list up to date. The copy outlives this object; on failure the old copy stays.
class UnsavedCopy {
 public:
  /// `folder` holds the copies of all windows and is created when needed; empty: no copy is kept.
  explicit UnsavedCopy(std::string folder) : folder_(std::move(folder)) {}

  /// Writes a modified list, removes the copy of any other; returns 0, or the errno of a failed write.
  int Update(const CommandList& list);

 private:
  int Write(const CommandList& list);

  std::string folder_;
  std::optional<CopyFolder> own_;
  std::uint64_t written_ = 0;  ///< the list's revision
};

/// A copy whose window no longer exists. While this object exists, no other window is offered the copy.
class AbandonedCopy {
 public:
  AbandonedCopy(CopyFolder folder, std::string name, std::vector<std::string> rows, std::time_t saved_at)
      : folder_(std::move(folder)), name_(std::move(name)), rows_(std::move(rows)), saved_at_(saved_at) {}

  const std::string& name() const { return name_; }  ///< of the list's file; empty: it had none
  std::size_t size() const { return rows_.size(); }
  std::time_t saved_at() const { return saved_at_; }

  /// Loads rows and name into `list`, marked as modified; returns false during a run.
  bool Restore(CommandList& list) const;
  void Remove() const { folder_.Remove(); }

 private:
  CopyFolder folder_;
  std::string name_;
  std::vector<std::string> rows_;
  std::time_t saved_at_;
};

inline constexpr std::size_t kMaxAbandonedCopies = 5;

/// The copies that other windows have left in `folder`, newest first; those beyond the limit are removed.
std::vector<AbandonedCopy> AbandonedCopies(const std::string& folder);

}  // namespace kolvane::script
