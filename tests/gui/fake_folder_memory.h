#pragma once

#include <QFileInfo>
#include <map>
#include <string>

#include "base/ui/file_dialog.h"

namespace kolvane::gui {

/// Remembers folders for the file dialogs of its parent and of the windows that this opens.
class FakeFolderMemory final : public base::FolderMemory {
 public:
  using FolderMemory::FolderMemory;
  QString Folder(const char* kind) const override {
    const auto found = folders.find(kind);
    return found == folders.end() ? QString() : QString::fromStdString(found->second);
  }
  void NoteFile(const char* kind, const QString& path) override {
    folders[kind] = QFileInfo(path).absolutePath().toStdString();
  }

  std::map<std::string, std::string> folders;  ///< by kind
};

}  // namespace kolvane::gui
