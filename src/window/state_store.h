#pragma once

#include <string>

namespace kolvane::window {

/// Keeps texts by section and key from one terminal window to the next; implemented by the caller that opens
/// the window.
class StateStore {
 public:
  virtual ~StateStore() = default;
  /// Empty if there is none.
  virtual std::string Read(const std::string& section, const std::string& key) const = 0;
  virtual void Write(const std::string& section, const std::string& key, const std::string& text) = 0;
};

}  // namespace kolvane::window
