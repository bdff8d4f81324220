#pragma once

#include <QObject>
#include <QString>

class QFileDialog;

namespace kolvane::base {

/// The folders in which the user last chose files, one for each kind of file; a child of the window whose
/// file dialogs use it.
class FolderMemory : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  /// The memory of the window that `widget` or one of its parents is; null if none has one.
  static FolderMemory* Of(const QWidget* widget);

  /// Where the user last chose a file of that kind; empty if that is unknown or no longer a folder.
  virtual QString Folder(const char* kind) const = 0;
  virtual void NoteFile(const char* kind, const QString& path) = 0;
};

/// To be called before `dialog` is shown. It starts in the folder that its window remembers for that kind,
/// and the chosen file's folder is remembered. Size, type and date have the width that they need, which Qt's
/// own dialog does not give them.
void PrepareFileDialog(QFileDialog& dialog, const char* kind);

}  // namespace kolvane::base
