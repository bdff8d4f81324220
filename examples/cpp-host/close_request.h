#pragma once

namespace host {

/// By which the host closes the terminal that is open: its descriptor goes into
/// TerminalOptions::CloseDescriptor.
class CloseRequest {
 public:
  /// Throws std::system_error where the process has no descriptors left.
  CloseRequest();
  ~CloseRequest();
  CloseRequest(const CloseRequest&) = delete;
  CloseRequest& operator=(const CloseRequest&) = delete;

  int descriptor() const { return descriptor_; }

  /// May come from within a call of the terminal's; the window closes when that has returned.
  void Make() const;

 private:
  int descriptor_;
};

}  // namespace host
