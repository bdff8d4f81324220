#pragma once

#include <pthread.h>
#include <signal.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "devlnk/deadline.h"
#include "devlnk/sysfs.h"

namespace kolvane::devlnk {

/// Blocks all signals for a thread started while it lives: the host's signals are not for that thread.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t before_;
};

/// Returns the result of work that may never end, or nothing if it throws, misses the deadline or is given
/// up. The work cannot be interrupted; its thread is then detached, so `work` must own all that it uses. The
/// library stays loaded (-z nodelete). std::system_error if no thread is available.
template <typename Work>
auto RunWithDeadline(Deadline& deadline, Work work) -> std::optional<decltype(work())> {
  struct Exchange {
    std::mutex mutex;
    std::condition_variable done;
    bool ended = false;
    std::optional<decltype(work())> result;
  };
  const auto exchange = std::make_shared<Exchange>();
  std::thread worker;
  {
    const BlockedSignals blocked;
    worker = std::thread([exchange, work = std::move(work)] {
      std::optional<decltype(work())> result;
      try {
        result = work();
      } catch (...) {
        // Most likely out of memory; the caller sees it as a missing answer.
      }
      const std::lock_guard lock(exchange->mutex);
      exchange->result = std::move(result);
      exchange->ended = true;
      exchange->done.notify_one();
    });
  }
  for (;;) {
    {
      std::unique_lock lock(exchange->mutex);
      exchange->done.wait_for(lock, std::chrono::milliseconds(deadline.SliceMs()),
                              [&] { return exchange->ended; });
      if (exchange->ended) break;
    }
    if (deadline.Continue()) continue;
    worker.detach();
    return std::nullopt;
  }
  worker.join();
  return std::move(exchange->result);
}

/// Runs `scan(root, deadline)` on the system's device records. Returns within two seconds even if they do not
/// respond, then with nothing.
template <typename Scan>
auto ScanInTime(Scan scan, Waiting* waiting = nullptr) {
  constexpr std::int32_t kLongestMs = 1500;
  Deadline deadline(kLongestMs, waiting);
  auto found = RunWithDeadline(deadline, [scan, root = sysfs::Root()] {
    Deadline own(kLongestMs);
    return scan(root, own);
  });
  return found ? std::move(*found) : typename decltype(found)::value_type();
}

}  // namespace kolvane::devlnk
