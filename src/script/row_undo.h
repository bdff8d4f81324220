#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace kolvane::script {

/// Texts that neighbouring rows had before an edit.
struct RowsBefore {
  int first = 1;
  std::vector<std::string> texts;
};

/// The last edits of the list, newest on top.
class RowUndo {
 public:
  static constexpr std::size_t kLimit = 100;

  /// The oldest edit makes room for the one past the limit.
  void Push(RowsBefore before) {
    edits_.push_back(std::move(before));
    if (edits_.size() > kLimit) edits_.pop_front();
  }

  std::optional<RowsBefore> Pop() {
    if (edits_.empty()) return std::nullopt;
    RowsBefore before = std::move(edits_.back());
    edits_.pop_back();
    return before;
  }

  void Clear() { edits_.clear(); }

 private:
  std::deque<RowsBefore> edits_;
};

}  // namespace kolvane::script
