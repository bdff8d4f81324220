#pragma once

#include <QObject>
#include <QWidget>
#include <cstdint>
#include <functional>

namespace kolvane::help {

/// F1 in the terminal's windows, open menus and dialogs: finds the topic of what has the focus. Other windows
/// of the application keep their F1. It works for as long as it lives.
class HelpKey final : public QObject {
 public:
  HelpKey(QWidget* terminal, std::function<void(std::uint32_t topic)> show);

  /// The topic of a widget, or of the action that is marked in it, or of what it stands in.
  static std::uint32_t TopicOf(const QWidget* widget);

 protected:
  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  bool IsOfTerminal(const QWidget* widget) const;

  QWidget* terminal_;
  std::function<void(std::uint32_t)> show_;
};

}  // namespace kolvane::help
