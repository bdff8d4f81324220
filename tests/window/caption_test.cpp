#include "window/caption.h"

#include <gtest/gtest.h>

namespace kolvane::window {
namespace {

TEST(Caption, NamesListAndConnectionWhereThereAreAny) {
  EXPECT_EQ(Caption("", ""), "Kolvane Terminal");
  EXPECT_EQ(Caption("/home/a/test.CMD", ""), "Kolvane Terminal - test.CMD");
  EXPECT_EQ(Caption("", "COM1"), "Kolvane Terminal - COM1");
  EXPECT_EQ(Caption("test.CMD", "TCP/IP: 10.0.0.5, Port 7"),
            "Kolvane Terminal - test.CMD - TCP/IP: 10.0.0.5, Port 7");
}

}  // namespace
}  // namespace kolvane::window
