#include "values/ui/values_window.h"

#include <QActionGroup>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTimerEvent>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "base/ui/buttons.h"
#include "base/ui/qt_text.h"
#include "values/texts.h"

namespace kolvane::values {
namespace {

constexpr int kFrameMs = 33;
constexpr QSize kFirstSize(1040, 660);
constexpr int kTableWidth = 380;
constexpr std::size_t kMaxRowsCopied = 1 << 20;  // as many as a spreadsheet takes

}  // namespace

ValuesWindow::ValuesWindow(ValuesContext context, QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      context_(std::move(context)),
      curve_list_(context_.store),
      model_(new ValuesModel(context_.store, context_.decimal_sign, this)),
      curves_model_(new CurvesModel(context_.store, curve_list_, context_.decimal_sign, this)),
      table_(new ValuesTable),
      plot_(new ValuesPlot(context_.store, curve_list_, context_.decimal_sign)),
      curves_(new CurvesPanel(*curves_model_)),
      output_(new ValuesOutput(context_.store, context_.prompt, *plot_, this)),
      status_(new QLabel),
      generation_(context_.store.generation()) {
  setObjectName(QStringLiteral("ValuesWindow"));
  setWindowTitle(base::ToQt(texts::kTitle));
  setAttribute(Qt::WA_QuitOnClose, false);
  setContextMenuPolicy(Qt::NoContextMenu);
  BuildParts();
  BuildActions();
  Connect();
  resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));
  context_.store.Observe(this);
}

ValuesWindow::~ValuesWindow() { context_.store.Observe(nullptr); }

void ValuesWindow::BuildParts() {
  table_->setModel(model_);
  auto* right = new QSplitter(Qt::Vertical);
  right->setObjectName(QStringLiteral("ValuesPlotSplitter"));
  right->addWidget(plot_);
  right->addWidget(curves_);
  right->setStretchFactor(0, 1);
  right->setCollapsible(0, false);
  right->setSizes({kFirstSize.height(), curves_->sizeHint().height()});
  auto* all = new QSplitter(Qt::Horizontal);
  all->setObjectName(QStringLiteral("ValuesSplitter"));
  all->addWidget(table_);
  all->addWidget(right);
  all->setStretchFactor(0, 1);
  all->setStretchFactor(1, 2);
  all->setCollapsible(1, false);
  all->setSizes({kTableWidth, kFirstSize.width() - kTableWidth});
  setCentralWidget(all);
  statusBar()->setObjectName(QStringLiteral("ValuesStatusBar"));
  plot_->setFocus();
  status_->setObjectName(QStringLiteral("ValuesStatus"));
  statusBar()->addWidget(status_);
}

void ValuesWindow::Connect() {
  connect(table_, &ValuesTable::SelectedRowsChanged, this, &ValuesWindow::SelectionChanged);
  connect(plot_, &ValuesPlot::RowsSelected, table_, &ValuesTable::SelectRange);
  connect(plot_, &ValuesPlot::ViewChanged, this, &ValuesWindow::ViewChanged);
  connect(plot_, &ValuesPlot::CursorMoved, this,
          [this] { curves_model_->SetCursor(plot_->Rows(), plot_->cursor()); });
  connect(curves_model_, &CurvesModel::LooksChanged, this, [this] { plot_->ShowRows(shown_); });
}

void ValuesWindow::Present() {
  if (isMinimized()) showNormal();
  show();
  raise();
  activateWindow();
}

void ValuesWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  Refresh();
}

// Called for each row, so it only schedules a frame. After a clear it refreshes at once, since removed series
// must not be painted again.
void ValuesWindow::StoreChanged() {
  if (generation_ != context_.store.generation()) return Refresh();
  if (!isVisible() || frame_.isActive()) return;
  const qint64 since = since_frame_.isValid() ? since_frame_.elapsed() : kFrameMs;
  frame_.start(static_cast<int>(std::clamp<qint64>(kFrameMs - since, 0, kFrameMs)), this);
}

void ValuesWindow::timerEvent(QTimerEvent* event) {
  if (event->timerId() != frame_.timerId()) return;
  frame_.stop();
  since_frame_.start();
  paused_ ? UpdateStatus() : Refresh();
}

void ValuesWindow::Refresh() {
  frame_.stop();
  since_frame_.start();
  const bool cleared = generation_ != context_.store.generation();
  generation_ = context_.store.generation();
  if (cleared || !paused_) shown_ = paused_ ? 0 : context_.store.rows();
  curves_model_->Refresh();
  if (cleared) plot_->ShowRows(0);
  model_->ShowRows(shown_);
  if (cleared) SelectionChanged();
  plot_->ShowRows(shown_);
  UpdateStatus();
}

