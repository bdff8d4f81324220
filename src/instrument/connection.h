#pragma once

#include <atomic>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "devlnk/port_session.h"
#include "kolvane/Instrument.h"

namespace kolvane::instrument {

/// One port session and its resource: operations come one after the other, whichever thread they are on, and
/// fail with InstrumentError.
class Connection {
 public:
  /// What may be changed while an operation is under way; it holds from the next one on.
  struct Settings {
    std::int32_t timeout_ms = 0;
    std::string read_termination;
    std::string write_termination;
  };

  /// Connects; std::invalid_argument for a resource or an option that is none.
  Connection(const std::string& resource, const InstrumentOptions& options);
  ~Connection() { Close(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  const std::string& resource() const { return resource_; }
  bool is_open() const { return open_; }
  void Close();

  Settings settings() const;
  /// `change(settings)` on those that hold; what it throws leaves them as they were.
  template <typename Setter>
  void Change(Setter change) {
    const std::lock_guard lock(settings_mutex_);
    Settings changed = settings_;
    change(changed);
    settings_ = changed;
  }

  /// `operation(session, settings)` returns a status; one below 0 is thrown.
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

  /// Of `options` only the line parameters.
  void SetLine(const InstrumentOptions& options, SerialFlow flow);
  std::size_t BytesWaiting();

 private:
  static std::int32_t AskGiveUp(void* self, std::int32_t waited_ms);
  [[noreturn]] void Fail(std::int32_t status) const;

  std::string resource_;
  std::function<bool()> give_up_;
  std::mutex mutex_;  ///< held while an operation is under way, so never taken by what has to be prompt
  std::unique_ptr<devlnk::PortSession> session_;
  std::exception_ptr thrown_;  ///< by give_up_
  std::atomic<bool> open_ = false;
  mutable std::mutex settings_mutex_;
  Settings settings_;
};

}  // namespace kolvane::instrument
