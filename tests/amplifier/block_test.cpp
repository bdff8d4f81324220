#include "amplifier/block.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kolvane::amplifier {
namespace {

std::string Hex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

// Channels 1 and 2 at the calibration signal: 10 kN and 250 Nm, sample number 150 at 100 Hz.
BlockRequest Request(SampleType type, ByteOrder order) {
  BlockRequest request;
  request.channel_count = 2;
  request.first_index = 150;
  request.sample_count = 2;
  request.type = type;
  request.order = order;
  request.time_ms = 0x01020304;
  request.block_number = 7;
  request.recording = true;
  return request;
}

std::string BlockOf(const BlockRequest& request, void (*change)(Settings&) = nullptr) {
  Settings settings = DefaultSettings();
  settings.mode = OperatingMode::kCalibrationSignal;
  if (change != nullptr) change(settings);
  std::string out;
  AppendBlock(out, request, settings, 1);
  return out;
}

TEST(Block, Int16InIntelOrder) {
  const std::string block = BlockOf(Request(SampleType::kInt16, ByteOrder::kIntel));
  EXPECT_EQ(Hex(block),
            "4B564142"  // magic KVAB
            "01"        // version
            "09"        // recording, calibration signal
            "01"
            "02"  // channel 1, 2 channels
            "0200"
            "6400"              // 2 samples, 100 Hz
            "04030201"          // time
            "0AD7A33C"          // 500 / 25000 = 0.02
            "07000000"          // block number
            "000000000000F83F"  // 1.5 s
            "466F7263652020202020202020202020"
            "F401"
            "D430"
            "F401"
            "D430");  // 500 and 12500
}

TEST(Block, Int16InMotorolaOrder) {
  const std::string block = BlockOf(Request(SampleType::kInt16, ByteOrder::kMotorola));
  EXPECT_EQ(Hex(block),
            "4B564142"
            "01"
            "89"
            "01"
            "02"
            "0002"
            "0064"
            "01020304"
            "3CA3D70A"
            "00000007"
            "3FF8000000000000"
            "466F7263652020202020202020202020"
            "01F4"
            "30D4"
            "01F4"
            "30D4");
}

TEST(Block, Int32InBothOrders) {
  // 500 / 1e9 = 5e-7; 10 kN are 20 million steps, 250 Nm 500 million and one, as the
  // scale is a float.
  EXPECT_EQ(Hex(BlockOf(Request(SampleType::kInt32, ByteOrder::kIntel))),
            "4B564142"
            "01"
            "29"
            "01"
            "02"
            "0200"
            "6400"
            "04030201"
            "BD370635"
            "07000000"
            "000000000000F83F"
            "466F7263652020202020202020202020"
            "002D3101"
            "0165CD1D"
            "002D3101"
            "0165CD1D");
  EXPECT_EQ(Hex(BlockOf(Request(SampleType::kInt32, ByteOrder::kMotorola))),
            "4B564142"
            "01"
            "A9"
            "01"
            "02"
            "0002"
            "0064"
            "01020304"
            "350637BD"
            "00000007"
            "3FF8000000000000"
            "466F7263652020202020202020202020"
            "01312D00"
            "1DCD6501"
            "01312D00"
            "1DCD6501");
}

TEST(Block, Float32InBothOrders) {
  EXPECT_EQ(Hex(BlockOf(Request(SampleType::kFloat32, ByteOrder::kIntel))),
            "4B564142"
            "01"
            "49"
            "01"
            "02"
            "0200"
            "6400"
            "04030201"
            "0000803F"
            "07000000"
            "000000000000F83F"
            "466F7263652020202020202020202020"
            "00002041"
            "00007A43"
            "00002041"
            "00007A43");
  EXPECT_EQ(Hex(BlockOf(Request(SampleType::kFloat32, ByteOrder::kMotorola))),
            "4B564142"
            "01"
            "C9"
            "01"
            "02"
            "0002"
            "0064"
            "01020304"
            "3F800000"
            "00000007"
            "3FF8000000000000"
            "466F7263652020202020202020202020"
            "41200000"
            "437A0000"
            "41200000"
            "437A0000");
}

TEST(Block, IsAppended) {
  std::string out = "before";
  AppendBlock(out, Request(SampleType::kInt16, ByteOrder::kIntel), DefaultSettings(), 1);
  EXPECT_EQ(out.substr(0, 10), "beforeKVAB");
  EXPECT_EQ(out.size(), 6 + kBlockHeaderSize + 8);
  EXPECT_EQ(out[6 + 5] & 0x18, 0);
}

unsigned StatusOf(void (*change)(Settings&)) {
  BlockRequest request;
  request.sample_count = 1;
  return static_cast<unsigned char>(BlockOf(request, change)[5]);
}

TEST(Block, StatusHoldsTheFlags) {
  EXPECT_EQ(StatusOf(nullptr), 0x08u);
  EXPECT_EQ(StatusOf([](Settings& s) { s.mode = OperatingMode::kZeroSignal; }), 0x10u);
  EXPECT_EQ(StatusOf([](Settings& s) { s.channels[0].high = 9; }), 0x0Cu);
  EXPECT_EQ(StatusOf([](Settings& s) {
              s.mode = OperatingMode::kMeasure;
              s.channels[0].range = 1;
            }),
            0x02u);
}

TEST(Block, SamplesStayWithinTheirType) {
  BlockRequest request;
  const auto low = [](Settings& s) { s.channels[0].tare = 1e6; };
  const auto high = [](Settings& s) { s.channels[0].tare = -1e6; };
  EXPECT_EQ(Hex(BlockOf(request, low).substr(kBlockHeaderSize)), "0080");
  EXPECT_EQ(Hex(BlockOf(request, high).substr(kBlockHeaderSize)), "FF7F");
  request.type = SampleType::kInt32;
  EXPECT_EQ(Hex(BlockOf(request, low).substr(kBlockHeaderSize)), "00000080");
  EXPECT_EQ(Hex(BlockOf(request, high).substr(kBlockHeaderSize)), "FFFFFF7F");
}

TEST(Block, NameFillsItsField) {
  const std::string block = BlockOf({}, [](Settings& s) { s.channels[0].name = "1234567890ABCDEF"; });
  EXPECT_EQ(block.substr(32, 16), "1234567890ABCDEF");
  EXPECT_EQ(block.size(), kBlockHeaderSize + 2);
}

}  // namespace
}  // namespace kolvane::amplifier
