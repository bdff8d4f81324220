#include "window/flow_layout.h"

#include <gtest/gtest.h>

#include <QLayoutItem>
#include <QWidget>

namespace kolvane::window {
namespace {

// An item that is wider than a narrow window.
class WideItem final : public QWidgetItem {
 public:
  using QWidgetItem::QWidgetItem;
  QSize sizeHint() const override { return {300, 20}; }
};

class FlowLayoutTest : public testing::Test {
 protected:
  FlowLayoutTest() : layout_(new FlowLayout(&parent_, 10, 5)) {
    for (QWidget*& box : boxes_) {
      box = new QWidget(&parent_);
      box->setFixedSize(100, 20);
      layout_->addWidget(box);
    }
  }

  QWidget parent_;
  FlowLayout* layout_;
  QWidget* boxes_[3] = {};
};

TEST_F(FlowLayoutTest, ContinuesInAnotherRowWhenTheWidthEnds) {
  EXPECT_EQ(layout_->heightForWidth(320), 20);
  EXPECT_EQ(layout_->heightForWidth(319), 45);
  EXPECT_EQ(layout_->heightForWidth(100), 70);
}

TEST_F(FlowLayoutTest, IsAtLeastAsLargeAsItsLargestItem) {
  layout_->setContentsMargins(1, 2, 3, 4);
  EXPECT_EQ(layout_->minimumSize(), QSize(104, 26));
}

TEST_F(FlowLayoutTest, PlacesItems) {
  layout_->setGeometry(QRect(0, 0, 215, 100));
  EXPECT_EQ(boxes_[1]->pos(), QPoint(110, 0));
  EXPECT_EQ(boxes_[2]->pos(), QPoint(0, 25));
}

TEST_F(FlowLayoutTest, GivesNoItemMoreThanTheWholeWidth) {
  auto* wide = new QWidget(&parent_);
  layout_->addItem(new WideItem(wide));
  layout_->setGeometry(QRect(0, 0, 200, 200));
  EXPECT_EQ(wide->width(), 200);
}

TEST_F(FlowLayoutTest, TakesNoItemThatItDoesNotHave) {
  EXPECT_EQ(layout_->takeAt(-1), nullptr);
  EXPECT_EQ(layout_->takeAt(3), nullptr);
  EXPECT_EQ(layout_->count(), 3);
}

TEST_F(FlowLayoutTest, LeavesNoGapForAHiddenItem) {
  boxes_[1]->setVisible(false);
  EXPECT_EQ(layout_->heightForWidth(210), 20);
}

}  // namespace
}  // namespace kolvane::window
