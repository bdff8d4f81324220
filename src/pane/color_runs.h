#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/look.h"

namespace kolvane::pane {

using base::Color;
using base::kNoColor;

/// Bytes [begin, end) in one colour.
struct ColorRun {
  std::uint32_t begin;
  std::uint32_t end;
  Color color;
};

/// The colours of a piece of text: sorted, disjoint runs, none of them empty or without colour, neighbours of
/// the same colour joined. Text without a colour of its own costs nothing.
class ColorRuns {
 public:
  const std::vector<ColorRun>& runs() const { return runs_; }

  /// The colour of the byte at `at`.
  Color At(std::size_t at) const;
  /// First run that ends after `at`; runs().end() if none does.
  std::vector<ColorRun>::const_iterator FirstAfter(std::size_t at) const;

  /// The next Append allocates nothing.
  void MakeRoomForOne() {
    if (runs_.size() == runs_.capacity()) runs_.reserve(std::max<std::size_t>(1, 2 * runs_.size()));
  }
  /// A run after all others.
  void Append(std::size_t begin, std::size_t end, Color color);
  /// Makes room for `size` bytes at `at`, in `color`.
  void Insert(std::size_t at, std::size_t size, Color color);
  void Erase(std::size_t begin, std::size_t end);
  void Set(std::size_t begin, std::size_t end, Color color);

  /// Takes away and returns what stands from `at` on, counted from there.
  ColorRuns TakeTail(std::size_t at);
  /// Appends `tail`, which begins at byte `at` here.
  void Join(const ColorRuns& tail, std::size_t at);

 private:
  std::vector<ColorRun> runs_;
};

}  // namespace kolvane::pane
