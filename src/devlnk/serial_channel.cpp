#include "devlnk/serial_channel.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "devlnk/stream_channel.h"

namespace kolvane::devlnk {
namespace {

struct Rate {
  std::uint32_t baud;
  tcflag_t code;
};

constexpr Rate kRates[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},         {150, B150},
    {200, B200},         {300, B300},         {600, B600},         {1200, B1200},       {1800, B1800},
    {2400, B2400},       {4800, B4800},       {9600, B9600},       {19200, B19200},     {38400, B38400},
    {57600, B57600},     {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000}, {1500000, B1500000},
    {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000}, {3500000, B3500000}, {4000000, B4000000},
};

// Rates without a code are set by number; the others keep their code, which other programs can read.
tcflag_t RateCode(std::uint32_t baud) {
  for (const Rate& rate : kRates) {
    if (rate.baud == baud) return rate.code;
  }
  return BOTHER;
}

constexpr cc_t kXon = 0x11;
constexpr cc_t kXoff = 0x13;

tcflag_t ParityFlags(Parity parity) {
  switch (parity) {
    case Parity::kEven:
      return PARENB;
    case Parity::kOdd:
      return PARENB | PARODD;
    case Parity::kNone:
      break;
  }
  return 0;
}

std::optional<Parity> ParityFrom(std::string_view text) {
  if (text.empty() || text == "n" || text == "N") return Parity::kNone;
  if (text == "e" || text == "E") return Parity::kEven;
  if (text == "o" || text == "O") return Parity::kOdd;
  return std::nullopt;
}

constexpr std::int32_t kLongestFinishMs = 10'000;
constexpr std::int32_t kMaxStallMs = 1000;
constexpr std::int32_t kShortestStepMs = 50;

// Does not wait for a carrier, and does not become the process's controlling terminal.
base::Descriptor OpenNode(const std::string& node) {
  return base::OpenDescriptor(node, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}

// A node without hardware can be opened, but returns EIO.
Status StatusOfOpen(int error) { return error == EIO ? Status::kNoSuchNode : StatusFromErrno(error); }

// The superuser can bypass TIOCEXCL, so careful programs take this lock too.
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
  return static_cast<std::int32_t>(std::min<std::int64_t>(needed, kMaxStallMs));
}

class SerialChannel final : public StreamChannel {
 public:
  explicit SerialChannel(std::unique_ptr<SerialLine> line)
      : StreamChannel(kSerialSliceMs), line_(std::move(line)) {}

  bool Abandon() override {
    line_->Abandon();
    return true;
  }
  void DiscardInput(Deadline&) override { line_->DiscardInput(); }
  Status SetLine(const PortRequest& request) override {
    const auto parameters = SerialParametersFrom(request);
    return parameters ? line_->Apply(*parameters) : Status::kInvalidArgument;
  }

 private:
  [[gnu::hot]] ssize_t ReadWaiting(std::span<char> room) override {
    return read(line_->waiting_fd(), room.data(), room.size());
  }
  ssize_t ReadNow(std::span<char> room) override {
    return read(line_->prompt_fd(), room.data(), room.size());
  }
  [[gnu::hot]] ssize_t WriteNow(std::string_view bytes) override {
    return write(line_->prompt_fd(), bytes.data(), bytes.size());
  }
  int poll_fd() const override { return line_->prompt_fd(); }

  // A line ends only with a hang-up: the adapter was unplugged, or the other end of a pty was closed.
  Status EndOfInput() const override { return Status::kConnectionLost; }
  Status Failure(int error) const override { return StatusOfTransfer(error); }

  std::unique_ptr<SerialLine> line_;
};

enum class Wiring { kRs232, kRs485 };

Opened Open(const std::string& node, const SerialParameters& parameters, Wiring wiring) {
  std::unique_ptr<SerialLine> line;
  Status status = SerialLine::Open(node, line);
  if (status == Status::kOk) status = line->Apply(parameters);
  if (status != Status::kOk) return {status, nullptr};
  if (wiring == Wiring::kRs485) {
    line->UseRs485();
  } else {
    line->RaiseModemLines();
  }
  line->DiscardInput();
  return {Status::kOk, std::make_unique<SerialChannel>(std::move(line))};
}

Opened OpenRequested(const PortRequest& request, Wiring wiring) {
  const auto parameters = SerialParametersFrom(request);
  if (!parameters) return {Status::kInvalidArgument, nullptr};
  return Open(NodeOf(request), *parameters, wiring);
}

}  // namespace

