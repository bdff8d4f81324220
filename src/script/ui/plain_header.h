#pragma once

#include <QHeaderView>
#include <QStyleOptionHeader>

namespace kolvane::script {

/// A header whose sections are never highlighted. QHeaderView measures sections in bold even so, and a start
/// of the program would load a font file only for that.
class PlainHeader final : public QHeaderView {
 public:
  PlainHeader(Qt::Orientation orientation, QWidget* parent) : QHeaderView(orientation, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
  }

  /// Of row numbers the last is the widest, so that not all need be measured.
  QSize sizeHint() const override {
    const bool numbers = orientation() == Qt::Vertical && count() > 0;
    return numbers ? sectionSizeFromContents(count() - 1) : QHeaderView::sizeHint();
  }

 protected:
  QSize sectionSizeFromContents(int section) const override {
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = section;
    option.text = model()->headerData(section, orientation()).toString();
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, {}, this);
  }
};

}  // namespace kolvane::script
