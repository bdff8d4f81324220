#pragma once

#include <QTableWidget>
#include <string>
#include <string_view>

namespace kolvane::inspect {

/// The table `ValuePanel`: the bytes at the caret read as each type, low byte first and high byte first.
class ValuePanel final : public QTableWidget {
  Q_OBJECT

 public:
  explicit ValuePanel(std::string decimal_sign, QWidget* parent = nullptr);

  void ShowBytes(std::string_view bytes);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString MarkedText() const;

  std::string decimal_sign_;
};

}  // namespace kolvane::inspect
