#include "values/ui/curves_panel.h"

#include <QColorDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "base/ui/qt_text.h"
#include "values/texts.h"

namespace kolvane::values {
namespace {

constexpr int kCurveRowMargin = 4;
constexpr int kPreferredRows = 5;
constexpr int kCurveCellMargin = 10;
constexpr int kNameWidth = 24;  // characters

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

}  // namespace

QIcon ColorDelegate::IconOf(const QColor& color, const QSize& size) const {
  QIcon& icon = icons_[color.rgb()];
  if (icon.availableSizes().value(0) != size) {
    QPixmap square(size);
    square.fill(color);
    icon = QIcon(square);
  }
  return icon;
}

void ColorDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const QVariant color = index.data(Qt::DecorationRole);
  if (color.isValid()) option->icon = IconOf(color.value<QColor>(), option->decorationSize);
}

CurvesPanel::CurvesPanel(CurvesModel& model, QWidget* parent)
    : QWidget(parent), model_(model), scope_(new QLabel), table_(new QTableView) {
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->addWidget(scope_);
  all->addWidget(table_, 1);
  scope_->setObjectName(QStringLiteral("ValuesScope"));
  scope_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  scope_->setBuddy(table_);
  model_.SetDark(IsDark(palette()));
  BuildTable();
  BuildActions();
}

void CurvesPanel::BuildTable() {
  table_->setObjectName(QStringLiteral("ValuesCurves"));
  table_->setAccessibleName(base::ToQt(texts::kCurves));
  table_->setModel(&model_);
  table_->setItemDelegateForColumn(CurvesModel::kName, new ColorDelegate(table_));
  table_->setSelectionBehavior(QTableView::SelectRows);
  table_->setEditTriggers(QTableView::DoubleClicked);
  table_->setTabKeyNavigation(false);
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setHighlightSections(false);
  table_->installEventFilter(this);
  FitColumns();
}

void CurvesPanel::FitColumns() {
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kCurveRowMargin);
  table_->setColumnWidth(CurvesModel::kName, fontMetrics().averageCharWidth() * kNameWidth);
  for (int column = CurvesModel::kValue; column < CurvesModel::kColumns; ++column) {
    const auto* widest = column == CurvesModel::kCount ? "10000000" : "-0,12345678";
    const QString head = model_.headerData(column, Qt::Horizontal).toString();
    const int text = std::max(fontMetrics().horizontalAdvance(QLatin1String(widest)),
                              fontMetrics().horizontalAdvance(head));
    table_->setColumnWidth(column, text + kCurveCellMargin);
  }
}

QSize CurvesPanel::sizeHint() const {
  const int rows = kPreferredRows * (fontMetrics().height() + kCurveRowMargin);
  return {600, rows + table_->horizontalHeader()->sizeHint().height() + scope_->sizeHint().height()};
}

void CurvesPanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) model_.SetDark(IsDark(palette()));
  if (event->type() == QEvent::FontChange) FitColumns();
}

QAction* CurvesPanel::AddAction(const char* name, std::string_view text, const QKeySequence& key,
                                const std::function<void()>& action) {
  auto* item = new QAction(base::ToQt(text), this);
  item->setObjectName(QLatin1String(name));
  item->setShortcut(key);
  item->setShortcutContext(Qt::WidgetShortcut);
  connect(item, &QAction::triggered, this, action);
  table_->addAction(item);
  return item;
}

void CurvesPanel::BuildActions() {
  table_->setContextMenuPolicy(Qt::ActionsContextMenu);
  AddAction("ValuesCurveName", texts::kRename, Qt::Key_F2, [this] {
    if (table_->currentIndex().isValid())
      table_->edit(table_->currentIndex().siblingAtColumn(CurvesModel::kName));
  });
  AddAction("ValuesCurveColor", texts::kColor, {}, [this] { AskColor(); });
  AddAction("ValuesShowOnly", texts::kShowOnly, {}, [this] { model_.ShowOnly(SelectedCurves()); });
  AddAction("ValuesShowCurves", texts::kShowSelected, {}, [this] { model_.Show(SelectedCurves(), true); });
  AddAction("ValuesHideCurves", texts::kHideSelected, {}, [this] { model_.Show(SelectedCurves(), false); });
}

QList<int> CurvesPanel::SelectedCurves() const {
  QList<int> curves;
  for (const QModelIndex& index : table_->selectionModel()->selectedRows()) curves << index.row();
  return curves;
}

// The space bar shows or hides all selected curves together.
void CurvesPanel::ToggleSelected() {
  const QModelIndex current = table_->currentIndex().siblingAtColumn(CurvesModel::kName);
  if (!current.isValid()) return;
  QList<int> curves = SelectedCurves();
  if (!curves.contains(current.row())) curves = {current.row()};
  model_.Show(curves, current.data(Qt::CheckStateRole).toInt() != Qt::Checked);
}

// Opened, not executed: that would block a command list that runs beside the window.
void CurvesPanel::AskColor() {
  const QModelIndex current = table_->currentIndex().siblingAtColumn(CurvesModel::kName);
  if (!current.isValid()) return;
  auto* dialog = new QColorDialog(current.data(Qt::DecorationRole).value<QColor>(), this);
  dialog->setObjectName(QStringLiteral("ColorDialog"));
  dialog->setWindowTitle(base::ToQt(texts::kCurveColor));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  const QPersistentModelIndex curve(current);
  connect(dialog, &QColorDialog::colorSelected, this, [this, curve](const QColor& color) {
    if (curve.isValid()) model_.SetColor(curve.row(), color.rgb() & 0xffffff);
  });
  dialog->open();
}

bool CurvesPanel::eventFilter(QObject* target, QEvent* event) {
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
    ToggleSelected();
    return true;
  }
  return QWidget::eventFilter(target, event);
}

}  // namespace kolvane::values
