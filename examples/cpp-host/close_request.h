#pragma once

namespace host {

/// Lets the host close the open terminal: its descriptor goes into TerminalOptions::CloseDescriptor.
class CloseRequest {
 public:
  /// Throws std::system_error if the process has no descriptors left.
  CloseRequest();
  ~CloseRequest();
  CloseRequest(const CloseRequest&) = delete;
  CloseRequest& operator=(const CloseRequest&) = delete;

  int descriptor() const { return descriptor_; }

  /// May be called during a call made by the terminal; the window closes once that has returned.
  void Make() const;

 private:
  int descriptor_;
};

}  // namespace host
