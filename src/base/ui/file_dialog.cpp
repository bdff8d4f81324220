#include "base/ui/file_dialog.h"

#include <QFileDialog>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QTreeView>
#include <algorithm>

namespace kolvane::base {
namespace {

constexpr int kFileNameLength = 20;  // in characters; shown at least

// Nothing to do if the desktop provides the dialog.
void FitColumns(QFileDialog& dialog) {
  auto* files = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
  auto* model = dialog.findChild<QFileSystemModel*>();
  if (files == nullptr || model == nullptr) return;
  // Not by the header's resize mode, which the dialog would store for every Qt program.
  QObject::connect(model, &QFileSystemModel::directoryLoaded, files, [files] {
    int name = files->viewport()->width();
    for (int column = 1; column < files->header()->count(); ++column) {
      files->resizeColumnToContents(column);
      name -= files->columnWidth(column);
    }
    files->setColumnWidth(0, std::max(name, kFileNameLength * files->fontMetrics().averageCharWidth()));
  });
}

void KeepFolder(QFileDialog& dialog, const char* kind) {
  FolderMemory* memory = FolderMemory::Of(dialog.parentWidget());
  if (memory == nullptr) return;
  if (const QString folder = memory->Folder(kind); !folder.isEmpty()) dialog.setDirectory(folder);
  QObject::connect(&dialog, &QFileDialog::fileSelected, memory,
                   [memory, kind](const QString& file) { memory->NoteFile(kind, file); });
}

}  // namespace

FolderMemory* FolderMemory::Of(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (auto* memory = widget->findChild<FolderMemory*>(QString(), Qt::FindDirectChildrenOnly)) return memory;
  }
  return nullptr;
}

void PrepareFileDialog(QFileDialog& dialog, const char* kind) {
  FitColumns(dialog);
  KeepFolder(dialog, kind);
}

}  // namespace kolvane::base
