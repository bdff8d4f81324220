#pragma once

#include "base/prompt.h"

namespace kolvane::window {

/// Whether the window was asked to close by somebody who does not sit before it, or has closed. Nobody can be
/// expected to answer a message from then on, and what waits for a device is to give up.
class CloseRequest {
 public:
  virtual ~CloseRequest() = default;
  virtual bool Made() const = 0;
  /// Takes the messages from then on.
  virtual base::Prompt& Messages() = 0;
};

}  // namespace kolvane::window
