#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace kolvane::script {

/// Cuts a stream of bytes, or a text, into lines. CR LF, LF and CR alone end a line each; a line end at the
/// very end does not begin another line.
class LineSplitter {
 public:
  using Sink = std::function<void(std::string_view line)>;

  explicit LineSplitter(Sink sink) : sink_(std::move(sink)) {}

  void Feed(std::string_view bytes);
  /// Hands over the last line where it has no end.
  void Finish();

  /// Length of the line that has begun and not yet ended.
  std::size_t pending() const { return pending_.size(); }

 private:
  void EndLine(std::string_view tail);

  Sink sink_;
  std::string pending_;
  bool after_cr_ = false;
};

}  // namespace kolvane::script
