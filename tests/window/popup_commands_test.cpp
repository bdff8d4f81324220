#include "window/menus.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kolvane::window {
namespace {

class RecordingTarget final : public EditTarget {
 public:
  void Copy() override { calls.push_back("Copy"); }
  void Cut() override { calls.push_back("Cut"); }
  void Paste() override { calls.push_back("Paste"); }
  void Delete() override { calls.push_back("Delete"); }
  void SelectAll() override { calls.push_back("SelectAll"); }
  void ClearAll() override { calls.push_back("ClearAll"); }
  void Open() override { calls.push_back("Open"); }
  void Print() override { calls.push_back("Print"); }
  void ChooseFont() override { calls.push_back("ChooseFont"); }
  void ChooseBackColor() override { calls.push_back("ChooseBackColor"); }
  std::vector<std::string> calls;
};

class PopupCommandsTest : public testing::Test {
 protected:
  void PressAll() {
    for (const char* item : {"mnuCopy", "mnuCut", "mnuPaste", "mnuDelete", "mnuSelectAll", "mnuClearAll",
                             "mnuOpen", "mnuPrint", "mnuFont", "mnuBackColor"})
      menus_.Item(item)->trigger();
  }

  const std::vector<std::string> all_ = {"Copy",     "Cut",  "Paste", "Delete",     "SelectAll",
                                         "ClearAll", "Open", "Print", "ChooseFont", "ChooseBackColor"};
  QMainWindow window_;
  Menus menus_{&window_};
  MessagePrompt prompt_{&window_};
  RecordingTarget pane_;
  RecordingTarget grid_;
  PopupCommands popup_{menus_, prompt_, pane_, &window_};
};

TEST_F(PopupCommandsTest, ActOnTheFirstTargetUntilAnotherIsSet) {
  PressAll();
  EXPECT_EQ(pane_.calls, all_);
  EXPECT_TRUE(grid_.calls.empty());
}

TEST_F(PopupCommandsTest, FollowTheEditTarget) {
  popup_.SetEditTarget(grid_);
  PressAll();
  EXPECT_EQ(grid_.calls, all_);
  EXPECT_TRUE(pane_.calls.empty());
  popup_.SetEditTarget(pane_);
  menus_.Item("mnuCopy")->trigger();
  EXPECT_EQ(pane_.calls, std::vector<std::string>{"Copy"});
}

TEST_F(PopupCommandsTest, WhileTheWindowWaitsOnlyTextCanBeSelectedAndCopied) {
  prompt_.SetLinks({.is_waiting = [] { return true; }});
  PressAll();
  EXPECT_EQ(pane_.calls, (std::vector<std::string>{"Copy", "SelectAll"}));
}

TEST_F(PopupCommandsTest, OpeningSetsTheEditTargetAndEnablesPaste) {
  menus_.Item("mnuPaste")->setEnabled(false);
  popup_.OpenPopup(grid_, {10, 10});
  EXPECT_TRUE(menus_.popup->isVisible());
  EXPECT_TRUE(menus_.Item("mnuPaste")->isEnabled());
  menus_.Item("mnuPaste")->trigger();
  EXPECT_EQ(grid_.calls, std::vector<std::string>{"Paste"});
  menus_.popup->close();
}

}  // namespace
}  // namespace kolvane::window