void ValuesWindow::SetPaused(bool paused) {
  if (paused == paused_) return;
  if (paused) Refresh();
  paused_ = paused;
  setWindowTitle(base::ToQt(paused ? texts::kPausedTitle : texts::kTitle));
  paused ? UpdateStatus() : Refresh();
}

void ValuesWindow::UpdateStatus() {
  status_->setText(base::ToQt(paused_ ? texts::PausedAt(shown_, context_.store.rows() - shown_)
                                      : texts::RowsAndValues(shown_, context_.store.values())));
}

void ValuesWindow::SelectionChanged() {
  selection_ = table_->SelectedRows();
  plot_->SetSelection(selection_);
  UpdateStatistics();
}

void ValuesWindow::ViewChanged() {
  FindAction("ValuesFollow")->setChecked(plot_->view().mode() == PlotView::Mode::kFollow);
  FindAction("ValuesShowAll")
      ->setChecked(plot_->view().mode() == PlotView::Mode::kAll && plot_->view().auto_y());
  FindAction("ValuesAutoScale")->setChecked(plot_->view().auto_y());
  curves_model_->SetCursor(plot_->Rows(), plot_->cursor());
  UpdateStatistics();
}

// Of the selected rows, otherwise of the visible ones.
void ValuesWindow::UpdateStatistics() {
  const RowRanges selected = Before(selection_, shown_);
  const RowRange visible = plot_->VisibleRows();
  std::string scope(texts::kNoRows);
  if (!selected.empty()) {
    scope = texts::SelectedRows(CountOf(selected));
  } else if (visible.first < visible.last) {
    scope = texts::VisibleRows(visible.first + 1, visible.last);
  }
  curves_->SetScope(base::ToQt(scope));
  curves_model_->SetRanges(selected.empty() ? Ordered({visible}) : selected);
}

void ValuesWindow::Copy() {
  const RowRanges selected = Before(selection_, shown_);
  const RowRanges rows = selected.empty() ? Ordered({{0, shown_}}) : selected;
  if (rows.empty()) return;
  if (CountOf(rows) > kMaxRowsCopied) return context_.prompt.ShowError(texts::kTooManyRows);
  try {
    auto copied = std::make_unique<QMimeData>();
    copied->setText(model_->Text(rows));
    copied->setImageData(output_->Picture());
    QGuiApplication::clipboard()->setMimeData(copied.release());
  } catch (const std::bad_alloc&) {
    context_.prompt.ShowError(texts::kNoMemory);
  }
}

void ValuesWindow::CopyPicture() { QGuiApplication::clipboard()->setImage(output_->Picture()); }

namespace {

// Makes buttons reachable by the keyboard, which Qt's tool bars do not.
void LetTabReach(QToolBar* bar) {
  for (QToolButton* button : bar->findChildren<QToolButton*>()) {
    if (!button->objectName().startsWith(QLatin1String("qt_"))) button->setFocusPolicy(Qt::TabFocus);
  }
}

QToolBar* AddBar(QMainWindow& window, const char* name, std::string_view title) {
  QToolBar* bar = window.addToolBar(base::ToQt(title));
  bar->setObjectName(QLatin1String(name));
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  base::LabelExtension(bar);
  return bar;
}

QString TipOf(std::string_view text, const QAction& action) {
  const QString key = action.shortcut().toString(QKeySequence::NativeText);
  return key.isEmpty() ? base::ToQt(text) : QStringLiteral("%1 (%2)").arg(base::ToQt(text), key);
}

}  // namespace

struct ValuesWindow::ActionRow {
  const char* name;
  std::string_view text;
  std::string_view tip;
  QKeyCombination key;
  const char* icon = nullptr;
  bool checkable = false;
};

QAction* ValuesWindow::AddAction(const ActionRow& row, std::function<void(bool)> action) {
  auto* item = new QAction(base::ToQt(row.text), this);
  item->setObjectName(QLatin1String(row.name));
  item->setShortcut(row.key);
  item->setToolTip(TipOf(row.tip, *item));
  item->setCheckable(row.checkable);
  if (row.icon != nullptr) item->setIcon(context_.icon(row.icon));
  connect(item, &QAction::triggered, this, std::move(action));
  addAction(item);
  return item;
}

