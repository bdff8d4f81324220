#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "base/captured_output.h"

namespace kolvane::app {

/// How a program ended and what it wrote.
struct Outcome {
  int status = 0;  ///< exit status; the negative number of the signal that ended it
  std::string out;
  std::string err;
};

/// What a program is started with.
struct LaunchOptions {
  std::string folder = {};  ///< current folder; empty: the test's
  std::map<std::string, std::string> environment = {};
  int output = -1;                        ///< standard output; -1: captured
  int input = -1;                         ///< standard input; -1: the test's
  std::vector<std::string> wrapper = {};  ///< a program on PATH, with arguments, that starts it
  std::string program = KOLVANE_PROGRAM;
};

/// The real program as a child process, without a display and with its own settings.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments, const LaunchOptions& options = {});
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void Signal(int number) const;
  /// Returns once the program no longer catches the signal `number`.
  void AwaitHandled(int number) const;
  /// Returns the program's current folder once that lies in `parent`.
  std::string AwaitFolderIn(const std::string& parent) const;
  /// False if it still runs after that time.
  bool EndsWithin(int milliseconds) const;
  pid_t id() const { return child_; }
  Outcome Wait();

 private:
  [[noreturn]] void Execute(std::vector<std::string>& words, const LaunchOptions& options) const;

  base::CapturedOutput out_;
  base::CapturedOutput err_;
  pid_t child_ = -1;
};

inline Outcome RunProgram(std::vector<std::string> arguments, const LaunchOptions& options = {}) {
  return Program(std::move(arguments), options).Wait();
}

}  // namespace kolvane::app
