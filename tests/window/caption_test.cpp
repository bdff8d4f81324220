#include "window/status_bars.h"

#include <gtest/gtest.h>

namespace kolvane::window {
namespace {

TEST(Caption, NamesListAndConnectionIfAny) {
  EXPECT_EQ(Caption("", ""), "Kolvane Terminal");
  EXPECT_EQ(Caption("/home/a/test.CMD", ""), "Kolvane Terminal - test.CMD");
  EXPECT_EQ(Caption("", "COM1"), "Kolvane Terminal - COM1");
  EXPECT_EQ(Caption("test.CMD", "TCP/IP: 10.0.0.5, Port 7"),
            "Kolvane Terminal - test.CMD - TCP/IP: 10.0.0.5, Port 7");
}

TEST(Caption, HasThePlaceholderOfTheMarkAfterAModifiedList) {
  EXPECT_EQ(Caption("", "", true), "Kolvane Terminal[*]");
  EXPECT_EQ(Caption("/a/test.CMD", "COM1", true), "Kolvane Terminal - test.CMD[*] - COM1");
}

TEST(Caption, IsPrintedWithoutTheMark) {
  QWidget window;
  window.setWindowTitle(Caption("a.CMD", "COM1", true));
  EXPECT_EQ(CaptionWithoutPlaceholder(window), "Kolvane Terminal - a.CMD - COM1");
  window.setWindowTitle(Caption("a[*].CMD", "", true));
  EXPECT_EQ(window.windowTitle(), "Kolvane Terminal - a[*][*].CMD[*]");
  EXPECT_EQ(CaptionWithoutPlaceholder(window), "Kolvane Terminal - a[*].CMD");
}

}  // namespace
}  // namespace kolvane::window
