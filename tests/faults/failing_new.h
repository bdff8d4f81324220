#pragma once

namespace kolvane::faults {

/// While it lives, the nth allocation with new outside Qt fails, once.
class FailingNew {
 public:
  explicit FailingNew(long nth);
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  /// Whether there were that many.
  bool hit() const;
};

}  // namespace kolvane::faults
