#pragma once

#include <QHash>
#include <QMainWindow>
#include <QMenu>
#include <QObject>
#include <QSize>
#include <QSplitter>
#include <QStringList>
#include <functional>

#include "window/state_store.h"

namespace kolvane::window {

/// What the terminal window finds again at the next start: its place and size, the splitter, the sizes of its
/// dialogs, the folders of its file dialogs. Only what the user has changed is written.
class WindowMemory final : public QObject {
  Q_OBJECT

 public:
  /// `window` has its usual size and is not shown yet; it gets the remembered one, fitted to the screen.
  /// `store` outlives this.
  WindowMemory(QMainWindow* window, QSplitter* splitter, StateStore& store);

  /// The memory of the terminal that `widget` belongs to; null where there is none.
  static WindowMemory* Of(const QWidget* widget);

  /// Where the user chose a file of that kind last; empty where that is unknown or no folder any more.
  QString Folder(const char* kind) const;
  void NoteFile(const char* kind, const QString& path);

  /// To be called before the window closes.
  void Note();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void RestorePlace();
  void RestoreSplitter();
  void ShowDialog(QWidget& dialog);
  void HideDialog(const QWidget& dialog);

  QMainWindow* window_;
  QSplitter* splitter_;
  StateStore& store_;
  QByteArray first_geometry_;  // once the window is on the screen
  bool splitter_moved_ = false;
  QHash<const QObject*, QSize> shown_;  // dialogs with the sizes that they came with
};

/// The command lists used last, `mnuRecent`: newest first, each once. They are kept from one window to the
/// next where there is a store.
class RecentLists final : public QObject {
  Q_OBJECT

 public:
  using Open = std::function<void(const QString& name)>;

  /// `store`, which may be null, outlives this.
  RecentLists(QMenu* menu, StateStore* store, Open open);

  /// A list of this file is in use; an empty name is none.
  void Note(const std::string& file);

 private:
  void Fill();

  QMenu* menu_;
  StateStore* store_;
  Open open_;
  QStringList names_;
};

}  // namespace kolvane::window
