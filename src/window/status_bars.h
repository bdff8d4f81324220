#pragma once

#include <QLabel>
#include <QStatusBar>
#include <string_view>

namespace kolvane::window {

/// The two status bars: the connection in the first; log file and command list in the second.
class StatusBars {
 public:
  explicit StatusBars(QWidget* parent);

  QStatusBar* first() const { return first_; }
  QStatusBar* second() const { return second_; }

  void ShowConnection(std::string_view text);
  void ShowLogFile(std::string_view text);
  void ShowCommandList(std::string_view text);

 private:
  QStatusBar* first_;
  QStatusBar* second_;
  QLabel* connection_;
  QLabel* log_file_;
  QLabel* command_list_;
};

}  // namespace kolvane::window
