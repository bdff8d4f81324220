// The golden command lists, run in the window.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/temp_folder.h"
#include "device/port_library_contract.h"
#include "gui/box_answers.h"
#include "script/list_names.h"
#include "window/dialogue_port.h"
#include "window/window_records.h"

namespace kolvane::window {
namespace {

namespace fs = std::filesystem;
using device::PortLibraryCase;
using device::PortLibraryContract;

class ListWindowTest : public testing::TestWithParam<std::string>, protected WindowRecords {
 protected:
  ListWindowTest() {
    connection_.port_code = device::port_code::kTcpIp;
    device_.connected = true;
    fs::current_path(folder_.Path("."));
    window_.Load();
    window_.show();
    boxes_.Start();
  }
  ~ListWindowTest() override { fs::current_path("/"); }

  static std::string Path(const char* kind) {
    return std::string(KOLVANE_TEST_LISTS) + "/" + GetParam() + "." + kind;
  }

  std::string PaneLines() {
    QString text = window_.findChild<pane::OutputPane*>()->plainText();
    text.remove(0, text.startsWith('\n') ? 1 : 0);
    return text.isEmpty() ? "" : text.toStdString() + "\n";
  }

  std::string Messages() const {
    std::string lines;
    for (const QString& text : boxes_.texts()) lines += text.toStdString() + "\n";
    return lines;
  }

  base::TempFolder folder_;
  DialoguePort port_{base::ReadBytes(Path("device"))};
  MainWindow window_{ContextWith(port_, "")};
  gui::BoxAnswers boxes_;
};

TEST_P(ListWindowTest, HasTheSameResultAsWithoutAWindow) {
  window_.findChild<pane::OutputPane*>()->clear();
  window_.OpenCommandFile(Path("CMD"));
  window_.findChild<QAction*>("TB_PLAY")->trigger();
  EXPECT_EQ(port_.transcript(), base::ReadBytes(Path("device")));
  EXPECT_EQ(PaneLines(), base::ReadBytes(Path("pane")));
  EXPECT_EQ(Messages(), base::ReadBytes(Path("messages")));
  EXPECT_EQ(script_.run.ScriptRunning, 0);
  EXPECT_TRUE(window_.findChild<QToolBar*>("Toolbar1")->isEnabled());
}

INSTANTIATE_TEST_SUITE_P(Lists, ListWindowTest, testing::ValuesIn(script::ListNames()),
                         [](const auto& list) { return script::TestNameOf(list.param); });

INSTANTIATE_TEST_SUITE_P(
    Dialogue, PortLibraryContract,
    testing::Values(PortLibraryCase{
        "DialoguePort", [] { return std::make_shared<DialoguePort>("> *IDN?\\n\n< 1234567890\\r\\n\n"); }}),
    device::NameOfLibrary);

}  // namespace
}  // namespace kolvane::window
