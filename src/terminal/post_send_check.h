#pragma once

#include <string_view>

namespace kolvane::terminal {

/// What a command that has been sent means for the session.
struct PostSendRule {
  bool disconnects = false;  ///< the connect button is to be pressed
  bool continues = true;     ///< an answer follows
  std::string_view message;  ///< shown in the answer's place; may be empty
};

/// The rule for `command`: it is searched for "DCL", "RES" (or "*RST") and "STP" in this order, anywhere and
/// in any letter case; the first hit wins, longer words that happen to contain one of them included.
PostSendRule RuleFor(std::string_view command);

}  // namespace kolvane::terminal
