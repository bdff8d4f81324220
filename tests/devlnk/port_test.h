#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

#include "devlnk/partner.h"

namespace kolvane::devlnk {

/// What one QDX_ReadPort did. `bytes` is what arrived if the call succeeded.
struct ReadResult {
  std::int32_t status = 0;
  std::string bytes;
  std::int32_t queued = 0;
};

/// Fails the test if the call changed more of its buffer than it delivered.
ReadResult ReadPort(std::int32_t count, std::int16_t terminator);
/// The bytes of a read that must succeed.
std::string Answer(std::int32_t count = 16000, std::int16_t terminator = '\n');
/// The status of a read.
std::int32_t AnswerStatus(std::int32_t count = 16000, std::int16_t terminator = '\n');

struct Kind {
  const char* name;
  std::unique_ptr<Partner> (*make)();
};

inline void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

inline constexpr Kind kKinds[] = {
    {"Tcp4", MakeTcp4}, {"Tcp6", MakeTcp6}, {"Com", MakeCom}, {"Rs485", MakeRs485}, {"UsbLine", MakeUsbLine}};

inline std::string NameOf(const testing::TestParamInfo<Kind>& info) { return info.param.name; }

/// One test on every kind of port: the port is open towards a partner, with a time-out that is never reached.
class PortTest : public testing::TestWithParam<Kind> {
 protected:
  void SetUp() override;
  void TearDown() override { QDX_ClosePort(); }

  std::unique_ptr<Partner> partner_ = GetParam().make();
};

}  // namespace kolvane::devlnk
