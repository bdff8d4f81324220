#pragma once

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <cstdint>

namespace kolvane::bench {

/// When a program's first window of some size was mapped and when it was painted, in seconds after the start.
struct FirstPaint {
  double mapped = 0;
  double painted = 0;
};

/// Watches what a program shows, by the events of the X server. Needs a display without a window manager, so
/// that only the program maps and paints windows.
class XWatch {
 public:
  XWatch();
  ~XWatch();
  XWatch(const XWatch&) = delete;
  XWatch& operator=(const XWatch&) = delete;

  /// Returns once a window of at least 300 by 200 pixels is on the screen and nine tenths of it have been
  /// painted; `start` is a time of the monotonic clock. Ends this program after ten seconds without such a
  /// window.
  FirstPaint Await(double start);

  /// Gives that window the focus, as a window manager would.
  void Focus();

 private:
  void Note(const xcb_generic_event_t& event, double now);
  void Reset();

  xcb_connection_t* connection_;
  std::uint8_t damage_event_ = 0;
  xcb_window_t window_ = 0;
  double window_pixels_ = 0;
  double painted_pixels_ = 0;
  double mapped_at_ = 0;
};

}  // namespace kolvane::bench
