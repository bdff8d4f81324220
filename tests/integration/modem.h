#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/loopback.h"

namespace kolvane::integration {

/// A modem's answers, by the lines that it receives.
using Answers = std::map<std::string, std::string>;

/// A modem on a pseudo terminal. It reads lines ended by CR, sends the answer for each unchanged, and stays
/// silent if it has none. Once it has sent CONNECT it echoes every line, ended by CR LF.
class Modem {
 public:
  explicit Modem(Answers answers, bool echoes = false);
  ~Modem();
  Modem(const Modem&) = delete;
  Modem& operator=(const Modem&) = delete;

  const std::string& node() const { return line_.node(); }
  int line() const { return line_.slave(); }
  /// Sends `text` unasked.
  void SendUnasked(std::string_view text);
  /// Waits for `count` lines and returns them without their CR.
  std::vector<std::string> AwaitLines(std::size_t count);

 private:
  void Serve();
  void Receive(char c);

  Answers answers_;
  bool echoes_;
  base::Pty line_;
  int wake_[2];
  std::mutex mutex_;
  std::condition_variable line_received_;
  std::vector<std::string> lines_;
  std::string partial_line_;
  bool connected_ = false;
  std::thread thread_;
};

}  // namespace kolvane::integration
