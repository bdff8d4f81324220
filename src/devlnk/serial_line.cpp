#include "devlnk/serial_line.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>

#include "devlnk/stream_channel.h"

namespace kolvane::devlnk {
namespace {

constexpr std::int32_t kLongestFinishMs = 10'000;
constexpr std::int32_t kLongestStandstillMs = 1000;
constexpr std::int32_t kShortestStepMs = 50;

// Not to wait for a carrier, and not to become the process's controlling terminal.
base::Descriptor OpenNode(const std::string& node) {
  return base::OpenDescriptor(node, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}

// A node without hardware behind it can be opened, but answers EIO.
Status StatusOfOpen(int error) { return error == EIO ? Status::kNoSuchNode : StatusFromErrno(error); }

// The superuser passes TIOCEXCL, so programs that care also take this lock.
Status Lock(int fd) {
  if (flock(fd, LOCK_EX | LOCK_NB) == 0) return Status::kOk;
  return errno == EWOULDBLOCK ? Status::kBusy : StatusOfOpen(errno);
}

class LineOutput final : public OutputQueue {
 public:
  explicit LineOutput(int fd) : fd_(fd) {}

  int Bytes() override {
    int queued = 0;
    return ioctl(fd_, TIOCOUTQ, &queued) == 0 ? queued : 0;
  }
  void Wait(std::int32_t milliseconds) override { SleepMs(milliseconds); }
  void Drop() override { ioctl(fd_, TCFLSH, TCOFLUSH); }

 private:
  int fd_;
};

std::int32_t TimeToSend(int bytes, std::uint32_t baud) {
  constexpr std::int64_t kBitsOfCharacter = 12;
  const std::int64_t needed = bytes * kBitsOfCharacter * 1000 / baud + 10;
  return static_cast<std::int32_t>(std::min<std::int64_t>(needed, kLongestStandstillMs));
}

}  // namespace

void FinishOutput(OutputQueue& queue, std::uint32_t baud) {
  std::int32_t waited = 0;
  std::int32_t stood_still = 0;
  int before = queue.Bytes();
  std::int32_t step = TimeToSend(before, baud);
  while (before > 0) {
    if (stood_still >= kLongestStandstillMs || waited >= kLongestFinishMs) return queue.Drop();
    queue.Wait(step);
    const int left = queue.Bytes();
    waited += step;
    stood_still = left < before ? 0 : stood_still + step;
    before = left;
    step = std::max(TimeToSend(left, baud), kShortestStepMs);
  }
}

Status SerialLine::Open(const std::string& node, std::unique_ptr<SerialLine>& line) {
  base::Descriptor prompt = OpenNode(node);
  if (!prompt) return StatusOfOpen(errno);
  termios2 before{};
  if (ioctl(prompt.get(), TCGETS2, &before) != 0) return StatusOfOpen(errno);
  const Status locked = Lock(prompt.get());
  if (locked != Status::kOk) return locked;
  base::Descriptor waiting = OpenNode(node);
  if (!waiting) return StatusOfOpen(errno);
  MakeBlocking(waiting.get());
  line.reset(new SerialLine(std::move(prompt), std::move(waiting), before));
  return Status::kOk;
}

SerialLine::SerialLine(base::Descriptor prompt, base::Descriptor waiting, const termios2& before)
    : prompt_(std::move(prompt)), waiting_(std::move(waiting)), before_(before) {
  int exclusive = 0;
  exclusive_before_ = ioctl(prompt_.get(), TIOCGEXCL, &exclusive) == 0 && exclusive != 0;
  ioctl(prompt_.get(), TIOCEXCL);
}

// Restoring the settings and closing would wait on output that stands still.
SerialLine::~SerialLine() {
  LineOutput output(prompt_.get());
  if (baud_ != 0) FinishOutput(output, baud_);
  ioctl(prompt_.get(), TCSETSW2, &before_);
  if (rs485_before_) ioctl(prompt_.get(), TIOCSRS485, &*rs485_before_);
  if (!exclusive_before_) ioctl(prompt_.get(), TIOCNXCL);
}

Status SerialLine::Apply(const SerialParameters& parameters) {
  LineOutput output(prompt_.get());
  if (baud_ != 0) FinishOutput(output, baud_);
  const termios2 wanted = SettingsFor(parameters, before_);
  termios2 reported{};
  if (ioctl(prompt_.get(), TCSETS2, &wanted) != 0) {
    return errno == EINVAL ? Status::kInvalidArgument : StatusOfOpen(errno);
  }
  if (ioctl(prompt_.get(), TCGETS2, &reported) != 0) return StatusOfOpen(errno);
  baud_ = parameters.baud;
  return RateMatches(parameters.baud, reported.c_ospeed) ? Status::kOk : Status::kInvalidArgument;
}

void SerialLine::UseRs485() {
  serial_rs485 before{};
  if (ioctl(prompt_.get(), TIOCGRS485, &before) != 0) return;
  serial_rs485 bus = Rs485SettingsFor(before);
  if (ioctl(prompt_.get(), TIOCSRS485, &bus) == 0) rs485_before_ = before;
}

// Instruments take the asserted lines as "the computer is there"; lines that do not exist are no failure.
void SerialLine::RaiseModemLines() {
  const int lines = TIOCM_DTR | TIOCM_RTS;
  ioctl(prompt_.get(), TIOCMBIS, &lines);
}

void SerialLine::DiscardInput() { ioctl(prompt_.get(), TCFLSH, TCIFLUSH); }

}  // namespace kolvane::devlnk
