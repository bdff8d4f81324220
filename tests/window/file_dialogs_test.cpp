#include "window/file_dialogs.h"

#include <QComboBox>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

struct DialogState {
  QString title;
  QStringList filters;
  QFileDialog::FileMode mode = QFileDialog::Directory;
  QFileDialog::AcceptMode accept = QFileDialog::AcceptOpen;
  QString suffix;
  bool help_button = false;
};

class FileDialogsTest : public WindowFixture {
 protected:
  template <typename Ask>
  DialogState Capture(Ask ask) {
    DialogState state;
    OnDialog<QFileDialog>([&state](QFileDialog& dialog) {
      state = {dialog.windowTitle(),   dialog.nameFilters(),
               dialog.fileMode(),      dialog.acceptMode(),
               dialog.defaultSuffix(), dialog.findChild<QPushButton*>("HelpButton") != nullptr};
      dialog.reject();
    });
    EXPECT_EQ(ask(), std::nullopt);
    return state;
  }
  DialogState Capture(OpenMode mode) {
    return Capture([&] { return AskOpenName(&window_, mode); });
  }
  DialogState Capture(SaveMode mode) {
    return Capture([&] { return AskSaveName(&window_, mode); });
  }
};

TEST_F(FileDialogsTest, ModesOfOpening) {
  const DialogState list = Capture(OpenMode::kCommandList);
  EXPECT_EQ(list.title, "Befehlsliste öffnen");
  EXPECT_EQ(list.filters, (QStringList{"Terminal Befehls-Dateien (*.CMD)", "Alle Dateien (*.*)"}));
  EXPECT_EQ(list.mode, QFileDialog::ExistingFile);
  EXPECT_EQ(list.accept, QFileDialog::AcceptOpen);
  EXPECT_TRUE(list.help_button);
  const DialogState log = Capture(OpenMode::kLog);
  EXPECT_EQ(log.title, "Logdatei öffnen");
  EXPECT_EQ(log.filters, (QStringList{"Terminal Log-Dateien (*.LOG)", "Alle Dateien (*.*)"}));
  EXPECT_EQ(log.mode, QFileDialog::AnyFile);
  EXPECT_EQ(log.accept, QFileDialog::AcceptOpen);
  EXPECT_TRUE(log.help_button);
  const DialogState text = Capture(OpenMode::kTextFile);
  EXPECT_EQ(text.title, "Textdatei öffnen");
  EXPECT_EQ(text.filters, (QStringList{"Textdateien (*.TXT)", "Log-Dateien (*.LOG)", "Alle Dateien (*.*)"}));
  EXPECT_EQ(text.mode, QFileDialog::ExistingFile);
}

TEST_F(FileDialogsTest, ModesOfSaving) {
  const DialogState terminal = Capture(SaveMode::kTerminal);
  EXPECT_EQ(terminal.title, "Terminal Inhalt speichern");
  EXPECT_EQ(terminal.filters, (QStringList{"Terminal Dateien (*.LOG)", "Alle Dateien (*.*)"}));
  EXPECT_EQ(terminal.accept, QFileDialog::AcceptSave);
  EXPECT_EQ(terminal.suffix, "LOG");
  const DialogState list = Capture(SaveMode::kCommandList);
  EXPECT_EQ(list.title, "Befehlsliste speichern");
  EXPECT_EQ(list.filters, (QStringList{"Terminal Befehls-Dateien (*.CMD)", "Alle Dateien (*.*)"}));
  EXPECT_EQ(list.suffix, "CMD");
  EXPECT_EQ(Capture(SaveMode::kPdf).suffix, "PDF");
}

