#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kolvane::terminal {

/// What the user is told about the session besides the connection, most urgent first.
enum class StateKind {
  kWait,      ///< what is waited for
  kBlock,     ///< how much of a block has come
  kRun,       ///< how far the command list has come
  kLost,      ///< the connection is lost
  kModem,     ///< the modem's last word after a dialling that failed
  kBytes,     ///< bytes that have come and were not read
  kWords,     ///< what the last failure means
  kLeftOver,  ///< what an earlier run has left open: loops, conditions, silence, recording
};

/// Whoever shows the state.
class StateView {
 public:
  virtual ~StateView() = default;
  /// An empty text takes back the last of that kind.
  virtual void ShowState(StateKind kind, std::string_view text) = 0;
};

/// One text of each kind; the most urgent one is shown, what a failure means and what was left over together.
/// That of a run starts with its row, ended by a comma. Texts are UTF-8, an empty one is none.
class StateLine {
 public:
  /// Returns whether Text() has changed.
  bool Set(StateKind kind, std::string_view text) {
    const std::string before = Text();
    texts_[static_cast<std::size_t>(kind)] = text;
    return Text() != before;
  }

  /// What a run waits for has its row before it: "Zeile 12 von 240: wartet auf Antwort (1,2 s, ...)".
  std::string Text() const {
    const std::string& block = Of(StateKind::kBlock);
    const std::string wait =
        Of(StateKind::kWait) + (Of(StateKind::kWait).empty() || block.empty() ? "" : ", ") + block;
    const std::string& run = Of(StateKind::kRun);
    if (!wait.empty() && !run.empty()) return run.substr(0, run.find(',')) + ": " + wait;
    if (!wait.empty()) return wait;
    for (StateKind kind : {StateKind::kRun, StateKind::kLost, StateKind::kModem, StateKind::kBytes}) {
      if (const std::string& text = Of(kind); !text.empty()) return text;
    }
    const std::string& words = Of(StateKind::kWords);
    const std::string& left_over = Of(StateKind::kLeftOver);
    return words + (words.empty() || left_over.empty() ? "" : "; ") + left_over;
  }

 private:
  const std::string& Of(StateKind kind) const { return texts_[static_cast<std::size_t>(kind)]; }

  std::array<std::string, static_cast<std::size_t>(StateKind::kLeftOver) + 1> texts_;
};

}  // namespace kolvane::terminal
