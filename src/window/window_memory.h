#pragma once

#include <QHash>
#include <QMainWindow>
#include <QObject>
#include <QSize>
#include <QSplitter>

#include "window/state_store.h"

namespace kolvane::window {

/// What the terminal window restores at the next start: its position and size, the splitter, the sizes of its
/// dialogs, the folders of its file dialogs. Only what the user has changed is saved.
class WindowMemory final : public QObject {
  Q_OBJECT

 public:
  /// `window` has its default size and is not shown yet; it gets the saved one, fitted to the screen. `store`
  /// must outlive this object.
  WindowMemory(QMainWindow* window, QSplitter* splitter, StateStore& store);

  /// The memory of the terminal that `widget` belongs to; null if there is none.
  static WindowMemory* Of(const QWidget* widget);

  /// Where the user last chose a file of that kind; empty if that is unknown or no longer a folder.
  QString Folder(const char* kind) const;
  void NoteFile(const char* kind, const QString& path);

  /// To be called before the window closes.
  void Note();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void RestorePosition();
  void RestoreSplitter();
  void ShowDialog(QWidget& dialog);
  void HideDialog(const QWidget& dialog);

  QMainWindow* window_;
  QSplitter* splitter_;
  StateStore& store_;
  QByteArray first_geometry_;  // when the window was first painted
  bool splitter_moved_ = false;
  QHash<const QObject*, QSize> shown_;  // dialogs with the sizes at which they were shown
};

}  // namespace kolvane::window