TEST_F(FileDialogsTest, NeitherTypeNorDateOfAFileIsCut) {
  base::WriteBytes(folder_.Path("liste.CMD"), "");
  OnDialog<QFileDialog>([&](QFileDialog& dialog) {
    auto* files = dialog.findChild<QTreeView*>("treeView");
    ASSERT_TRUE(QTest::qWaitFor([&] { return files->model()->rowCount(files->rootIndex()) == 1; }));
    for (int column = 1; column < files->header()->count(); ++column) {
      const auto fits = [files, column] {
        const QModelIndex cell = files->model()->index(0, column, files->rootIndex());
        return files->columnWidth(column) > files->fontMetrics().horizontalAdvance(cell.data().toString());
      };
      EXPECT_TRUE(QTest::qWaitFor(fits)) << column;
    }
    dialog.reject();
  });
  EXPECT_EQ(AskOpenName(&window_, OpenMode::kCommandList, folder_.Path("liste.CMD")), std::nullopt);
}

TEST_F(FileDialogsTest, StartInTheFolderOfTheCurrentFile) {
  const std::string name = folder_.Path("liste.CMD");
  base::WriteBytes(name, "");
  OnDialog<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().path().toStdString(), folder_.path());
    EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "");
    dialog.reject();
  });
  EXPECT_EQ(AskOpenName(&window_, OpenMode::kCommandList, name), std::nullopt);
  OnDialog<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().path().toStdString(), folder_.path());
    EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "liste.CMD");
    dialog.reject();
  });
  EXPECT_EQ(AskSaveName(&window_, SaveMode::kCommandList, name), std::nullopt);
}

TEST_F(FileDialogsTest, StartInTheirLastFolderIfTheFilesFolderIsGone) {
  // Qt uses this folder for all dialogs.
  QFileDialog().setDirectory(QDir::current());
  OnDialog<QFileDialog>([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory(), QDir::current());
    dialog.reject();
  });
  EXPECT_EQ(AskOpenName(&window_, OpenMode::kCommandList, folder_.Path("gone/a.CMD")), std::nullopt);
}

TEST_F(FileDialogsTest, ThoseOfTheListStartInItsFolder) {
  const std::string name = folder_.Path("liste.CMD");
  base::WriteBytes(name, "A\r\n");
  window_.OpenCommandFile(name);
  for (const char* item : {"mnuOpenCommandFile", "mnuSaveCommandFileAs"}) {
    OnDialog<QFileDialog>([&](QFileDialog& dialog) {
      EXPECT_EQ(dialog.directory().path().toStdString(), folder_.path()) << item;
      dialog.reject();
    });
    Press(item);
  }
  EXPECT_EQ(dialogs_, 2);
}

TEST_F(FileDialogsTest, ALogNeedNotExist) {
  const std::string name = folder_.Path("new.LOG");
  ChooseFile(name);
  EXPECT_EQ(AskOpenName(&window_, OpenMode::kLog), name);
}

TEST_F(FileDialogsTest, AMissingSuffixIsAdded) {
  ChooseFile(folder_.Path("a"));
  EXPECT_EQ(AskSaveName(&window_, SaveMode::kTerminal), folder_.Path("a.LOG"));
  ChooseFile(folder_.Path("a.txt"));
  EXPECT_EQ(AskSaveName(&window_, SaveMode::kTerminal), folder_.Path("a.txt"));
}

TEST_F(FileDialogsTest, KeepsNamesInUnicode) {
  base::WriteBytes(folder_.Path("Größe €.TXT"), "");
  ChooseFile(folder_.Path("Größe €.TXT"));
  EXPECT_EQ(AskOpenName(&window_, OpenMode::kTextFile), folder_.Path("Größe €.TXT"));
}

// The filter's pattern means every file, with or without a dot.
TEST_F(FileDialogsTest, AllFilesIncludeThoseWithoutADot) {
  OnDialog<QFileDialog>([](QFileDialog& dialog) {
    auto* filters = dialog.findChild<QComboBox*>("fileTypeCombo");
    filters->setCurrentIndex(1);
    Q_EMIT filters->activated(1);
    Q_EMIT filters->textActivated(filters->itemText(1));
    EXPECT_EQ(dialog.findChild<QFileSystemModel*>()->nameFilters(), QStringList{"*"});
    dialog.reject();
  });
  EXPECT_EQ(AskOpenName(&window_, OpenMode::kCommandList), std::nullopt);
}

}  // namespace
}  // namespace kolvane::window
