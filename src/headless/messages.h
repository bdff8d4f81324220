#pragma once

#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "base/prompt.h"
#include "kolvane/LineKind.h"

namespace kolvane::headless {

/// `text` (UTF-8) with its control characters as <1B>, tab and line feed apart. A terminal would act on them.
std::string WithVisibleControls(std::string_view text);

/// A host's function for the lines of a run, where it has one. The first exception out of it is kept: it ends
/// the run and is thrown once everything has been closed.
class HostLines {
 public:
  using Handler = std::function<void(LineKind, const std::string&)>;

  /// `handler`, which may be empty, must outlive this.
  explicit HostLines(const Handler& handler) : handler_(handler) {}

  bool wanted() const { return handler_ != nullptr; }
  void Hand(LineKind kind, const std::string& line);

  bool failed() const { return thrown_ != nullptr; }
  /// Throws what the function has thrown.
  void Rethrow() const;

 private:
  const Handler& handler_;
  std::exception_ptr thrown_;
};

/// Standard error of a run without a window: what would be a message box is one line there, or one that is
/// handed to `host`.
class Messages final : public base::Prompt {
 public:
  Messages(int descriptor, bool verbose, HostLines* host = nullptr);

  void ShowError(std::string_view text) override { Show(LineKind::kError, text); }
  void ShowFailure(std::string_view text, std::string_view words) override;
  void ShowMessage(std::string_view text) override { ShowError(text); }
  /// A line that belongs to one on standard output: a host has got that one, and notices that are told anyway
  /// are not repeated.
  void Remark(LineKind kind, std::string_view text) {
    if (host_ == nullptr && !(kind == LineKind::kNotice && verbose_)) ShowError(text);
  }
  /// What is worth telling only to who asked for it.
  void Tell(std::string_view text) {
    if (verbose_) Show(LineKind::kNotice, text);
  }

  /// Called before each line, so that what was said earlier on standard output stands before it.
  void Precede(std::function<void()> step) { before_ = std::move(step); }

  /// Null where the lines go to standard output and standard error.
  HostLines* host() const { return host_; }

 private:
  void Show(LineKind kind, std::string_view text);

  int descriptor_;
  bool verbose_;
  bool at_terminal_;
  HostLines* host_;
  std::function<void()> before_;
};

}  // namespace kolvane::headless
