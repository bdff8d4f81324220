#include "help/ui/help_window.h"

#include <QApplication>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QWindow>
#include <utility>

#include "base/ui/buttons.h"
#include "base/ui/qt_text.h"
#include "help/ui/help_texts.h"

namespace kolvane::help {
namespace {

constexpr QLatin1String kScheme("chm");

QUrl PageUrl(const QString& path, const QString& anchor) {
  QUrl url;
  url.setScheme(kScheme);
  url.setPath(QLatin1Char('/') + path);
  if (!anchor.isEmpty()) url.setFragment(anchor);
  return url;
}

QString PathOf(const QUrl& url) { return url.scheme() == kScheme ? url.path().mid(1) : QString(); }

constexpr int kContentsWidth = 280;
constexpr int kMinPageWidth = 300;      // below it the contents shrink
constexpr int kLargerThanControls = 1;  // points: running text is read, not glanced at

}  // namespace

HelpPage::HelpPage(QWidget* parent)
    : QTextBrowser(parent), normal_points_(fontInfo().pointSize() + kLargerThanControls) {
  ResetZoom();
  setObjectName(QStringLiteral("HelpPage"));
  setAccessibleName(base::ToQt(texts::kPage));
  setOpenLinks(false);
  connect(this, &QTextBrowser::anchorClicked, this, &HelpPage::FollowLink);
}

void HelpPage::Use(std::shared_ptr<const HelpFile> file) {
  if (file == file_) return;
  file_ = std::move(file);
  // The new file may have another page of the name on display.
  if (!source().isEmpty()) reload();
  clearHistory();
}

void HelpPage::ShowPage(const QString& path, const QString& anchor) { setSource(PageUrl(path, anchor)); }

QString HelpPage::Path() const { return PathOf(source()); }

void HelpPage::ResetZoom() {
  QFont normal = font();
  normal.setPointSize(normal_points_);
  setFont(normal);
}

void HelpPage::FollowLink(const QUrl& url) {
  if (url.scheme() == kScheme) return setSource(url);
  Q_EMIT LinkOutside(url.toDisplayString());
}

QVariant HelpPage::loadResource(int type, const QUrl& url) {
  const QUrl page = loading_.isEmpty() ? source() : loading_;
  const QString path = PathOf(url.isRelative() ? page.resolved(url) : url);
  // Empty, but not null: Qt would look for a local file of that name otherwise.
  if (file_ == nullptr || path.isEmpty()) return QByteArray("");
  const std::string name = base::FromQt(path);
  if (type == QTextDocument::ImageResource) return QByteArray::fromStdString(file_->Bytes(name));
  const std::string text = file_->Page(name);
  // Without a text the page before would stay.
  if (text.empty() && type == QTextDocument::HtmlResource) return base::ToQt(texts::kUnreadable);
  return base::ToQt(text);
}

void HelpPage::doSetSource(const QUrl& url, QTextDocument::ResourceType type) {
  const bool known = file_ != nullptr && file_->Has(base::FromQt(PathOf(url)));
  if (!known && !url.isEmpty()) return;
  loading_ = url;
  QTextBrowser::doSetSource(url, type);
  loading_.clear();
}

HelpWindow::HelpWindow(HelpWindowServices services, QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      services_(std::move(services)),
      page_(new HelpPage),
      contents_(new ContentsTree),
      search_(new SearchPanel([this](const QString& words) {
        const HelpFile* file = page_->file();
        return file == nullptr ? std::vector<SearchHit>() : file->Search(base::FromQt(words));
      })),
      tabs_(new QTabWidget) {
  setObjectName(QStringLiteral("HelpWindow"));
  setWindowIcon(services_.icon("help"));
  setAttribute(Qt::WA_QuitOnClose, false);
  setContextMenuPolicy(Qt::NoContextMenu);
  BuildParts();
  BuildToolbar();
  resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));
}

void HelpWindow::BuildParts() {
  tabs_->setObjectName(QStringLiteral("HelpTabs"));
  tabs_->addTab(contents_, base::ToQt(texts::kContents));
  tabs_->addTab(search_, base::ToQt(texts::kSearch));
  auto* splitter = new QSplitter(Qt::Horizontal);
  splitter->setObjectName(QStringLiteral("HelpSplitter"));
  splitter->addWidget(tabs_);
  splitter->addWidget(page_);
  page_->setMinimumWidth(kMinPageWidth);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({kContentsWidth, kFirstSize.width() - kContentsWidth});
  setCentralWidget(splitter);
  statusBar()->setObjectName(QStringLiteral("HelpStatus"));
  connect(contents_, &ContentsTree::PageChosen, page_, &HelpPage::ShowPage);
  connect(search_, &SearchPanel::PageChosen, this, &HelpWindow::ShowFound);
  connect(page_, &QTextBrowser::historyChanged, this, &HelpWindow::PageChanged);
  connect(page_, &HelpPage::LinkOutside, this,
          [this](const QString& address) { statusBar()->showMessage(texts::OutsideAddress(address)); });
}

QAction* HelpWindow::AddAction(const char* name, const char* text, const char* icon,
                               const QList<QKeySequence>& keys, const std::function<void()>& action) {
  auto* item = new QAction(base::ToQt(text), this);
  item->setObjectName(QLatin1String(name));
  if (icon != nullptr) item->setIcon(services_.icon(icon));
  item->setShortcuts(keys);
  connect(item, &QAction::triggered, this, action);
  addAction(item);
  return item;
}

