#include "base/ui/buttons.h"

#include <QToolBar>
#include <QToolButton>
#include <utility>

namespace kolvane::base {

void OnClick(QAbstractButton* button, std::function<void()> command) {
  QObject::connect(button, &QAbstractButton::clicked, button, [button, command = std::move(command)] {
    if (button->isEnabled()) command();
  });
}

QToolButton* LabelExtension(QToolBar* bar) {
  auto* button = bar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
  if (button == nullptr) return nullptr;
  const auto point = [button](Qt::Orientation orientation) {
    button->setArrowType(orientation == Qt::Vertical ? Qt::DownArrow : Qt::RightArrow);
  };
  QObject::connect(bar, &QToolBar::orientationChanged, button, point);
  point(bar->orientation());
  button->setToolTip(QStringLiteral("Weitere Schaltflächen"));
  button->setAccessibleName(button->toolTip());
  return button;
}

}  // namespace kolvane::base
