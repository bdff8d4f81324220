#pragma once

#include <QHash>
#include <QMainWindow>
#include <QSize>
#include <QSplitter>

#include "base/ui/file_dialog.h"
#include "window/state_store.h"

namespace kolvane::window {

/// What the terminal window restores at the next start: its position and size, the splitter, the sizes of its
/// dialogs, the folders of its file dialogs. Only what the user has changed is saved.
class WindowMemory final : public base::FolderMemory {
  Q_OBJECT

 public:
  /// `window` has its default size and is not shown yet; it gets the saved one, fitted to the screen. `store`
  /// must outlive this object.
  WindowMemory(QMainWindow* window, QSplitter* splitter, StateStore& store);

  QString Folder(const char* kind) const override;
  void NoteFile(const char* kind, const QString& path) override;

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
