#pragma once

#include <sys/types.h>

#include <atomic>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "devlnk/port_session.h"
#include "kolvane/Instrument.h"

namespace kolvane::instrument {

/// One port session and its resource: operations from any thread run one after the other and fail with
/// InstrumentError.
class Connection {
 public:
  /// May be changed during an operation; a change applies from the next one on.
  struct Settings {
    std::int32_t timeout_ms = 0;
    std::string read_termination;
    std::string write_termination;
  };

  /// Connects; std::invalid_argument for an invalid resource or option.
  Connection(const std::string& resource, const InstrumentOptions& options);
  ~Connection() { Close(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  const std::string& resource() const { return resource_; }
  bool is_open() const { return open_; }
  /// In a forked process only the copy counts as closed.
  void Close();

  Settings settings() const;
  /// Calls `change(settings)` on the current settings; if it throws, they stay unchanged.
  template <typename Setter>
  void Change(Setter change) {
    const std::lock_guard lock(settings_mutex_);
    Settings changed = settings_;
    change(changed);
    settings_ = changed;
  }

  /// `operation(session, settings)` returns a status, which is thrown if negative.
  template <typename Operation>
  void Run(Operation operation) {
    const std::lock_guard lock(mutex_);
    if (!open_) Fail(InstrumentError::kNotOpen);
    const Settings now = settings();
    session_->SetTimeout(now.timeout_ms);
    const std::int32_t status = operation(*session_, now);
    if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
    if (status < 0) Fail(status);
  }

  /// Uses only the line parameters of `options`.
  void SetLine(const InstrumentOptions& options, SerialFlow flow);
  std::size_t BytesWaiting();

 private:
  static std::int32_t AskGiveUp(void* self, std::int32_t waited_ms);
  [[noreturn]] void Fail(std::int32_t status) const;

  const pid_t process_;  ///< that connected
  std::string resource_;
  std::function<bool()> give_up_;
  std::mutex mutex_;  ///< held during operations, so calls that must be prompt do not take it
  std::unique_ptr<devlnk::PortSession> session_;
  std::exception_ptr thrown_;  ///< by give_up_
  std::atomic<bool> open_ = false;
  mutable std::mutex settings_mutex_;
  Settings settings_;
};

}  // namespace kolvane::instrument
