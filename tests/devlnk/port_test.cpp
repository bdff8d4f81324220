#include "devlnk/port_test.h"

namespace kolvane::devlnk {

ReadResult ReadPort(std::int32_t count, std::int16_t terminator) {
  std::string buffer(static_cast<std::size_t>(count) + 8, '#');
  std::int32_t delivered = -1;
  ReadResult result;
  result.status = QDX_ReadPort(buffer.data(), count, &delivered, &result.queued, terminator);
  const auto size = static_cast<std::size_t>(result.status < 0 ? 0 : delivered);
  EXPECT_LE(size, static_cast<std::size_t>(count));
  EXPECT_EQ(buffer.find_first_not_of('#', size), std::string::npos) << "changed after the answer";
  result.bytes = buffer.substr(0, size);
  return result;
}

std::string Answer(std::int32_t count, std::int16_t terminator) {
  const ReadResult result = ReadPort(count, terminator);
  EXPECT_EQ(result.status, 0);
  return result.bytes;
}

std::int32_t AnswerStatus(std::int32_t count, std::int16_t terminator) {
  return ReadPort(count, terminator).status;
}

void PortTest::SetUp() {
  ASSERT_EQ(QDX_SetTimeout(20'000), 0);
  ASSERT_EQ(partner_->Open(), 0);
  ASSERT_EQ(QDX_SelectDevice(1), 0);
}

}  // namespace kolvane::devlnk
