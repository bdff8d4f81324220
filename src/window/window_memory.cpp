#include "window/window_memory.h"

#include <QChildEvent>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressDialog>
#include <QScreen>
#include <algorithm>
#include <optional>
#include <utility>

#include "base/ui/qt_text.h"

namespace kolvane::window {
namespace {

constexpr char kWindow[] = "WINDOW";
constexpr char kGeometry[] = "Geometry";
constexpr char kSplitter[] = "Splitter";
constexpr char kSizes[] = "SIZES";
constexpr char kFolders[] = "FOLDERS";

// Two whole numbers above 0, "640,480".
std::optional<std::pair<int, int>> PairOf(const std::string& text) {
  const QStringList parts = base::ToQt(text).split(QLatin1Char(','));
  if (parts.size() != 2) return std::nullopt;
  const int first = parts[0].toInt();
  const int second = parts[1].toInt();
  return first > 0 && second > 0 ? std::optional(std::pair(first, second)) : std::nullopt;
}

std::string TextOf(int first, int second) { return std::to_string(first) + "," + std::to_string(second); }

// Message and progress boxes have the size of their text.
bool IsDialog(const QWidget& widget) {
  const Qt::WindowType type = widget.windowType();
  return (type == Qt::Dialog || type == Qt::Window) && !widget.objectName().isEmpty() &&
         qobject_cast<const QMessageBox*>(&widget) == nullptr &&
         qobject_cast<const QProgressDialog*>(&widget) == nullptr;
}

// `rect` if it is within `screen`, otherwise a similar one that is and leaves room for a frame.
QRect Fitted(QRect rect, const QRect& screen) {
  constexpr double kShare = 0.9;
  if (screen.contains(rect)) return rect;
  rect.setSize(rect.size().boundedTo(screen.size() * kShare));
  rect.moveRight(std::min(rect.right(), screen.right()));
  rect.moveBottom(std::min(rect.bottom(), screen.bottom()));
  rect.moveLeft(std::max(rect.left(), screen.left()));
  rect.moveTop(std::max(rect.top(), screen.top()));
  return rect;
}

// Keeps the centre.
void Resize(QWidget& dialog, QSize size) {
  QRect rect(QPoint(), size);
  rect.moveCenter(dialog.geometry().center());
  dialog.setGeometry(Fitted(rect, dialog.screen()->availableGeometry()));
}

}  // namespace

WindowMemory::WindowMemory(QMainWindow* window, QSplitter* splitter, StateStore& store)
    : FolderMemory(window), window_(window), splitter_(splitter), store_(store) {
  RestorePosition();
  RestoreSplitter();
  connect(splitter_, &QSplitter::splitterMoved, this, [this] { splitter_moved_ = true; });
  window_->installEventFilter(this);
}

void WindowMemory::RestorePosition() {
  const std::string text = store_.Read(kWindow, kGeometry);
  if (!window_->restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(text)))) return;
  if (window_->windowState() != Qt::WindowNoState) return;
  const QRect rect = window_->geometry();
  const QRect fitted = Fitted(rect, window_->screen()->availableGeometry());
  if (fitted != rect) window_->setGeometry(fitted);
}

void WindowMemory::RestoreSplitter() {
  if (const auto widths = PairOf(store_.Read(kWindow, kSplitter)))
    splitter_->setSizes({widths->first, widths->second});
}

QString WindowMemory::Folder(const char* kind) const {
  const QString folder = base::ToQt(store_.Read(kFolders, kind));
  return QDir(folder).exists() ? folder : QString();
}

void WindowMemory::NoteFile(const char* kind, const QString& path) {
  store_.Write(kFolders, kind, base::FromQt(QFileInfo(path).absolutePath()));
}

void WindowMemory::Note() {
  const QByteArray geometry = window_->saveGeometry();
  if (!first_geometry_.isEmpty() && geometry != first_geometry_)
    store_.Write(kWindow, kGeometry, geometry.toBase64().toStdString());
  const QList<int> widths = splitter_->sizes();
  if (splitter_moved_ && widths.size() == 2) store_.Write(kWindow, kSplitter, TextOf(widths[0], widths[1]));
}

bool WindowMemory::eventFilter(QObject* watched, QEvent* event) {
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr) return false;
  // A dialog may show one of its own.
  if (event->type() == QEvent::ChildAdded && widget->isWindow())
    static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
  if (widget == window_) {
    // By now the window manager has positioned it.
    if (event->type() == QEvent::Paint && first_geometry_.isEmpty())
      first_geometry_ = window_->saveGeometry();
  } else if (!event->spontaneous()) {
    if (event->type() == QEvent::Show && IsDialog(*widget)) ShowDialog(*widget);
    if (event->type() == QEvent::Hide) HideDialog(*widget);
  }
  return false;
}

void WindowMemory::ShowDialog(QWidget& dialog) {
  if (!shown_.contains(&dialog)) {
    if (const auto size = PairOf(store_.Read(kSizes, base::FromQt(dialog.objectName()))))
      Resize(dialog, {size->first, size->second});
    connect(&dialog, &QObject::destroyed, this, [this](const QObject* gone) { shown_.remove(gone); });
  }
  shown_[&dialog] = dialog.size();
}

void WindowMemory::HideDialog(const QWidget& dialog) {
  const auto shown = shown_.constFind(&dialog);
  if (shown == shown_.constEnd() || *shown == dialog.size() || dialog.isMaximized()) return;
  store_.Write(kSizes, base::FromQt(dialog.objectName()), TextOf(dialog.width(), dialog.height()));
}

}  // namespace kolvane::window
