#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "device/port_library.h"

namespace kolvane::device {

struct PortLibraryCase {
  const char* name;
  /// A library that accepts everything, with an answer of more than eight bytes waiting.
  std::function<std::shared_ptr<PortLibrary>()> make;
};

inline std::ostream& operator<<(std::ostream& out, const PortLibraryCase& library) {
  return out << library.name;
}
inline std::string NameOfLibrary(const testing::TestParamInfo<PortLibraryCase>& info) {
  return info.param.name;
}

/// What every PortLibrary promises; each program that has one instantiates it.
class PortLibraryContract : public testing::TestWithParam<PortLibraryCase> {
 protected:
  const std::shared_ptr<PortLibrary> library_ = GetParam().make();
};

TEST_P(PortLibraryContract, WhatItAcceptsIsNoFailure) {
  EXPECT_GE(library_->OpenPort(1, 9600, "", 8, 1, 512), 0);
  EXPECT_GE(library_->SetTimeout(1000), 0);
  EXPECT_GE(library_->SelectDevice(4), 0);
  EXPECT_GE(library_->SetGpibControlBlock(0, 0, 0, 10, 0, 0, 1000), 0);
  EXPECT_GE(library_->EnablePortIo(90), 0);
  EXPECT_GE(library_->ActivateInterpreter(200), 0);
  EXPECT_GE(library_->FlushInQueue(), 0);
  EXPECT_GE(library_->Delay(0), 0);
  EXPECT_GE(library_->MaxUsbDevices(), 0);
  std::string slots(64 * 100, ' ');
  EXPECT_GE(library_->ScanUsbDevices(100, slots.data()), 0);
  EXPECT_GE(library_->CloseInterpreter(1, 1), 0);
  EXPECT_GE(library_->ClosePort(), 0);
}

TEST_P(PortLibraryContract, AReadFillsNoMoreThanItWasGiven) {
  EXPECT_GE(library_->WritePort("*IDN?\n"), 0);
  std::string buffer(16, '\x7F');
  EXPECT_GE(library_->ReadPort(buffer.data(), 8, 10), 0);
  EXPECT_NE(buffer.substr(0, 8), std::string(8, '\x7F'));
  EXPECT_EQ(buffer.substr(8), std::string(8, '\x7F'));
}

TEST_P(PortLibraryContract, RefusesANodeWhereItTakesNone) {
  EXPECT_EQ(library_->SetNode(1, "/dev/ttyS0") >= 0, library_->TakesNode());
}

}  // namespace kolvane::device
