#pragma once

#include <string>

#include "amplifier/stream.h"

namespace kolvane::amplifier {

/// The instrument's end of a pseudo terminal. It holds the terminal's end open as well, so that programs may
/// open and close it as they like. Destroying it hangs up on them and removes the link, unless the link
/// already leads to another terminal.
class PtyStream final : public Stream {
 public:
  /// Makes `link` a symbolic link to the terminal, in place of a symbolic link of that name. Throws
  /// std::system_error; so it does when `link` is something else.
  explicit PtyStream(std::string link);
  ~PtyStream() override;

  int descriptor() const override { return master_.get(); }
  Transfer Receive(std::span<char> space) override;
  Transfer ReceivePatiently(std::span<char>) override { return {}; }
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
