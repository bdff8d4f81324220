#pragma once

#include <QByteArray>

struct xcb_connection_t;

namespace kolvane::component {

/// What Qt is going to find when it looks for a display. Qt ends the whole process where it finds none, and a
/// host shall get an error instead.
///
/// An X server that has been asked stays connected for as long as this object lives: some reset themselves
/// when their last client leaves, and take along who comes meanwhile. To be kept until the QApplication
/// stands.
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
