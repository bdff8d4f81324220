#pragma once

#include <termios.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/shell_typing.h"
#include "kolvane/Shell.h"

namespace kolvane::app {

/// The user's line at a terminal, on standard input and standard output: editing, history, completion. While
/// nothing is edited what is typed is not shown: it is kept for the next line, and Esc or Ctrl+C give up what
/// is waited for.
class LineEditor {
 public:
  using CompleteFunction = std::function<std::vector<std::string>(const std::string& typed)>;

  /// `end`: a descriptor that becomes readable when input is to end; negative: none. All outlive this object.
  LineEditor(int end, ShellHistory& history, CompleteFunction complete, bool colors);
  ~LineEditor();
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;

  /// As ShellHost::ReadLine: kCancelled for Ctrl+C, kEnd for Ctrl+D on an empty line.
  ShellInput ReadLine(const std::string& prompt, std::string& line);
  /// As ShellHost::GiveUp; what was typed ahead goes, too.
  bool GiveUp();

 private:
  struct Editor;

  void ShowNothing();
  /// Takes what was typed; false at the end of all input.
  bool Receive();
  bool ReadByte(char& byte);
  /// Puts the next character of the line; 0 at the end, else 1.
  int ReadCharacter(wchar_t& character);
  unsigned char CompleteLine();
  void List(const std::vector<std::string>& candidates);

  int end_;
  ShellHistory& history_;
  CompleteFunction complete_;
  bool colors_;
  termios at_start_ = {};
  std::string typed_;  // and not read yet
  std::string prompt_;
  bool cancelled_ = false;
  std::unique_ptr<Editor> editor_;
};

}  // namespace kolvane::app
