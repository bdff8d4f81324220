#include "devlnk/serial_channel.h"

#include <unistd.h>

#include <cerrno>

#include "devlnk/serial_line.h"
#include "devlnk/stream_channel.h"

namespace kolvane::devlnk {
namespace {

class SerialChannel final : public StreamChannel {
 public:
  explicit SerialChannel(std::unique_ptr<SerialLine> line)
      : StreamChannel(kSerialSliceMs), line_(std::move(line)) {}

  void DiscardInput(Deadline&) override { line_->DiscardInput(); }
  Status SetLine(const PortRequest& request) override {
    const auto parameters = SerialParametersFrom(request);
    return parameters ? line_->Apply(*parameters) : Status::kInvalidArgument;
  }

 private:
  ssize_t ReadWaiting(std::span<char> room) override {
    return read(line_->waiting_fd(), room.data(), room.size());
  }
  ssize_t ReadNow(std::span<char> room) override {
    return read(line_->prompt_fd(), room.data(), room.size());
  }
  ssize_t WriteNow(std::string_view bytes) override {
    return write(line_->prompt_fd(), bytes.data(), bytes.size());
  }
  int poll_fd() const override { return line_->prompt_fd(); }

  // A line ends only with a hang-up: the adapter was unplugged, or the other end of a pty was closed.
  Status EndOfInput() const override { return Status::kConnectionLost; }
  Status Failure(int error) const override {
    const bool gone = error == EIO || error == ENXIO || error == ENODEV;
    return gone ? Status::kConnectionLost : StatusFromErrno(error);
  }

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

Opened OpenAsAsked(const PortRequest& request, Wiring wiring) {
  const auto parameters = SerialParametersFrom(request);
  if (!parameters) return {Status::kInvalidArgument, nullptr};
  return Open(NodeOf(request), *parameters, wiring);
}

}  // namespace

Opened OpenSerial(const PortRequest& request, Deadline&) { return OpenAsAsked(request, Wiring::kRs232); }

Opened OpenRs485(const PortRequest& request, Deadline&) { return OpenAsAsked(request, Wiring::kRs485); }

Opened OpenSerialNode(const std::string& node, const SerialParameters& parameters) {
  return Open(node, parameters, Wiring::kRs232);
}

}  // namespace kolvane::devlnk