QAction* ValuesWindow::FindAction(const char* name) const {
  return findChild<QAction*>(QLatin1String(name), Qt::FindDirectChildrenOnly);
}

void ValuesWindow::BuildActions() {
  namespace t = texts;
  QToolBar* bar = AddBar(*this, "ValuesToolbar", t::kTitle);
  bar->addActions({AddAction({"ValuesPause", t::kPause, t::kPauseTip, Qt::Key_F8, "break", true},
                             [this](bool on) { SetPaused(on); }),
                   AddAction({"ValuesClear", t::kClear, t::kClearTip, Qt::CTRL | Qt::Key_Delete, "clear"},
                             [this](bool) { context_.store.Clear(); }),
                   AddAction({"ValuesSave", t::kSave, t::kSaveTip, Qt::CTRL | Qt::Key_S, "save"},
                             [this](bool) { output_->Save(shown_); }),
                   AddAction({"ValuesCopy", t::kCopy, t::kCopyTip, Qt::CTRL | Qt::Key_C, "copy"},
                             [this](bool) { Copy(); }),
                   AddAction({"ValuesPrint", t::kPrint, t::kPrintTip, Qt::CTRL | Qt::Key_P, "print"},
                             [this](bool) { output_->Print(); })});
  LetTabReach(bar);
  AddAction({"ValuesCopyPicture", t::kCopyPicture, t::kCopyPicture, Qt::CTRL | Qt::SHIFT | Qt::Key_C},
            [this](bool) { CopyPicture(); });
  AddAction({"ValuesClose", t::kClose, t::kClose, Qt::CTRL | Qt::Key_W}, [this](bool) { close(); });
  addToolBarBreak();
  BuildPlotBar();
  const char* const plot_menu[] = {"ValuesShowAll",     "ValuesFollow", "ValuesAutoScale",
                                   "ValuesCopyPicture", "ValuesSave",   "ValuesPrint"};
  for (const char* name : plot_menu) plot_->addAction(FindAction(name));
  for (const char* name : {"ValuesCopy", "ValuesSave", "ValuesClear"}) table_->addAction(FindAction(name));
}

void ValuesWindow::BuildPlotBar() {
  namespace t = texts;
  QToolBar* bar = AddBar(*this, "ValuesPlotToolbar", t::kPlot);
  bar->addWidget(MakeAxisList());
  bar->addActions(
      {AddAction({"ValuesShowAll", t::kShowAll, t::kShowAllTip, Qt::CTRL | Qt::Key_0, nullptr, true},
                 [this](bool) { plot_->ShowAll(); }),
       AddAction({"ValuesFollow", t::kFollow, t::kFollowTip, Qt::CTRL | Qt::Key_E, nullptr, true},
                 [this](bool on) { plot_->Follow(on); }),
       AddAction({"ValuesAutoScale", t::kAutoScale, t::kAutoScaleTip, Qt::CTRL | Qt::Key_Y, nullptr, true},
                 [this](bool on) { plot_->SetAutoScale(on); })});
  bar->addSeparator();
  auto* tools = new QActionGroup(this);
  const auto add = [&](const ActionRow& row, ValuesPlot::Tool tool) {
    QAction* action = AddAction(row, [this, tool](bool) { plot_->SetTool(tool); });
    tools->addAction(action);
    bar->addAction(action);
    return action;
  };
  add({"ValuesPan", t::kPan, t::kPanTip, Qt::CTRL | Qt::Key_1, nullptr, true}, ValuesPlot::Tool::kPan)
      ->setChecked(true);
  add({"ValuesZoom", t::kZoom, t::kZoomTip, Qt::CTRL | Qt::Key_2, nullptr, true}, ValuesPlot::Tool::kZoom);
  add({"ValuesSelect", t::kSelect, t::kSelectTip, Qt::CTRL | Qt::Key_3, nullptr, true},
      ValuesPlot::Tool::kSelect);
  LetTabReach(bar);
}

QComboBox* ValuesWindow::MakeAxisList() {
  auto* axis = new QComboBox;
  axis->setObjectName(QStringLiteral("ValuesAxis"));
  axis->setAccessibleName(base::ToQt(texts::kAxis));
  axis->setToolTip(base::ToQt(texts::kAxis));
  for (const std::string_view text : texts::kAxes) axis->addItem(base::ToQt(text));
  connect(axis, &QComboBox::currentIndexChanged, this,
          [this](int index) { plot_->SetAxis(static_cast<Axis>(index)); });
  return axis;
}

}  // namespace kolvane::values
