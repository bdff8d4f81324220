#pragma once

#include <QComboBox>
#include <QTest>
#include <algorithm>

#include "window/window_fixture.h"

namespace kolvane::window {

/// A terminal window set up for TCP/IP, for typing commands.
class SendingFixture : public WindowFixture {
 protected:
  SendingFixture() { connection_.port_option = 8; }

  void Connect() {
    Press("TB_CONNECT");
    library_.calls.clear();
  }

  void Send(const QString& command) {
    Find<QComboBox>("cmbCommand")->setCurrentText(command);
    QTest::keyClick(Find<QComboBox>("cmbCommand"), Qt::Key_Return);
  }

  int Count(const std::string& call) {
    return static_cast<int>(std::count(library_.calls.begin(), library_.calls.end(), call));
  }
};

}  // namespace kolvane::window
