#include "terminal/post_send_check.h"

#include "base/folding.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

PostSendRule RuleFor(std::string_view command) {
  const std::string upper = base::UpperCase(command);
  const auto contains = [&upper](const char* word) { return upper.find(word) != std::string::npos; };
  if (contains("DCL")) return {.disconnects = true, .continues = false, .message = texts::kLocalDone};
  if (contains("RES") || contains("*RST"))
    return {.disconnects = true, .continues = false, .message = texts::kRestartDone};
  if (contains("STP")) return {.continues = false, .message = texts::kMeasuringStopped};
  return {};
}

}  // namespace kolvane::terminal
