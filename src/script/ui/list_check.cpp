#include "script/ui/list_check.h"

#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "base/ui/qt_text.h"

namespace kolvane::script {
namespace {

constexpr int kDelayMs = 300;
constexpr int kFindingRows = 6;
enum Column : int { kRow, kKind, kText };

QString Counted(const std::vector<checker::Finding>& findings) {
  const auto errors = std::ranges::count(findings, checker::FindingKind::kError, &checker::Finding::kind);
  const auto hints = static_cast<std::ptrdiff_t>(findings.size()) - errors;
  return QStringLiteral("Meldung (Fehler: %1, Hinweise: %2)").arg(errors).arg(hints);
}

/// A tree measures its items without the width of their column, so that none would wrap.
class WrappingDelegate final : public QStyledItemDelegate {
 public:
  explicit WrappingDelegate(QTreeWidget* tree) : QStyledItemDelegate(tree), tree_(tree) {}

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem within = option;
    within.rect.setSize({tree_->columnWidth(index.column()), 1});
    return QStyledItemDelegate::sizeHint(within, index);
  }

 private:
  const QTreeWidget* tree_;
};

}  // namespace

FindingsList::FindingsList(QWidget* parent) : InfoList(QStringLiteral("FindingsList"), kFindingRows, parent) {
  setAccessibleName(QStringLiteral("Ergebnis der Prüfung"));
  setToolTip(QStringLiteral("Was die Prüfung gefunden hat; Esc beendet sie"));
  setRootIsDecorated(false);
  setWordWrap(true);
  setItemDelegateForColumn(kText, new WrappingDelegate(this));
  header()->setStretchLastSection(true);
  // Another width may need other heights.
  connect(header(), &QHeaderView::sectionResized, this, [this] { scheduleDelayedItemsLayout(); });
  connect(this, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
    if (item != nullptr) Q_EMIT RowChosen(item->data(kRow, Qt::DisplayRole).toInt());
  });
  connect(this, &QTreeWidget::itemClicked, this, [this](const QTreeWidgetItem* item) {
    Q_EMIT RowChosen(item->data(kRow, Qt::DisplayRole).toInt());
  });
}

void FindingsList::Show(const std::vector<checker::Finding>& findings) {
  const QSignalBlocker quiet(this);
  const int chosen = currentItem() == nullptr ? 0 : currentItem()->data(kRow, Qt::DisplayRole).toInt();
  clear();
  setHeaderLabels({QStringLiteral("Zeile"), QStringLiteral("Art"), Counted(findings)});
  headerItem()->setToolTip(kText, headerItem()->text(kText));
  FitColumns({kRow, kKind});
  for (const checker::Finding& finding : findings) {
    auto* item = new QTreeWidgetItem(this);
    item->setData(kRow, Qt::DisplayRole, finding.row);
    item->setText(kKind, QString::fromUtf8(checker::NameOf(finding.kind)));
    item->setText(kText, base::ToQt(finding.text));
    item->setToolTip(kText, item->text(kText).toHtmlEscaped());
    if (finding.row == chosen) setCurrentItem(item);
  }
}

ListCheck::ListCheck(CommandGrid* grid, FindingsList* findings, std::function<checker::RunStart()> start)
    : QObject(grid), grid_(grid), findings_(findings), start_(std::move(start)) {
  delay_.setSingleShot(true);
  delay_.setInterval(kDelayMs);
  connect(&delay_, &QTimer::timeout, this, &ListCheck::Check);
  connect(grid_->model(), &QAbstractItemModel::dataChanged, this, [this] {
    if (live_ && grid_->list().revision() != revision_) delay_.start();
  });
  connect(findings_, &FindingsList::RowChosen, grid_, &CommandGrid::GoToRow);
  connect(findings_, &FindingsList::Closed, this, &ListCheck::End);
}

void ListCheck::Start() {
  live_ = true;
  Check();
  findings_->show();
  if (findings_->topLevelItemCount() > 0) findings_->setCurrentItem(findings_->topLevelItem(0));
}

void ListCheck::End() {
  live_ = false;
  delay_.stop();
  grid_->ShowFindings({}, {});
  findings_->hide();
  grid_->setFocus();
}

void ListCheck::CheckAgain() {
  if (live_) Check();
}

void ListCheck::Check() {
  const CommandList& list = grid_->list();
  if (list.InUse()) return;
  revision_ = list.revision();
  const std::vector<checker::Finding> findings = checker::CheckList(list, start_());
  grid_->ShowFindings(findings, checker::Indents(list));
  findings_->Show(findings);
}

}  // namespace kolvane::script
