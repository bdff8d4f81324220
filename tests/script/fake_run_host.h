#pragma once

#include <functional>
#include <new>
#include <vector>

#include "script/script_links.h"

namespace kolvane::script {

/// A front end that records the locks and calls a test's function after each row.
class FakeRunHost final : public RunHost {
 public:
  void LockGUI(bool locked) override {
    locks.push_back(locked);
    if (locked && lock_fails) throw std::bad_alloc();
  }
  void RowStarts() override { ++row_starts; }
  void Yield() override {
    ++yields;
    if (at_yield) at_yield();
  }

  std::vector<bool> locks;
  bool lock_fails = false;
  int row_starts = 0;
  int yields = 0;
  std::function<void()> at_yield;
};

}  // namespace kolvane::script
