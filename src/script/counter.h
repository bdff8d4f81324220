#pragma once

#include <array>
#include <cstddef>

#include "base/runtime_error.h"

namespace kolvane::script {

/// Adds `step` to a counter; throws RuntimeError kOverflow, the counter as it was, where its type is too
/// small.
template <typename Counter>
void Count(Counter& counter, Counter step) {
  Counter sum;
  if (__builtin_add_overflow(counter, step, &sum))
    throw base::RuntimeError(base::RuntimeError::Kind::kOverflow);
  counter = sum;
}

/// The element at `index`; throws RuntimeError kSubscript where there is none.
template <typename Element, std::size_t size>
Element& At(std::array<Element, size>& array, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= size)
    throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
  return array[static_cast<std::size_t>(index)];
}

}  // namespace kolvane::script
