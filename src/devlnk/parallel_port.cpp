#include "devlnk/parallel_port.h"

#include <fcntl.h>
#include <linux/parport.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>

#include "base/descriptor.h"

namespace kolvane::devlnk {
namespace {

// The driver only signals interrupts, which many instruments do not raise, so the port is polled as well.
constexpr std::int32_t kPollIntervalMs = 5;

struct ModeRow {
  ParallelMode mode;
  int transfer;           ///< how the kernel reads
  bool negotiates;        ///< negotiates with the instrument before use
  bool turns_data_lines;  ///< the port itself must be able to read through the data lines
};

// Interlink instruments run EPP cycles from power-on, and 8-bit instruments drive the data lines unasked:
// neither answers a negotiation.
constexpr ModeRow kModes[] = {
    {ParallelMode::kNibble, IEEE1284_MODE_NIBBLE, true, false},
    {ParallelMode::kBit8, IEEE1284_MODE_BYTE, false, true},
    {ParallelMode::kByte, IEEE1284_MODE_BYTE, true, true},
    {ParallelMode::kEpp, IEEE1284_MODE_EPP, true, false},
    {ParallelMode::kInterlink, IEEE1284_MODE_EPP, false, false},
};

const ModeRow& RowOf(ParallelMode mode) {
  return *std::find_if(std::begin(kModes), std::end(kModes),
                       [&](const ModeRow& row) { return row.mode == mode; });
}

class ParallelChannel final : public Channel {
 public:
  ParallelChannel(std::unique_ptr<DeviceNode> node, const ModeRow& row) : node_(std::move(node)), row_(row) {}
  ParallelChannel(const ParallelChannel&) = delete;
  ParallelChannel& operator=(const ParallelChannel&) = delete;
  ~ParallelChannel() override;

  /// To be called first.
  Status Claim();

  Received Read(std::span<char> room, Deadline& deadline) override;
  Status Write(std::string_view bytes, Deadline& deadline) override;

 private:
  enum class Direction { kNone, kToInstrument, kFromInstrument };

  bool one_mode() const { return row_.transfer == IEEE1284_MODE_EPP; }
  unsigned long mode_request() const { return row_.negotiates ? PPNEGOT : PPSETMODE; }
  int Request(unsigned long request, int value) { return node_->Control(request, &value); }
  bool Turn(Direction direction);
  void Pause(Deadline& deadline);

  std::unique_ptr<DeviceNode> node_;
  const ModeRow& row_;
  bool claimed_ = false;
  Direction direction_ = Direction::kNone;
};

ParallelChannel::~ParallelChannel() {
  if (!claimed_) return;
  if (direction_ != Direction::kNone) Request(mode_request(), IEEE1284_MODE_COMPAT);
  node_->Control(PPRELEASE, nullptr);
}

Status ParallelChannel::Claim() {
  if (node_->Control(PPCLAIM, nullptr) != 0) {
    // The driver returns EAGAIN if another process holds the port, and EIO if the port of the node has gone.
    return errno == EAGAIN ? Status::kBusy : errno == EIO ? Status::kNoSuchNode : StatusFromErrno(errno);
  }
  claimed_ = true;
  unsigned int abilities = 0;
  const bool known = node_->Control(PPGETMODES, &abilities) == 0;
  if (row_.turns_data_lines && known && (abilities & PARPORT_MODE_TRISTATE) == 0) return Status::kModeRefused;
  if (Turn(Direction::kFromInstrument)) return Status::kOk;
  return errno == ENODEV ? Status::kNoSuchNode : Status::kModeRefused;
}

// EPP cycles work in both directions; in the other modes commands are sent in compatibility mode.
bool ParallelChannel::Turn(Direction direction) {
  if (direction_ == direction || (one_mode() && direction_ != Direction::kNone)) return true;
  const bool reads = one_mode() || direction == Direction::kFromInstrument;
  if (Request(mode_request(), reads ? row_.transfer : IEEE1284_MODE_COMPAT) != 0) return false;
  direction_ = direction;
  return true;
}

void ParallelChannel::Pause(Deadline& deadline) {
  Deadline pace(std::min(kPollIntervalMs, deadline.RemainingMs()));
  node_->Wait(pace);
  deadline.Attend();
  // Reads and clears the interrupt count, which would otherwise end the next wait at once.
  Request(PPCLRIRQ, 0);
}

Received ParallelChannel::Read(std::span<char> room, Deadline& deadline) {
  if (!Turn(Direction::kFromInstrument)) return {0, StatusOfTransfer(errno)};
  for (;;) {
    const ssize_t got = node_->Read(room);
    if (got > 0) return {static_cast<std::size_t>(got)};
    if (got < 0 && !base::IsTransient(errno)) return {0, StatusOfTransfer(errno)};
    if (deadline.HasExpired()) return {};
    Pause(deadline);
  }
}

Status ParallelChannel::Write(std::string_view bytes, Deadline& deadline) {
  if (!Turn(Direction::kToInstrument)) return StatusOfTransfer(errno);
  while (!bytes.empty()) {
    const ssize_t sent = node_->Write(bytes);
    if (sent > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(sent));
      continue;
    }
    if (sent < 0 && !base::IsTransient(errno)) return StatusOfTransfer(errno);
    if (deadline.HasExpired()) return Status::kWriteTimeout;
    Pause(deadline);
  }
  return Status::kOk;
}

}  // namespace

std::optional<ParallelMode> ParallelModeFrom(std::int32_t number) {
  for (const ModeRow& row : kModes) {
    if (static_cast<std::int32_t>(row.mode) == number) return row.mode;
  }
  return std::nullopt;
}

Opened OpenParallelNode(std::unique_ptr<DeviceNode> node, ParallelMode mode) {
  auto channel = std::make_unique<ParallelChannel>(std::move(node), RowOf(mode));
  const Status status = channel->Claim();
  if (status != Status::kOk) return {status, nullptr};
  return {Status::kOk, std::move(channel)};
}

// Without O_NONBLOCK the driver's read would block until there is a byte.
Opened OpenParallel(const PortRequest& request, Deadline&) {
  const auto mode = ParallelModeFrom(request.baud);
  if (!mode) return {Status::kInvalidArgument, nullptr};
  std::unique_ptr<DeviceNode> node;
  const Status status = OpenDeviceNode(NodeOf(request), O_NONBLOCK, node);
  if (status != Status::kOk) return {status, nullptr};
  return OpenParallelNode(std::move(node), *mode);
}

}  // namespace kolvane::devlnk
