#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "base/block_head.h"
#include "device/device.h"
#include "device/device_state.h"

namespace kolvane::terminal {

/// Reads answers in the form of IEEE 488.2: "#", a digit that says how many digits follow, these digits as
/// the number of bytes, the bytes; or "#0" and bytes up to the terminator. The device's time-out holds
/// between the bytes.
class BlockReader {
 public:
  enum class Result {
    kBlock,    ///< it stands in the text, head included
    kNoBlock,  ///< the answer begins otherwise; what was read of it is DeviceState::put_back
    kNothing,  ///< nothing came; the device's last error says why
    kFailed,   ///< the same in the middle of a block; what came of it is dropped
    kTooLong   ///< above base::kBlockLimit; nothing but the head was read
  };

  /// How much of a block's bytes has come, 0 to 100; told where that changes.
  using Progress = std::function<void(int percent, std::size_t bytes)>;

  /// `terminator` may be empty: then "#0" ends at the first gap.
  BlockReader(
      device::Device& device, device::DeviceState& state, std::string_view terminator,
      Progress progress = [](int, std::size_t) {})
      : device_(device), state_(state), terminator_(terminator), progress_(std::move(progress)) {}

  Result Read(std::string& block);

 private:
  bool Take(std::size_t count, std::string_view terminator = {});
  Result TakeCounted(const base::BlockHead& head);
  Result TakeToTerminator();
  std::size_t Piece(std::size_t left);
  void DropTerminator();
  void ForgetError();
  Result GiveBack();

  device::Device& device_;
  device::DeviceState& state_;
  std::string_view terminator_;
  Progress progress_;
  std::string block_;
  Bytes buffer_;
};

}  // namespace kolvane::terminal
