#pragma once

#include "inspect/byte_reader.h"

namespace kolvane::inspect {

/// Values of the format code; a format template is kTemplate plus its place in the list.
namespace format {
inline constexpr int kByte = 0;
inline constexpr int kShort = 1;
inline constexpr int kLong = 2;
inline constexpr int kFloat = 3;
inline constexpr int kDouble = 4;
inline constexpr int kTemplate = 5;
}  // namespace format

/// What the inspector keeps from one decode, and one opening of its dialog, to the next.
struct InspectorState {
  int format_code = format::kByte;
  bool network_order = false;
  ByteBuffer buffer{};
};

}  // namespace kolvane::inspect
