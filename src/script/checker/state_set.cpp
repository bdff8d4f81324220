#include "script/checker/state_set.h"

#include <algorithm>

namespace kolvane::script::checker {

namespace if_depth {

std::uint32_t Of(int depth) { return 1u << std::clamp(depth + kZeroAt, 0, 31); }

std::uint32_t Increased(std::uint32_t set) { return set << 1 | (set & (kLowest | kHighest)); }

std::uint32_t Decreased(std::uint32_t set) { return set >> 1 | (set & (kLowest | kHighest)); }

}  // namespace if_depth

namespace {

std::int16_t JoinLoops(std::int16_t a, std::int16_t b) {
  if (a == b || b == loop_at::kNone) return a;
  return a == loop_at::kNone ? b : loop_at::kAny;
}

template <typename Value>
bool Set(Value& value, Value joined) {
  const bool changes = value != joined;
  value = joined;
  return changes;
}

}  // namespace

StateSet StateSet::Any() {
  StateSet any;
  for (int level = kLowestLevel; level <= kHighestLevel; ++level) any.Add(level, ~0u);
  any.loops.fill(loop_at::kAny);
  any.params = params::kUnset | params::kSet;
  any.log = log::kClosed | log::kOpen | log::kUnknown;
  return any;
}

std::uint32_t StateSet::AllDepths() const {
  std::uint32_t all = 0;
  for (const std::uint32_t some : depths) all |= some;
  return all;
}

void StateSet::Add(int level, std::uint32_t more_depths) {
  const int index = level - kLowestLevel;
  depths[static_cast<std::size_t>(index)] |= more_depths;
  levels |= 1u << index;
}

bool StateSet::Join(const StateSet& other) {
  if (other.empty()) return false;
  bool changed = Set(levels, levels | other.levels);
  for (std::size_t index = 0; index < depths.size(); ++index)
    changed |= Set(depths[index], depths[index] | other.depths[index]);
  for (std::size_t level = 0; level < loops.size(); ++level)
    changed |= Set(loops[level], JoinLoops(loops[level], other.loops[level]));
  changed |= Set(params, static_cast<std::uint8_t>(params | other.params));
  changed |= Set(log, static_cast<std::uint8_t>(log | other.log));
  return changed;
}

StateSet StateSet::WithoutDepths() const {
  StateSet rest = *this;
  rest.levels = 0;
  rest.depths.fill(0);
  return rest;
}

void StateSet::KeepLoopsUpTo(int level) {
  std::fill(loops.begin() + std::min(level + 1, kLevels), loops.end(), loop_at::kNone);
}

StateSet StateSet::At(int level) const {
  StateSet some = WithoutDepths();
  some.Add(level, DepthsAt(level));
  some.KeepLoopsUpTo(level);
  return some;
}

StateSet StateSet::Lowered(int level) const {
  StateSet lower = WithoutDepths();
  lower.Add(level - 1, DepthsAt(level));
  lower.KeepLoopsUpTo(level - 1);
  return lower;
}

StateSet StateSet::Raised(int level, std::int16_t loop) const {
  StateSet higher = WithoutDepths();
  higher.Add(level + 1, DepthsAt(level));
  higher.KeepLoopsUpTo(level);
  higher.loops[static_cast<std::size_t>(level + 1)] = loop;
  return higher;
}

StateSet StateSet::TakeDepthZero() {
  StateSet taken = WithoutDepths();
  int highest = kLowestLevel;
  for (int level = kLowestLevel; level <= kHighestLevel; ++level) {
    const int index = level - kLowestLevel;
    std::uint32_t& own = depths[static_cast<std::size_t>(index)];
    if ((own & if_depth::kZero) == 0) continue;
    taken.Add(level, if_depth::kZero);
    highest = level;
    own &= ~if_depth::kZero;
    if (own == 0) levels &= ~(1u << index);
  }
  taken.KeepLoopsUpTo(highest);
  return taken;
}

void StateSet::IncreaseDepths() {
  for (std::uint32_t& some : depths) some = if_depth::Increased(some);
}

void StateSet::DecreaseDepths() {
  for (std::uint32_t& some : depths) some = if_depth::Decreased(some);
}

}  // namespace kolvane::script::checker
