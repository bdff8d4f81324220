#include "x_watch.h"

#include <poll.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "process.h"

namespace kolvane::bench {
namespace {

constexpr double kTimeoutSeconds = 10;
constexpr double kPaintedShare = 0.9;
constexpr int kMinWidth = 300;
constexpr int kMinHeight = 200;

struct Free {
  void operator()(void* block) const { std::free(block); }
};
using Event = std::unique_ptr<xcb_generic_event_t, Free>;

[[noreturn]] void Fail(const char* reason) {
  std::fprintf(stderr, "startup_bench: %s\n", reason);
  std::exit(1);
}

}  // namespace

XWatch::XWatch() : connection_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) Fail("no display");
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection_, &xcb_damage_id);
  if (extension == nullptr || extension->present == 0) Fail("the X server lacks the damage extension");
  damage_event_ = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
  // The server answers requests of the extension only after its version was negotiated.
  std::free(
      xcb_damage_query_version_reply(connection_, xcb_damage_query_version(connection_, 1, 1), nullptr));
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, root, XCB_CW_EVENT_MASK, &events);
  // On the root, so that it exists before the window and misses none of its painting.
  xcb_damage_create(connection_, xcb_generate_id(connection_), root, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

XWatch::~XWatch() { xcb_disconnect(connection_); }

FirstPaint XWatch::Await(double start) {
  Reset();
  pollfd server{xcb_get_file_descriptor(connection_), POLLIN, 0};
  while (mapped_at_ == 0 || painted_pixels_ < kPaintedShare * window_pixels_) {
    if (const Event event{xcb_poll_for_event(connection_)}) {
      Note(*event, MonotonicSeconds());
      continue;
    }
    if (MonotonicSeconds() > start + kTimeoutSeconds) Fail("no window was painted within ten seconds");
    poll(&server, 1, 100);
  }
  return {mapped_at_ - start, MonotonicSeconds() - start};
}

void XWatch::Note(const xcb_generic_event_t& event, double now) {
  const auto type = static_cast<std::uint8_t>(event.response_type & 0x7F);
  if (type == XCB_CREATE_NOTIFY) {
    const auto& created = reinterpret_cast<const xcb_create_notify_event_t&>(event);
    if (window_ == 0 && created.width >= kMinWidth && created.height >= kMinHeight) {
      window_ = created.window;
      window_pixels_ = static_cast<double>(created.width) * created.height;
    }
  } else if (type == XCB_CONFIGURE_NOTIFY) {
    const auto& resized = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    if (resized.window == window_) window_pixels_ = static_cast<double>(resized.width) * resized.height;
  } else if (type == XCB_MAP_NOTIFY) {
    if (reinterpret_cast<const xcb_map_notify_event_t&>(event).window == window_) mapped_at_ = now;
  } else if (type == damage_event_ && mapped_at_ > 0) {
    const auto& damaged = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
    painted_pixels_ += static_cast<double>(damaged.area.width) * damaged.area.height;
  }
}

void XWatch::Focus() {
  xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
  xcb_flush(connection_);
}

void XWatch::Reset() {
  while (const Event event{xcb_poll_for_event(connection_)}) {
  }
  window_ = 0;
  painted_pixels_ = 0;
  mapped_at_ = 0;
}

}  // namespace kolvane::bench
