#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "amplifier/state.h"

namespace kolvane::amplifier {

enum class SampleType : std::uint8_t { kInt16 = 0, kInt32 = 1, kFloat32 = 2 };
enum class ByteOrder : std::uint8_t { kIntel = 0, kMotorola = 1 };

/// Which samples a binary block holds, and the values for its header.
struct BlockRequest {
  std::size_t first_channel = 0;  // 0-based
  std::size_t channel_count = 1;
  std::int64_t first_index = 0;  // sample number, see Measure()
  std::size_t sample_count = 1;  // per channel
  SampleType type = SampleType::kInt16;
  ByteOrder order = ByteOrder::kIntel;
  std::uint32_t time_ms = 0;  // since the start, modulo 2^32
  std::uint32_t block_number = 0;
  bool recording = false;
};

inline constexpr std::size_t kBlockHeaderSize = 48;
inline constexpr std::size_t kMaxBlockSamples = 4096;

/// Appends the header of kBlockHeaderSize bytes and the samples; docs/amplifier.md describes the layout.
void AppendBlock(std::string& out, const BlockRequest& request, const Settings& settings, std::uint64_t seed);

}  // namespace kolvane::amplifier
