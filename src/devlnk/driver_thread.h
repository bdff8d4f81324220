#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "devlnk/channel.h"

namespace kolvane::devlnk {

/// Makes calls that block in a driver, which nothing can interrupt. Where somebody is to be called meanwhile,
/// the driver's call runs on a thread of its own. A call that was given up goes on there: its bytes are
/// delivered by the next read, and any later call waits for its end first.
class DriverThread {
 public:
  DriverThread() = default;
  DriverThread(const DriverThread&) = delete;
  DriverThread& operator=(const DriverThread&) = delete;
  /// A call that is still under way is left to itself.
  ~DriverThread();

  /// `call` owns all that it uses. False where it was given up, or an earlier one has not ended by the
  /// deadline.
  [[nodiscard]] bool Run(Deadline& deadline, std::function<void()> call);

  /// `read` fills the room that it is given. Nothing where it was given up.
  Received Read(std::span<char> room, Deadline& deadline,
                const std::function<Received(std::span<char>)>& read);

  /// Waits for a call that was given up; false where it has not ended by the deadline.
  [[nodiscard]] bool AwaitIdle(Deadline& deadline);
  /// Forgets what a read that was given up has brought; after AwaitIdle.
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
