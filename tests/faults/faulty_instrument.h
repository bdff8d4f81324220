#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/loopback.h"
#include "base/temp_folder.h"
#include "devlnk/fake_sysfs.h"
#include "devlnk/status.h"
#include "faults/wire.h"

namespace kolvane::faults {

/// The kinds of port that are available without hardware.
enum class Port { kTcp, kCom, kRs485, kUsbLine };
inline constexpr Port kPorts[] = {Port::kTcp, Port::kCom, Port::kRs485, Port::kUsbLine};
inline constexpr Port kLines[] = {Port::kCom, Port::kRs485, Port::kUsbLine};
std::string NameOf(Port port);

/// A status as the window and the command line show it.
inline std::string TextOf(devlnk::Status status) { return std::to_string(devlnk::Code(status)); }

/// A fault of an instrument that never fails.
inline After NoFault(Wire& /*wire*/) { return After::kContinue; }

/// An instrument that echoes each line, ended by CR LF, until it receives FAULT or a line without end. When a
/// connection ends, the next one is served; a serial line is then a new one with the same name.
class FaultyInstrument {
 public:
  FaultyInstrument(Port port, Fault fault);
  ~FaultyInstrument();
  FaultyInstrument(const FaultyInstrument&) = delete;
  FaultyInstrument& operator=(const FaultyInstrument&) = delete;

  Port port() const { return port_; }
  std::string Resource() const;
  /// The environment that a program needs to reach the instrument.
  std::map<std::string, std::string> Environment() const;
  std::uint16_t ip_port() const { return listener_ ? listener_->port() : std::uint16_t{0}; }
  std::string node() const { return folder_.Path("line"); }

  /// Ends the fault; returns once the instrument reads lines again.
  void EndFault();
  /// Returns once that many connections have ended.
  void AwaitEnds(int count);
  /// Returns once the fault has started.
  void AwaitFault();
  /// Returns once it has handled that many lines.
  void AwaitAnswers(int count);
  std::vector<std::string> lines();

 private:
  void Serve();
  int NextConnection();
  void ServeConnection(Wire& wire);
  void EndConnection(int fd);
  After RunFault(Wire& wire);
  void NoteEndOfFault();
  bool IsStopping();
  void Note(int& counter);
  void LinkLine();

  const Port port_;
  const Fault fault_;
  base::TempFolder folder_;
  devlnk::FakeSysfs system_;
  std::unique_ptr<base::Listener> listener_;
  std::unique_ptr<base::Pty> pty_;
  int end_of_fault_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> lines_;
  int ends_ = 0;
  int started_ = 0;
  int ended_ = 0;
  int answered_ = 0;
  bool stopping_ = false;
  std::thread thread_;
};

}  // namespace kolvane::faults
