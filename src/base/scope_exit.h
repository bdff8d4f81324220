#pragma once

#include <utility>

namespace kolvane::base {

/// Calls `action`, which must not throw, at the end of the scope, however it is left.
template <typename Action>
class ScopeExit {
 public:
  explicit ScopeExit(Action action) : action_(std::move(action)) {}
  ~ScopeExit() { action_(); }
  ScopeExit(const ScopeExit&) = delete;
  ScopeExit& operator=(const ScopeExit&) = delete;

 private:
  Action action_;
};

}  // namespace kolvane::base
