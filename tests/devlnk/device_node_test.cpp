#include "devlnk/device_node.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "base/temp_folder.h"

namespace kolvane::devlnk {
namespace {

TEST(DeviceNode, IsLockedUntilItIsClosed) {
  const base::TempFolder folder;
  const std::string path = folder.Path("node");
  base::WriteBytes(path, "");
  std::unique_ptr<DeviceNode> node;
  ASSERT_EQ(OpenDeviceNode(path, 0, node), Status::kOk);
  std::unique_ptr<DeviceNode> second;
  EXPECT_EQ(OpenDeviceNode(path, 0, second), Status::kBusy);

  // A forked process has the node's descriptor.
  const pid_t child = fork();
  if (child == 0) {
    pause();
    _exit(0);
  }
  node.reset();
  EXPECT_EQ(OpenDeviceNode(path, 0, second), Status::kOk);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
}

}  // namespace
}  // namespace kolvane::devlnk
