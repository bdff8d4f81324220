#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "device/recording_host.h"
#include "gui/shown_terminal.h"
#include "kolvane/MainClass.h"

namespace kolvane {

using gui::PaneText;

/// A host that has a QApplication, with a device that both host modes reach over TCP/IP.
class HostTest : public testing::Test {
 protected:
  HostTest() {
    options_.SettingsFile = SettingsFile();
    terminal_.SetOptions(options_);
    host_->script.properties = {{2, std::int16_t{100}}, {3, 9600},
                                {4, std::int16_t{0}},   {5, std::int16_t{8}},
                                {6, std::int16_t{1}},   {9, "10.0.0.9"}};
    host_->kind = std::int16_t{100};
    host_->address = "10.0.0.8";
  }

  // Opens the terminal, runs `use` in it once it is shown, and closes it.
  void Open(std::int16_t oper_mode, const std::function<void(QMainWindow&)>& use) {
    terminal_.InitTerminal(host_);
    bool used = false;
    QTimer::singleShot(0, qApp, [&] {
      QMainWindow* window = gui::ShownTerminal();
      ASSERT_NE(window, nullptr);
      use(*window);
      used = true;
      window->close();
    });
    terminal_.OpenTerminal(oper_mode, 3);
    EXPECT_TRUE(used);
  }

  // Fills the command list from row 1 on and plays it.
  static void PlayList(QMainWindow& window, const std::vector<std::string>& rows) {
    auto* model = window.findChild<QAbstractItemView*>("CommandScript")->model();
    for (int row = 0; const std::string& text : rows)
      model->setData(model->index(row++, 1), QString::fromStdString(text));
    window.findChild<QAction*>("TB_PLAY")->trigger();
  }

  auto Count(const std::string& call) const {
    return std::count(host_->script.calls.begin(), host_->script.calls.end(), call);
  }

  std::string SettingsFile() const { return dir_.path().toStdString() + "/Kolvane.ini"; }

  QTemporaryDir dir_;
  TerminalOptions options_;
  std::shared_ptr<device::RecordingHost> host_ = std::make_shared<device::RecordingHost>();
  MainClass terminal_;
};

}  // namespace kolvane
