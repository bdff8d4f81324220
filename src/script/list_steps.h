#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kolvane::script {

/// Which file a list belongs to.
struct ListFile {
  std::string name;          ///< as the user gave it; empty: none yet
  std::size_t left_out = 0;  ///< lines of the file beyond the last row
};

/// What an edit, or another list, has taken the place of.
struct ListStep {
  int first = 1;
  std::vector<std::string> texts;  ///< of the rows from `first` on; all others are empty where `file` is set
  bool modified = false;
  std::optional<ListFile> file;  ///< set for a whole list
};

/// The last steps that can be gone back, or forth again; newest on top.
class ListSteps {
 public:
  static constexpr std::size_t kLimit = 100;

  /// The oldest step makes room for the one past the limit.
  void Push(ListStep step) {
    steps_.push_back(std::move(step));
    if (steps_.size() > kLimit) steps_.pop_front();
  }
  /// There must be one.
  ListStep Pop() {
    ListStep step = std::move(steps_.back());
    steps_.pop_back();
    return step;
  }
  const ListStep* Top() const { return steps_.empty() ? nullptr : &steps_.back(); }
  void Clear() { steps_.clear(); }

  /// A file has taken what the list holds now: every other state of it, this side of another list, is
  /// modified.
  void MarkModified() {
    for (auto step = steps_.rbegin(); step != steps_.rend() && !step->file; ++step) step->modified = true;
  }

 private:
  std::deque<ListStep> steps_;
};

}  // namespace kolvane::script
