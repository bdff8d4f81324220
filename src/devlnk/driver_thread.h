#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "devlnk/channel.h"

namespace kolvane::devlnk {

/// Makes calls that block in a driver and cannot be interrupted. If a wait handler is set, the driver's call
/// runs on a separate thread. A call that was given up continues there: its bytes are delivered by the next
/// read, and any later call waits for its end first.
class DriverThread {
 public:
  DriverThread() = default;
  DriverThread(const DriverThread&) = delete;
  DriverThread& operator=(const DriverThread&) = delete;
  /// Leaves a call that is still running to itself.
  ~DriverThread();

  /// `call` must own all that it uses. False if it was given up, or if an earlier one has not ended by the
  /// deadline. Throws what `call` throws, unless it was given up.
  [[nodiscard]] bool Run(Deadline& deadline, std::function<void()> call);

  /// `read` fills the room passed to it. Empty if it was given up.
  Received Read(std::span<char> room, Deadline& deadline,
                const std::function<Received(std::span<char>)>& read);

  /// Waits for a call that was given up; false if it has not ended by the deadline.
  [[nodiscard]] bool AwaitIdle(Deadline& deadline);
  /// Discards the bytes of a read that was given up; to be called after AwaitIdle.
  void DropLate() { late_.reset(); }

 private:
  struct Shared;
  struct LateRead;

  void Start();
  Received TakeLate(std::span<char> room);

  std::shared_ptr<Shared> shared_;
  std::shared_ptr<LateRead> late_;
};

}  // namespace kolvane::devlnk
