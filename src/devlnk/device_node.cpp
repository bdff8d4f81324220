#include "devlnk/device_node.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

#include "base/descriptor.h"

namespace kolvane::devlnk {
namespace {

class SystemNode final : public DeviceNode {
 public:
  explicit SystemNode(base::Descriptor descriptor) : descriptor_(std::move(descriptor)) {}
  // Closing does not suffice while a forked process has the descriptor.
  ~SystemNode() override { flock(descriptor_.get(), LOCK_UN); }
  SystemNode(const SystemNode&) = delete;
  SystemNode& operator=(const SystemNode&) = delete;

  int Control(unsigned long request, void* argument) override {
    return ioctl(descriptor_.get(), request, argument);
  }
  ssize_t Read(std::span<char> room) override { return read(descriptor_.get(), room.data(), room.size()); }
  ssize_t Write(std::string_view bytes) override {
    return write(descriptor_.get(), bytes.data(), bytes.size());
  }
  void Wait(Deadline& deadline) override { WaitFor(descriptor_.get(), POLLIN, deadline); }

 private:
  base::Descriptor descriptor_;
};

}  // namespace

Status OpenDeviceNode(const std::string& path, int flags, std::unique_ptr<DeviceNode>& node) {
  base::Descriptor descriptor = base::OpenDescriptor(path, O_RDWR | O_NOCTTY | O_CLOEXEC | flags);
  if (!descriptor) return StatusFromErrno(errno);
  if (flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0)
    return errno == EWOULDBLOCK ? Status::kBusy : StatusFromErrno(errno);
  node = std::make_unique<SystemNode>(std::move(descriptor));
  return Status::kOk;
}

}  // namespace kolvane::devlnk
