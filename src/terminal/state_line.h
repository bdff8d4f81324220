#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kolvane::terminal {

/// What is shown about the session besides the connection, most urgent first.
enum class StateKind {
  kWait,       ///< what is waited for
  kBlock,      ///< how much of a block has been received
  kRun,        ///< how far the command list has run
  kLost,       ///< the connection is lost
  kModem,      ///< the modem's last word after failed dialling
  kBytes,      ///< bytes received but not read
  kWords,      ///< what the last failure means
  kStillOpen,  ///< left open by an earlier run: loops, conditions, silence, recording
};

/// Shows the state.
class StateView {
 public:
  virtual ~StateView() = default;
  /// An empty text removes the last one of that kind.
  virtual void ShowState(StateKind kind, std::string_view text) = 0;
};

/// Holds one text of each kind. The most urgent one is shown; kStillOpen also follows kBytes and kWords. The
/// text of kRun starts with its row, followed by a comma. Texts are UTF-8; an empty text is not shown.
class StateLine {
 public:
  /// Returns whether Text() has changed.
  bool Set(StateKind kind, std::string_view text) {
    const std::string before = Text();
    texts_[static_cast<std::size_t>(kind)] = text;
    return Text() != before;
  }

  /// During a run the wait text follows the row: "Zeile 12 von 240: wartet auf Antwort (1,2 s, ...)".
  std::string Text() const {
    const std::string& block = Of(StateKind::kBlock);
    const std::string wait =
        Of(StateKind::kWait) + (Of(StateKind::kWait).empty() || block.empty() ? "" : ", ") + block;
    const std::string& run = Of(StateKind::kRun);
    if (!wait.empty() && !run.empty()) return run.substr(0, run.find(',')) + ": " + wait;
    if (!wait.empty()) return wait;
    for (StateKind kind : {StateKind::kRun, StateKind::kLost, StateKind::kModem}) {
      if (const std::string& text = Of(kind); !text.empty()) return text;
    }
    const std::string& device = Of(Of(StateKind::kBytes).empty() ? StateKind::kWords : StateKind::kBytes);
    const std::string& still_open = Of(StateKind::kStillOpen);
    return device + (device.empty() || still_open.empty() ? "" : "; ") + still_open;
  }

 private:
  const std::string& Of(StateKind kind) const { return texts_[static_cast<std::size_t>(kind)]; }

  std::array<std::string, static_cast<std::size_t>(StateKind::kStillOpen) + 1> texts_;
};

}  // namespace kolvane::terminal
