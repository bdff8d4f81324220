#pragma once

#include <optional>
#include <string>

namespace kolvane::component {

/// Makes COM1 stand for a device for as long as it lives. The port library learns that from the environment,
/// which is the whole process's: what stood there before comes back with the end.
class ChosenNode {
 public:
  explicit ChosenNode(const std::string& node);
  ~ChosenNode();
  ChosenNode(const ChosenNode&) = delete;
  ChosenNode& operator=(const ChosenNode&) = delete;

 private:
  std::optional<std::string> before_;
};

}  // namespace kolvane::component
