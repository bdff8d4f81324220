#pragma once

#include <termios.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/shell_typing.h"
#include "app/signals.h"
#include "kolvane/Shell.h"

namespace kolvane::app {

/// The user's line on a terminal (standard input and output): editing, history, completion. While no line is
/// edited, typed characters are not shown but kept for the next line, and Esc or Ctrl+C gives up the wait.
/// The process can be suspended and the terminal resized at any time.
class LineEditor {
 public:
  using CompleteFunction = std::function<std::vector<std::string>(const std::string& typed)>;

  /// `end`: a descriptor that becomes readable when input should end; negative: none. It and `history` must
  /// outlive this object.
  LineEditor(int end, ShellHistory& history, CompleteFunction complete, bool colors);
  ~LineEditor();
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;

  /// Like ShellHost::ReadLine: kCancelled for Ctrl+C, kEnd for Ctrl+D on an empty line.
  ShellInput ReadLine(const std::string& prompt, std::string& line);
  /// Like ShellHost::GiveUp; also discards what was typed ahead.
  bool GiveUp();

 private:
  struct Editor;

  /// Sets the terminal's mode for the time while no line is edited.
  void ShowNothing();
  /// Suspends the process if the user wants it, and sets up the terminal again afterwards.
  void TakeSignals();
  /// Reads typed bytes; false at the end of all input.
  bool Receive();
  bool ReadByte(char& byte);
  /// Stores the line's next character in `character`; returns 0 at the end, else 1.
  int ReadCharacter(wchar_t& character);
  unsigned char CompleteLine();
  /// Draws the line for the terminal's new size, in two calls.
  unsigned char Redraw();
  void List(const std::vector<std::string>& candidates);

  int end_;
  ShellHistory& history_;
  CompleteFunction complete_;
  bool colors_;
  termios at_start_ = {};
  TypeAhead typed_;
  TerminalSignals signals_;
  std::string prompt_;
  bool cancelled_ = false;
  bool editing_ = false;
  bool resized_ = false;
  // The line while it is being redrawn.
  bool cleared_ = false;
  std::string kept_prompt_;
  std::string kept_line_;
  int after_cursor_ = 0;  // characters
  std::unique_ptr<Editor> editor_;
};

}  // namespace kolvane::app
