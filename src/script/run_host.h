#pragma once

namespace kolvane::script {

/// The front end that a list runs in.
class RunHost {
 public:
  virtual ~RunHost() = default;
  /// Locks (true) or unlocks whatever would disturb a run.
  virtual void LockGUI(bool flag) = 0;
  /// Called after each row of a run: the time to process events, or to look whether a stop was asked for. The
  /// implementer decides how often that is worth while.
  virtual void Yield() = 0;
};

}  // namespace kolvane::script
