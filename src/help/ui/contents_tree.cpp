#include "help/ui/contents_tree.h"

#include <QTreeWidgetItemIterator>

#include "help/ui/help_texts.h"

namespace kolvane::help {
namespace {

constexpr int kPageRole = Qt::UserRole;
constexpr int kAnchorRole = Qt::UserRole + 1;
constexpr int kRowGap = 6;

}  // namespace

ContentsTree::ContentsTree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("HelpContents"));
  setAccessibleName(QString::fromUtf8(texts::kContents));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  const auto choose = [this](const QTreeWidgetItem* item) {
    if (const QString page = item->data(0, kPageRole).toString(); !page.isEmpty())
      Q_EMIT PageChosen(page, item->data(0, kAnchorRole).toString());
  };
  connect(this, &QTreeWidget::itemClicked, this, choose);
  connect(this, &QTreeWidget::itemActivated, this, choose);
}

void ContentsTree::ShowEntries(const std::vector<ContentsEntry>& entries) {
  clear();
  QList<QTreeWidgetItem*> path;  // the entry that was added last and those around it
  for (const ContentsEntry& entry : entries) {
    path.resize(std::min<qsizetype>(entry.level, path.size()));
    auto* item = path.isEmpty() ? new QTreeWidgetItem(this) : new QTreeWidgetItem(path.last());
    item->setText(0, QString::fromStdString(entry.title));
    item->setToolTip(0, item->text(0));
    item->setSizeHint(0, QSize(0, fontMetrics().height() + kRowGap));
    item->setData(0, kPageRole, QString::fromStdString(entry.page));
    item->setData(0, kAnchorRole, QString::fromStdString(entry.anchor));
    path.append(item);
  }
}

void ContentsTree::Mark(const QString& page) {
  const auto names_it = [&page](const QTreeWidgetItem* item) {
    return item->data(0, kPageRole).toString().compare(page, Qt::CaseInsensitive) == 0;
  };
  // Several entries may lead to a page: the one that was chosen stays marked.
  if (currentItem() != nullptr && names_it(currentItem())) return;
  for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
    if (!names_it(*item)) continue;
    setCurrentItem(*item);
    return scrollToItem(*item);
  }
  setCurrentItem(nullptr);
}

}  // namespace kolvane::help
