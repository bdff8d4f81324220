#pragma once

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOptionHeader>

namespace kolvane::script {

/// A header whose sections are never highlighted. QHeaderView measures sections in bold even so, and a start
/// of the program would load a font file only for that.
class PlainHeader final : public QHeaderView {
 public:
  PlainHeader(Qt::Orientation orientation, QWidget* parent) : QHeaderView(orientation, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
    connect(this, &QHeaderView::sectionClicked, this, [this](int section) {
      if (press_held_back_) Q_EMIT sectionPressed(section);
    });
  }

  /// Of row numbers the last is the widest, so that not all need be measured.
  QSize sizeHint() const override {
    const bool numbers = orientation() == Qt::Vertical && count() > 0;
    return numbers ? sectionSizeFromContents(count() - 1) : QHeaderView::sizeHint();
  }

 protected:
  // A press selects its section alone. Within a selection it may be the start of dragging all of it, so there
  // it counts only once the button is released without a drag.
  void mousePressEvent(QMouseEvent* event) override {
    const int section = logicalIndexAt(event->position().toPoint());
    press_held_back_ = sectionsMovable() && event->modifiers() == Qt::NoModifier && section >= 0 &&
                       selectionModel()->rowIntersectsSelection(section, {});
    const QSignalBlocker blocker(press_held_back_ ? this : nullptr);
    QHeaderView::mousePressEvent(event);
  }

  QSize sectionSizeFromContents(int section) const override {
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = section;
    option.text = model()->headerData(section, orientation()).toString();
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, {}, this);
  }

 private:
  bool press_held_back_ = false;
};

}  // namespace kolvane::script
