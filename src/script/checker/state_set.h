#pragma once

#include <array>
#include <cstdint>

#include "script/script_state.h"

namespace kolvane::script::checker {

/// Sets of IfDepth, one bit each: exact from -7 to 22; the outermost bits stand for everything beyond.
namespace if_depth {
inline constexpr int kZeroAt = 8;
inline constexpr std::uint32_t kZero = 1u << kZeroAt;
inline constexpr std::uint32_t kLowest = 1u;
inline constexpr std::uint32_t kHighest = 1u << 31;
inline constexpr std::uint32_t kNotOpen = (kZero << 1) - 1;     ///< 0 and less
inline constexpr std::uint32_t kSeveral = ~((kZero << 2) - 1);  ///< 2 and more

std::uint32_t Of(int depth);
std::uint32_t Increased(std::uint32_t set);
std::uint32_t Decreased(std::uint32_t set);
}  // namespace if_depth

/// Whether $SPLITPARAMS has been executed, as a set.
namespace params {
inline constexpr std::uint8_t kUnset = 1;
inline constexpr std::uint8_t kSet = 2;
}  // namespace params

/// Whether a log is open, as a set.
namespace log {
inline constexpr std::uint8_t kClosed = 1;
inline constexpr std::uint8_t kOpen = 2;
inline constexpr std::uint8_t kUnknown = 4;  ///< as it was at the start
}  // namespace log

/// The $REPEAT that opened a level: its row, or one of these.
namespace loop_at {
inline constexpr std::int16_t kNone = 0;      ///< no state has this level
inline constexpr std::int16_t kAny = -1;      ///< several
inline constexpr std::int16_t kEarlier = -2;  ///< as it was at the start
}  // namespace loop_at

/// A set of states that a run can be in before a row: which IfDepth occurs at which RepeatLevel, and,
/// independently, which loops, parameters and log. It holds every state added, and also mixtures of them.
struct StateSet {
  static constexpr int kLowestLevel = -1;
  static constexpr int kHighestLevel = kLevels;  ///< this or more, left by earlier runs
  static constexpr int kLevelCount = kHighestLevel - kLowestLevel + 1;

  /// All states.
  static StateSet Any();

  bool empty() const { return levels == 0; }
  bool HasLevel(int level) const { return (levels >> (level - kLowestLevel) & 1) != 0; }
  std::uint32_t DepthsAt(int level) const { return depths[static_cast<std::size_t>(level - kLowestLevel)]; }
  /// Of all levels.
  std::uint32_t AllDepths() const;
  std::int16_t LoopAt(int level) const { return loops[static_cast<std::size_t>(level)]; }

  void Add(int level, std::uint32_t more_depths);
  /// Adds all of `other`; returns false if that changes nothing.
  bool Join(const StateSet& other);
  /// The states at one level.
  StateSet At(int level) const;
  /// The states of one level after it was left, or after `loop` has opened the next one.
  StateSet Lowered(int level) const;
  StateSet Raised(int level, std::int16_t loop) const;
  /// Removes and returns the states with IfDepth 0.
  StateSet TakeDepthZero();
  /// Open or close a condition in each state.
  void IncreaseDepths();
  void DecreaseDepths();

  std::uint32_t levels = 0;
  std::array<std::uint32_t, kLevelCount> depths{};
  std::array<std::int16_t, kLevels> loops{};
  std::uint8_t params = 0;
  std::uint8_t log = 0;

 private:
  StateSet WithoutDepths() const;
  void KeepLoopsUpTo(int level);
};

}  // namespace kolvane::script::checker