std::optional<SerialParameters> SerialParametersFrom(const PortRequest& request) {
  const auto parity = ParityFrom(request.text);
  if (request.baud < 1 || !parity) return std::nullopt;
  return SerialParameters{static_cast<std::uint32_t>(request.baud), *parity, request.data_bits == 7,
                          request.stop_bits == 2, request.flow};
}

termios2 SettingsFor(const SerialParameters& parameters, const termios2& before) {
  termios2 settings{};
  settings.c_line = before.c_line;
  settings.c_cflag = (before.c_cflag & HUPCL) | CREAD | CLOCAL | RateCode(parameters.baud) |
                     ParityFlags(parameters.parity) | (parameters.seven_data_bits ? CS7 : CS8) |
                     (parameters.two_stop_bits ? CSTOPB : 0) |
                     (parameters.flow == FlowControl::kRtsCts ? CRTSCTS : 0);
  settings.c_ispeed = parameters.baud;
  settings.c_ospeed = parameters.baud;
  // With parity a damaged character arrives as NUL: a visible error instead of a missing digit.
  settings.c_iflag = IGNBRK | (parameters.parity == Parity::kNone ? 0 : INPCK);
  if (parameters.flow == FlowControl::kXonXoff) settings.c_iflag |= IXON | IXOFF;
  settings.c_cc[VSTART] = kXon;
  settings.c_cc[VSTOP] = kXoff;
  settings.c_cc[VMIN] = 0;
  settings.c_cc[VTIME] = kSerialSliceMs / 100;
  return settings;
}

serial_rs485 Rs485SettingsFor(const serial_rs485& before) {
  serial_rs485 bus = before;
  bus.flags |= SER_RS485_ENABLED | SER_RS485_RTS_ON_SEND;
  bus.flags &= ~static_cast<std::uint32_t>(SER_RS485_RTS_AFTER_SEND | SER_RS485_RX_DURING_TX);
  return bus;
}

bool RateMatches(std::uint32_t wanted, std::uint32_t reported) {
  const std::uint64_t difference = wanted > reported ? wanted - reported : reported - wanted;
  return difference * 100 <= std::uint64_t{wanted} * 3;
}

void FinishOutput(OutputQueue& queue, std::uint32_t baud) {
  std::int32_t waited = 0;
  std::int32_t stalled_ms = 0;
  int before = queue.Bytes();
  std::int32_t step = TimeToSend(before, baud);
  while (before > 0) {
    if (stalled_ms >= kMaxStallMs || waited >= kLongestFinishMs) return queue.Drop();
    queue.Wait(step);
    const int left = queue.Bytes();
    waited += step;
    stalled_ms = left < before ? 0 : stalled_ms + step;
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

SerialLine::~SerialLine() {
  if (abandoned_) return;
  LineOutput output(prompt_.get());
  // Otherwise restoring the settings and closing would wait for output that the other side blocks.
  if (baud_ != 0) FinishOutput(output, baud_);
  ioctl(prompt_.get(), TCSETSW2, &before_);
  if (rs485_before_) ioctl(prompt_.get(), TIOCSRS485, &*rs485_before_);
  if (!exclusive_before_) ioctl(prompt_.get(), TIOCNXCL);
  flock(prompt_.get(), LOCK_UN);  // closing does not suffice while a forked process has the descriptor
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

// Instruments take the asserted lines as "computer present"; missing lines are not a failure.
void SerialLine::RaiseModemLines() {
  const int lines = TIOCM_DTR | TIOCM_RTS;
  ioctl(prompt_.get(), TIOCMBIS, &lines);
}

void SerialLine::DiscardInput() { ioctl(prompt_.get(), TCFLSH, TCIFLUSH); }

Opened OpenSerial(const PortRequest& request, Deadline&) { return OpenRequested(request, Wiring::kRs232); }

Opened OpenRs485(const PortRequest& request, Deadline&) { return OpenRequested(request, Wiring::kRs485); }

Opened OpenSerialNode(const std::string& node, const SerialParameters& parameters) {
  return Open(node, parameters, Wiring::kRs232);
}

}  // namespace kolvane::devlnk
