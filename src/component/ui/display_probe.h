#pragma once

#include <QByteArray>

struct xcb_connection_t;

namespace kolvane::component {

/// Checks whether Qt will find a display. Without one Qt ends the whole process, but a host should get an
/// error instead.
///
/// An X server that was tested stays connected for as long as this object lives: some reset themselves when
/// their last client disconnects, and drop clients that connect at that time. Keep it until the QApplication
/// exists.
class DisplayProbe {
 public:
  /// Throws NoDisplay.
  DisplayProbe();
  ~DisplayProbe();
  DisplayProbe(const DisplayProbe&) = delete;
  DisplayProbe& operator=(const DisplayProbe&) = delete;

 private:
  bool IsUsable(const QByteArray& platform);
  bool XServerAnswers();

  xcb_connection_t* x_server_ = nullptr;
};

}  // namespace kolvane::component
