#pragma once

#include <memory>

#include "devlnk/status.h"

namespace kolvane::devlnk {

/// How transfers on the GPIB bus end, and how the device is addressed.
struct GpibOptions {
  bool eoi_on_write = true;       ///< EOI with the last byte of each write
  bool stop_read_on_eos = false;  ///< the end-of-string character ends a read
  bool eoi_with_eos = false;      ///< EOI with each end-of-string character written
  unsigned char eos = '\n';
  bool repeat_addressing = false;  ///< address the device before each transfer, even if already addressed
};

/// The functions used from the GPIB driver's library, under their own names. Loaded at run time, so that this
/// library also works on systems without it.
struct GpibLibrary {
  int (*ibdev)(int board, int primary, int secondary, int timeout, int send_eoi, int eos) = nullptr;
  int (*ibwrt)(int device, const void* bytes, long count) = nullptr;
  int (*ibrd)(int device, void* room, long count) = nullptr;
  int (*ibtmo)(int device, int timeout) = nullptr;
  int (*ibclr)(int device) = nullptr;
  int (*ibrsp)(int device, char* status_byte) = nullptr;  ///< null in a library that lacks it
  int (*ibonl)(int device, int online) = nullptr;
  int (*ibconfig)(int device, int option, int value) = nullptr;
  int (*ThreadIberr)() = nullptr;
  long (*ThreadIbcntl)() = nullptr;
};

/// libgpib.so.0, or the library named by the variable KOLVANE_GPIB_LIBRARY; null if it cannot be loaded or
/// lacks a function. The library stays loaded as long as the pointer lives.
std::shared_ptr<const GpibLibrary> LoadGpibLibrary();

/// kNotAvailable if the library cannot be loaded.
Status GpibAvailability();

}  // namespace kolvane::devlnk
