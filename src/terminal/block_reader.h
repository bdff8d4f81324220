#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "base/block_head.h"
#include "base/encoding.h"
#include "device/device.h"
#include "device/device_state.h"

namespace kolvane::terminal {

/// Reads answers in the IEEE 488.2 block format: "#", a digit with the number of digits that follow, these
/// digits as the number of bytes, the bytes; or "#0" and bytes up to the terminator. The device's time-out
/// applies between bytes.
class BlockReader {
 public:
  enum class Result {
    kBlock,    ///< the text holds it, including the head
    kNoBlock,  ///< the answer starts differently; what was read of it is in DeviceState::put_back
    kNothing,  ///< no byte was received; the device's last error says why
    kFailed,   ///< reading failed within a block; the part read is dropped
    kTooLong   ///< longer than base::kBlockLimit; with a length in its head, only that was read
  };

  /// How much of the block has been received, 0 to 100; called when that changes.
  using Progress = std::function<void(int percent, std::size_t bytes)>;

  /// `terminator` may be empty: then "#0" ends at the first gap.
  BlockReader(
      device::Device& device, device::DeviceState& state, std::string_view terminator,
      Progress progress = [](int, std::size_t) {})
      : device_(device),
        state_(state),
        terminator_(terminator),
        ending_(base::ToWindows1252(terminator)),
        progress_(std::move(progress)) {}

  Result Read(std::string& block);

 private:
  bool Take(std::size_t count, std::string_view terminator = {});
  Result TakeCounted(const base::BlockHead& head);
  Result TakeToTerminator(std::size_t head);
  std::size_t Piece(std::size_t left);
  void DropTerminator();
  void ClearError();
  Result PutBack();

  device::Device& device_;
  device::DeviceState& state_;
  std::string_view terminator_;
  std::string ending_;  // its bytes
  Progress progress_;
  std::string block_;
  Bytes buffer_;
};

}  // namespace kolvane::terminal