void HelpWindow::BuildToolbar() {
  auto* bar = addToolBar(base::ToQt(texts::kToolbar));
  bar->setObjectName(QStringLiteral("HelpToolbar"));
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  base::LabelExtension(bar);
  QAction* back = AddAction("HelpBack", texts::kBack, "back", {QKeySequence(Qt::ALT | Qt::Key_Left)},
                            [this] { page_->backward(); });
  QAction* forward = AddAction("HelpForward", texts::kForward, "forward",
                               {QKeySequence(Qt::ALT | Qt::Key_Right)}, [this] { page_->forward(); });
  QAction* home =
      AddAction("HelpHome", texts::kHome, "contents", {QKeySequence(Qt::ALT | Qt::Key_Home)}, [this] {
        if (page_->file() != nullptr) page_->ShowPage(base::ToQt(page_->file()->StartPage()));
      });
  QAction* print = AddAction("HelpPrint", texts::kPrint, "print", {QKeySequence(Qt::CTRL | Qt::Key_P)},
                             [this] { services_.print(*page_->document(), windowTitle(), this); });
  AddAction("HelpFind", texts::kFind, nullptr, {QKeySequence(Qt::CTRL | Qt::Key_F)}, [this] { Find(); });
  AddAction("HelpFindNext", texts::kFindNext, nullptr, {QKeySequence(Qt::Key_F3)}, [this] { FindNext({}); });
  AddAction("HelpFindPrevious", texts::kFindPrevious, nullptr, {QKeySequence(Qt::SHIFT | Qt::Key_F3)},
            [this] { FindNext(QTextDocument::FindBackward); });
  AddAction("HelpLarger", texts::kLarger, nullptr,
            {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
            [this] { page_->zoomIn(); });
  AddAction("HelpSmaller", texts::kSmaller, nullptr, {QKeySequence(Qt::CTRL | Qt::Key_Minus)},
            [this] { page_->zoomOut(); });
  AddAction("HelpNormal", texts::kNormal, nullptr, {QKeySequence(Qt::CTRL | Qt::Key_0)},
            [this] { page_->ResetZoom(); });
  AddAction("HelpClose", texts::kClose, nullptr, {QKeySequence(Qt::Key_Escape)}, [this] { close(); });
  bar->addActions({back, forward, home, print});
  for (QAction* action : {back, forward}) action->setEnabled(false);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

void HelpWindow::ShowTarget(const std::shared_ptr<const HelpFile>& file, const HelpTarget& target) {
  if (page_->file() != file.get()) {
    contents_->ShowEntries(file->contents());
    page_->Use(file);
    search_->Refresh();
  }
  if (const std::string page = file->TopicPage(target.topic); !page.empty()) {
    page_->ShowPage(base::ToQt(page), base::ToQt(target.anchor));
  } else {
    page_->ShowPage(base::ToQt(file->StartPage()));
  }
  if (isMinimized()) showNormal();
  show();
  StayUsable();
  raise();
  activateWindow();
}

void HelpWindow::PageChanged() {
  const QString path = page_->Path();
  if (path.isEmpty() || page_->file() == nullptr) return;
  setWindowTitle(texts::WindowTitle(base::ToQt(page_->file()->Title(base::FromQt(path)))));
  contents_->SelectPage(path);
  statusBar()->clearMessage();
}

void HelpWindow::ShowFound(const QString& page) {
  page_->ShowPage(page);
  page_->moveCursor(QTextCursor::Start);
  if (const auto hits = search_->Hits()) page_->find(*hits);
}

// On this page, otherwise on the next page found.
void HelpWindow::FindNext(QTextDocument::FindFlags direction) {
  const auto hits = search_->Hits();
  if (!hits) return Find();
  if (page_->find(*hits, direction)) return;
  const bool back = direction.testFlag(QTextDocument::FindBackward);
  search_->ChooseNext(back ? -1 : 1);
  if (!back) return;
  page_->moveCursor(QTextCursor::End);
  page_->find(*hits, direction);
}

void HelpWindow::Find() {
  tabs_->setCurrentWidget(search_);
  search_->Start();
}

// A modal window blocks all windows except its own, so the help belongs to the topmost one while that is
// shown. The help's own dialogs block it as usual.
void HelpWindow::StayUsable() {
  const QWidget* top = QApplication::activeModalWidget();
  if (top == nullptr) top = parentWidget()->window();
  for (const QWidget* widget = top; widget != nullptr; widget = widget->parentWidget()) {
    if (widget == this) return;
  }
  QWindow* owner = top->windowHandle();
  if (owner == nullptr || windowHandle() == nullptr || windowHandle()->transientParent() == owner) return;
  if (owner_ != nullptr) disconnect(owner_, nullptr, this, nullptr);
  owner_ = owner;
  windowHandle()->setTransientParent(owner);
  // Queued: only after the owner has left the list of modal windows is the next owner known.
  connect(owner, &QWindow::visibleChanged, this, &HelpWindow::StayUsable, Qt::QueuedConnection);
}

bool HelpWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowBlocked) StayUsable();
  return QMainWindow::event(event);
}

}  // namespace kolvane::help
