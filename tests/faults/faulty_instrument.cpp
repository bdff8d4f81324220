#include "faults/faulty_instrument.h"

#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <termios.h>
#include <unistd.h>

#include <filesystem>

namespace kolvane::faults {
namespace {

constexpr char kSerialNumber[] = "A50285BI";

constexpr std::uint64_t kOften = 1 << 30;

// Signals the event once, or so often that reading never uses it up.
void Signal(int event, std::uint64_t times) {
  [[maybe_unused]] const ssize_t written = write(event, &times, sizeof times);
}

void Unsignal(int event) {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t got = read(event, &count, sizeof count);
}

}  // namespace

std::string NameOf(Port port) {
  constexpr const char* kNames[] = {"Tcp", "Com", "Rs485", "UsbLine"};
  return kNames[static_cast<int>(port)];
}

FaultyInstrument::FaultyInstrument(Port port, Fault fault)
    : port_(port),
      fault_(std::move(fault)),
      end_of_fault_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE)) {
  if (port == Port::kTcp) {
    listener_ = std::make_unique<base::Listener>();
  } else {
    LinkLine();
  }
  if (port == Port::kUsbLine) {
    system_.AddDevice("1-2", {"idVendor", std::string("serial=") + kSerialNumber});
    system_.AddNode("tty", "ttyUSB0", "1-2", node());
  }
  thread_ = std::thread([this] { Serve(); });
}

FaultyInstrument::~FaultyInstrument() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  if (listener_) listener_->Shutdown();
  Signal(end_of_fault_, kOften);
  thread_.join();
  close(end_of_fault_);
}

std::string FaultyInstrument::Resource() const {
  switch (port_) {
    case Port::kTcp:
      return "TCPIP::127.0.0.1::" + std::to_string(listener_->port()) + "::SOCKET";
    case Port::kCom:
      return "ASRL" + node() + "::INSTR";
    case Port::kRs485:
      return "ASRL" + node() + "::RS485::1";
    case Port::kUsbLine:
      break;
  }
  return std::string("USB::") + kSerialNumber + "::INSTR";
}

std::map<std::string, std::string> FaultyInstrument::Environment() const {
  return {{"KOLVANE_COM1", node()}, {"KOLVANE_SYSFS", system_.root()}};
}

void FaultyInstrument::LinkLine() {
  pty_ = std::make_unique<base::Pty>();
  // Between connections the line must not echo what the instrument still sends.
  termios settings{};
  tcgetattr(pty_->slave(), &settings);
  cfmakeraw(&settings);
  tcsetattr(pty_->slave(), TCSANOW, &settings);
  const std::string fresh = folder_.Path("fresh");
  std::filesystem::create_symlink(pty_->node(), fresh);
  std::filesystem::rename(fresh, node());
}

int FaultyInstrument::NextConnection() {
  if (!listener_) return pty_->master();
  pollfd entry{listener_->fd(), POLLIN, 0};
  poll(&entry, 1, -1);
  return IsStopping() ? -1 : listener_->Accept();
}

void FaultyInstrument::Serve() {
  // In this thread only: programs that the test starts must not inherit the blocked signal.
  sigset_t pipe;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
  for (int fd = NextConnection(); fd >= 0 && !IsStopping(); fd = NextConnection()) {
    Wire wire(fd, end_of_fault_);
    ServeConnection(wire);
    EndConnection(fd);
    NoteEndOfFault();
    Note(ends_);
  }
}

void FaultyInstrument::EndConnection(int fd) {
  if (!pty_) {
    close(fd);
  } else {
    // The new line exists before the old one ends, so that a program that notices the end finds it.
    const std::unique_ptr<base::Pty> old = std::move(pty_);
    LinkLine();
  }
}

void FaultyInstrument::ServeConnection(Wire& wire) {
  while (const auto line = wire.Line()) {
    {
      const std::lock_guard lock(mutex_);
      lines_.push_back(*line);
    }
    const bool fault = *line == "FAULT" || line->size() > Wire::kLongLine;
    if (fault ? RunFault(wire) == After::kEnd : !wire.Send(*line + "\r\n")) return;
    Note(answered_);
  }
}

After FaultyInstrument::RunFault(Wire& wire) {
  Note(started_);
  const After after = fault_(wire);
  if (after == After::kContinue) NoteEndOfFault();
  return after;
}

void FaultyInstrument::NoteEndOfFault() {
  const std::lock_guard lock(mutex_);
  if (stopping_) return;
  Unsignal(end_of_fault_);
  ended_ = started_;
  changed_.notify_all();
}

bool FaultyInstrument::IsStopping() {
  const std::lock_guard lock(mutex_);
  return stopping_;
}

void FaultyInstrument::Note(int& counter) {
  const std::lock_guard lock(mutex_);
  ++counter;
  changed_.notify_all();
}

void FaultyInstrument::EndFault() {
  std::unique_lock lock(mutex_);
  if (ended_ < started_) Signal(end_of_fault_, 1);
  changed_.wait(lock, [&] { return ended_ >= started_; });
}

void FaultyInstrument::AwaitEnds(int count) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return ends_ >= count; });
}

void FaultyInstrument::AwaitFault() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return started_ > 0; });
}

void FaultyInstrument::AwaitAnswers(int count) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return answered_ >= count; });
}

std::vector<std::string> FaultyInstrument::lines() {
  const std::lock_guard lock(mutex_);
  return lines_;
}

}  // namespace kolvane::faults
