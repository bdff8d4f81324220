#include "devlnk/driver_thread.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

#include "devlnk/background_work.h"

namespace kolvane::devlnk {

struct DriverThread::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  std::function<void()> call;
  std::exception_ptr thrown;  // by the last call
  bool busy = false;
  bool ended = false;

  void Work() {
    std::unique_lock lock(mutex);
    for (;;) {
      changed.wait(lock, [this] { return busy || ended; });
      if (!busy) return;
      const std::function<void()> own = std::exchange(call, nullptr);
      lock.unlock();
      std::exception_ptr failure;
      try {
        own();
      } catch (...) {
        failure = std::current_exception();
      }
      lock.lock();
      thrown = std::move(failure);
      busy = false;
      changed.notify_all();
    }
  }
};

struct DriverThread::LateRead {
  std::string bytes;
  Received received;
};

DriverThread::~DriverThread() {
  if (shared_ == nullptr) return;
  const std::lock_guard lock(shared_->mutex);
  shared_->ended = true;
  shared_->changed.notify_all();
}

void DriverThread::Start() {
  auto shared = std::make_shared<Shared>();
  const BlockedSignals blocked;
  std::thread([shared] { shared->Work(); }).detach();
  shared_ = std::move(shared);
}

bool DriverThread::AwaitIdle(Deadline& deadline) {
  if (shared_ == nullptr) return true;
  std::unique_lock lock(shared_->mutex);
  for (;;) {
    const std::chrono::milliseconds slice(std::min(Waiting::kPaceMs, deadline.RemainingMs()));
    if (shared_->changed.wait_for(lock, slice, [this] { return !shared_->busy; })) return true;
    lock.unlock();
    if (!deadline.Continue()) return false;
    lock.lock();
  }
}

bool DriverThread::Run(Deadline& deadline, std::function<void()> call) {
  if (!AwaitIdle(deadline)) return false;
  if (!deadline.attended()) {
    call();
    return true;
  }
  if (shared_ == nullptr) Start();
  std::unique_lock lock(shared_->mutex);
  shared_->call = std::move(call);
  shared_->busy = true;
  shared_->changed.notify_all();
  // The driver applies the time-out.
  const std::chrono::milliseconds slice(Waiting::kPaceMs);
  while (!shared_->changed.wait_for(lock, slice, [this] { return !shared_->busy; })) {
    lock.unlock();
    deadline.Attend();
    if (deadline.given_up()) return false;
    lock.lock();
  }
  if (shared_->thrown) std::rethrow_exception(std::exchange(shared_->thrown, nullptr));
  return true;
}

Received DriverThread::Read(std::span<char> room, Deadline& deadline,
                            const std::function<Received(std::span<char>)>& read) {
  if (!AwaitIdle(deadline)) return {};
  if (late_ != nullptr && late_->received.bytes == 0 && late_->received.status == Status::kOk) late_.reset();
  if (late_ != nullptr) return TakeLate(room);
  if (!deadline.attended()) return read(room);
  const auto own = std::make_shared<LateRead>();
  own->bytes.resize(room.size());
  late_ = own;
  if (!Run(deadline, [own, read] { own->received = read(own->bytes); })) return {};
  return TakeLate(room);
}

// Bytes that do not fit stay for the next read.
Received DriverThread::TakeLate(std::span<char> room) {
  LateRead& late = *late_;
  const std::size_t count = std::min(room.size(), late.received.bytes);
  late.bytes.copy(room.data(), count);
  late.bytes.erase(0, count);
  late.received.bytes -= count;
  const bool rest = late.received.bytes > 0;
  const Received received{count, rest ? Status::kOk : late.received.status,
                          !rest && late.received.ends_message};
  if (!rest) late_.reset();
  return received;
}

}  // namespace kolvane::devlnk
