#include "component/chosen_node.h"

#include <cstdlib>

namespace kolvane::component {
namespace {

constexpr char kVariable[] = "KOLVANE_COM1";

}  // namespace

ChosenNode::ChosenNode(const std::string& node) {
  if (const char* before = std::getenv(kVariable)) before_ = before;
  setenv(kVariable, node.c_str(), 1);
}

ChosenNode::~ChosenNode() {
  if (before_) {
    setenv(kVariable, before_->c_str(), 1);
  } else {
    unsetenv(kVariable);
  }
}

}  // namespace kolvane::component
