#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QString>
#include <QWidget>
#include <string_view>

#include "terminal/state_line.h"

namespace kolvane::window {

/// The window's caption: the program, the command list's file without its folder, and the connection; either
/// of the two may be empty. The name of a `modified` list is followed by QWidget's placeholder for its mark.
QString Caption(std::string_view command_file, std::string_view connection, bool modified = false);

/// A window's caption without that placeholder, for print-outs.
QString CaptionWithoutPlaceholder(const QWidget& window);

/// A panel of a status bar. A text that is too long is shown without its middle, so that a path's file name
/// is visible, or without its end; the text itself, the tool tip and a selection stay whole.
class StatusPanel final : public QLabel {
 public:
  using QLabel::QLabel;
  void ElideEnd() { elide_ = Qt::ElideRight; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode elide_ = Qt::ElideMiddle;
};

/// The two status bars: connection and state in the first; log file and command list in the second.
class StatusBars : public terminal::StateView {
 public:
  explicit StatusBars(QWidget* parent);

  QStatusBar* first() const { return first_; }
  QStatusBar* second() const { return second_; }

  void ShowConnection(std::string_view text);
  /// Shown unless something is more urgent; an empty text removes the last one of that kind.
  void ShowState(terminal::StateKind kind, std::string_view text) override;
  void ShowLogFile(std::string_view text);
  /// `left_out` says what of the list's file was not loaded; empty if that is nothing.
  void ShowCommandList(std::string_view text, std::string_view left_out);

 private:
  QStatusBar* first_;
  QStatusBar* second_;
  QLabel* connection_;
  StatusPanel* state_;
  QLabel* log_file_;
  QLabel* command_list_;
  QLabel* left_out_;
  terminal::StateLine state_line_;
};

}  // namespace kolvane::window
