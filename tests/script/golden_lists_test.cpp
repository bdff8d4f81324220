#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "base/temp_folder.h"
#include "device/device_contract.h"
#include "script/list_names.h"
#include "script/list_run.h"

namespace kolvane::script {
namespace {

namespace fs = std::filesystem;
using device::DeviceContract;

class GoldenListTest : public testing::TestWithParam<std::string> {
 protected:
  std::string Path(const char* kind) const {
    return std::string(KOLVANE_TEST_LISTS) + "/" + GetParam() + "." + kind;
  }

  /// Compares `text` with the file of `kind`, or renews the file; a missing file counts as an empty text.
  void Check(const char* kind, const std::string& text) const {
    if (std::getenv("KOLVANE_RENEW_LISTS") == nullptr) {
      EXPECT_EQ(text, base::ReadBytes(Path(kind))) << Path(kind);
    } else if (text.empty()) {
      fs::remove(Path(kind));
    } else {
      base::WriteBytes(Path(kind), text);
    }
  }
};

TEST_P(GoldenListTest, RunsAsItsFilesDescribe) {
  const ListRun run(Path("CMD"), base::ReadBytes(Path("device")));
  EXPECT_TRUE(run.loaded());
  Check("device", run.Dialogue());
  Check("pane", run.Pane());
  Check("messages", run.Messages());
  Check("log", run.Log());
}

INSTANTIATE_TEST_SUITE_P(Lists, GoldenListTest, testing::ValuesIn(ListNames()),
                         [](const auto& list) { return TestNameOf(list.param); });

TEST(DialogueTest, EscapesEverythingButPlainCharacters) {
  const std::string bytes("a\\\r\n\0\xFF z", 8);
  EXPECT_EQ(dialogue::Escaped(bytes), "a\\\\\\r\\n\\x00\\xFF z");
  EXPECT_EQ(dialogue::Unescaped(dialogue::Escaped(bytes)), bytes);
}

TEST(DialogueTest, RepliesBelongToTheCommandAboveThem) {
  EXPECT_EQ(dialogue::Replies("> A\\n\n< 1\\r\\n\n< 2\n> B\n> C\n< 3\n"),
            (std::vector<std::string>{"1\r\n2", "", "3"}));
}

class DialogueSetup final : public device::DeviceSetup {
 public:
  device::Device& device() override { return device_; }
  void Receive(const std::string& /*bytes*/) override { device_.Write("A", "\n", 0); }

 private:
  DialogueDevice device_{"> A\\n\n<  1,5 \\r\\n\n"};
};

INSTANTIATE_TEST_SUITE_P(Dialogue, DeviceContract,
                         testing::Values(device::DeviceCase{
                             .name = "DialogueDevice",
                             .make = [] { return std::make_unique<DialogueSetup>(); },
                             .can_fail = false,
                             .reads_binary = false}),
                         device::NameOf);

}  // namespace
}  // namespace kolvane::script
