#pragma once

#include <string>

#include "amplifier/stream.h"

namespace kolvane::amplifier {

/// The instrument's end of a pseudo terminal. It also holds the terminal's end open, so that programs may
/// open and close it at will. The destructor hangs up and removes the link, unless the link already leads to
/// another terminal.
class PtyStream final : public Stream {
 public:
  /// Makes `link` a symbolic link to the terminal, replacing an existing symbolic link. Throws
  /// std::system_error, also if `link` is anything else.
  explicit PtyStream(std::string link);
  ~PtyStream() override;

  int descriptor() const override { return master_.get(); }
  Transfer Receive(std::span<char> space) override;
  Transfer ReceiveWithTimeout(std::span<char>) override { return {}; }
  Transfer Send(std::string_view bytes) override;
  [[nodiscard]] bool EndOrderly() override;
  void EndByReset() override {}

 private:
  std::string link_;
  base::Descriptor master_;
  std::string slave_path_;
  base::Descriptor slave_;
  bool was_read_ = false;
};

}  // namespace kolvane::amplifier
