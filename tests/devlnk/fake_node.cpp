#include "devlnk/fake_node.h"

#include <linux/ppdev.h>
#include <linux/usb/tmc.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kolvane::devlnk {
namespace {

struct Request {
  unsigned long code;
  const char* name;
  std::size_t gives;  ///< bytes that the caller hands over
  std::size_t takes;  ///< bytes that the caller gets back
};

constexpr Request kRequests[] = {
    {PPCLAIM, "PPCLAIM", 0, 0},
    {PPRELEASE, "PPRELEASE", 0, 0},
    {PPNEGOT, "PPNEGOT", 4, 0},
    {PPSETMODE, "PPSETMODE", 4, 0},
    {PPGETMODES, "PPGETMODES", 0, 4},
    {PPCLRIRQ, "PPCLRIRQ", 0, 4},
    {USBTMC_IOCTL_CLEAR, "CLEAR", 0, 0},
    {USBTMC_IOCTL_SET_TIMEOUT, "TIMEOUT", 4, 0},
    {USBTMC_IOCTL_AUTO_ABORT, "AUTO_ABORT", 1, 0},
    {USBTMC488_IOCTL_READ_STB, "READ_STB", 0, 1},
};

class FakeNode final : public DeviceNode {
 public:
  explicit FakeNode(NodeScript& script) : script_(script) {}
  ~FakeNode() override { script_.calls.push_back("close"); }

  int Control(unsigned long code, void* argument) override {
    const auto* request = std::find_if(std::begin(kRequests), std::end(kRequests),
                                       [&](const Request& row) { return row.code == code; });
    if (request == std::end(kRequests)) return Fail(ENOTTY);
    std::uint32_t value = 0;
    if (request->gives > 0) std::memcpy(&value, argument, request->gives);
    script_.calls.push_back(request->name + (request->gives > 0 ? " " + std::to_string(value) : ""));
    if (const auto failing = script_.failing.find(request->name); failing != script_.failing.end())
      return Fail(failing->second);
    const std::uint32_t answer = script_.answers[request->name];
    if (request->takes > 0) std::memcpy(argument, &answer, request->takes);
    return 0;
  }
  ssize_t Read(std::span<char> room) override {
    script_.calls.push_back("read");
    const NodeStep step = Next(script_.reads, {"", script_.silence_error});
    std::copy_n(step.bytes.data(), std::min(step.bytes.size(), room.size()), room.data());
    return Result(step);
  }
  ssize_t Write(std::string_view bytes) override {
    script_.calls.push_back("write " + std::string(bytes));
    return Result(Next(script_.writes, {std::string(bytes)}));
  }
  void Wait(Deadline& deadline) override {
    script_.calls.push_back("wait");
    script_.wait_ms = deadline.total_ms();
  }

 private:
  static int Fail(int error) {
    errno = error;
    return -1;
  }
  static ssize_t Result(const NodeStep& step) {
    return step.error != 0 ? Fail(step.error) : static_cast<ssize_t>(step.bytes.size());
  }
  static NodeStep Next(std::deque<NodeStep>& steps, NodeStep otherwise) {
    if (steps.empty()) return otherwise;
    NodeStep step = steps.front();
    steps.pop_front();
    return step;
  }

  NodeScript& script_;
};

}  // namespace

std::unique_ptr<DeviceNode> MakeFakeNode(NodeScript& script) { return std::make_unique<FakeNode>(script); }

}  // namespace kolvane::devlnk
