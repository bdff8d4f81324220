#pragma once

#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "base/prompt.h"
#include "kolvane/LineKind.h"

namespace kolvane::headless {

/// `text` (UTF-8) with control characters as <1B>, except tab and line feed. A terminal would execute them.
std::string WithVisibleControls(std::string_view text);

/// A host's function for the lines of a run, if any. The first exception of a host's function is kept: it
/// ends the run and is rethrown once everything has been closed. It must not pass through the port library,
/// which may have called the function and would take it for a lack of memory.
class HostLines {
 public:
  using Handler = std::function<void(LineKind, const std::string&)>;

  /// `handler`, which may be empty, must outlive this.
  explicit HostLines(const Handler& handler) : handler_(handler) {}

  bool wanted() const { return handler_ != nullptr; }
  /// Does nothing once the function has thrown.
  void Deliver(LineKind kind, const std::string& line);
  /// Asks another function of the host, which may be empty; an exception counts as true.
  bool Asks(const std::function<bool()>& question);

  bool failed() const { return thrown_ != nullptr; }
  /// Throws the exception that was kept, if any.
  void Rethrow() const;

 private:
  const Handler& handler_;
  std::exception_ptr thrown_;
  bool refuses_lines_ = false;
};

/// Standard error of a run without a window: each message box becomes one line there, or a line passed to
/// `host`.
class Messages final : public base::Prompt {
 public:
  Messages(int descriptor, bool verbose, HostLines* host = nullptr);

  void ShowError(std::string_view text) override { Show(LineKind::kError, text); }
  void ShowFailure(std::string_view text, std::string_view words) override;
  void ShowMessage(std::string_view text) override { ShowError(text); }
  /// A remark on a line of standard output. Skipped for a host, which has received that line; a notice is
  /// also skipped if Report has just shown it.
  void Remark(LineKind kind, std::string_view text) {
    const bool shown = kind == LineKind::kNotice && reported_ == text;
    reported_.clear();
    if (host_ == nullptr && !shown) ShowError(text);
  }
  /// Only shown if the user asked for verbose output.
  void Report(std::string_view text) {
    if (!verbose_) return;
    Show(LineKind::kNotice, text);
    reported_ = text;
  }

  /// `step` is called before each line, to write pending output first.
  void Precede(std::function<void()> step) { before_ = std::move(step); }

  /// Null if the lines go to standard output and standard error.
  HostLines* host() const { return host_; }

 private:
  void Show(LineKind kind, std::string_view text);

  int descriptor_;
  bool verbose_;
  bool at_terminal_;
  HostLines* host_;
  std::string reported_;  // the last line of Report, until the next remark
  std::function<void()> before_;
};

}  // namespace kolvane::headless
