#include "app/listings.h"

#include <gtest/gtest.h>

namespace kolvane::app {
namespace {

TEST(PortTable, IsEmptyWithoutPorts) { EXPECT_EQ(PortTable({}), ""); }

TEST(PortTable, AlignsItsColumns) {
  EXPECT_EQ(PortTable({{"ASRL1::INSTR", "/dev/ttyS0", "serial port"},
                       {"USB::LONGER 1::INSTR", "/dev/usbtmc0", "Bridge"},
                       {"", "", ""}}),
            "ASRL1::INSTR          /dev/ttyS0    serial port\n"
            "USB::LONGER 1::INSTR  /dev/usbtmc0  Bridge\n"
            "-                     -             -\n");
}

}  // namespace
}  // namespace kolvane::app
