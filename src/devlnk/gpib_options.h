#pragma once

namespace kolvane::devlnk {

/// How transfers on the GPIB bus end, and how the device is addressed.
struct GpibOptions {
  bool eoi_on_write = true;       ///< EOI with the last byte of each write
  bool stop_read_on_eos = false;  ///< the end-of-string character ends a read
  bool eoi_with_eos = false;      ///< EOI with each end-of-string character written
  unsigned char eos = '\n';
  bool repeat_addressing = false;  ///< address the device before each transfer, even when it already is
};

}  // namespace kolvane::devlnk
