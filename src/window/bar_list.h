#pragma once

#include <QComboBox>

namespace kolvane::window {

/// A list on the terminal bar. Its wheel needs the focus; a pick with the mouse is reported, so that the
/// keyboard can go back to where it is wanted.
class BarList final : public QComboBox {
  Q_OBJECT

 public:
  explicit BarList(QWidget* parent = nullptr);

  void showPopup() override;

 Q_SIGNALS:
  void PickedWithMouse();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool with_mouse_ = false;
};

}  // namespace kolvane::window
