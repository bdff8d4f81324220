#include "window/window_memory.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <map>
#include <memory>

#include "base/temp_folder.h"
#include "device/fake_port_library.h"
#include "window/file_dialogs.h"
#include "window/window_records.h"

namespace kolvane::window {
namespace {

class MemoryStore final : public StateStore {
 public:
  std::string Read(const std::string& section, const std::string& key) const override {
    const auto found = texts.find(section + "/" + key);
    return found == texts.end() ? std::string() : found->second;
  }
  void Write(const std::string& section, const std::string& key, const std::string& text) override {
    texts[section + "/" + key] = text;
  }

  std::map<std::string, std::string> texts;
};

class WindowMemoryTest : public testing::Test, protected WindowRecords {
 protected:
  // The terminal as after the next start of the program.
  MainWindow& Start() {
    window_.reset();
    WindowContext context = ContextWith(source_, folder_.path());
    context.state = &store_;
    window_ = std::make_unique<MainWindow>(std::move(context));
    window_->Load();
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    QApplication::processEvents();
    return *window_;
  }
  void End() { window_->close(); }

  QSplitter* Splitter() { return window_->findChild<QSplitter*>(QStringLiteral("SplitContainer")); }

  /// Hands the dialog that `open` shows to `use`, and rejects it.
  template <typename Dialog>
  void InDialog(const std::function<void()>& open, const std::function<void(Dialog&)>& use) {
    bool used = false;
    QTimer::singleShot(0, window_.get(), [&] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      use(*dialog);
      used = true;
      static_cast<QDialog*>(dialog)->reject();
    });
    open();
    EXPECT_TRUE(used);
  }

  void Comment(const std::function<void(QInputDialog&)>& use) {
    InDialog<QInputDialog>(
        [this] { window_->findChild<QAction*>(QStringLiteral("mnuInsertComment"))->trigger(); }, use);
  }

  /// Picks the file in the next file dialog and calls `seen` with the dialog before.
  void ChooseFile(const std::string& name, const std::function<void(QFileDialog&)>& seen = {}) {
    QTimer::singleShot(0, window_.get(), [name, seen] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      if (seen) seen(*dialog);
      dialog->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(name));
      static_cast<QDialog*>(dialog)->accept();
    });
  }

  /// Saves the inspector's block, one byte, under that name.
  void SaveBlock(const std::string& name, const std::function<void(QFileDialog&)>& seen) {
    window_->core().output.AddLine(LineKind::kAnswer, "<41>");
    auto* pane = window_->findChild<pane::OutputPane*>(QStringLiteral("TermWin"));
    pane->Select(pane->text().Length() - 4, pane->text().Length());
    InDialog<QDialog>([&] { window_->findChild<QAction*>(QStringLiteral("mnuBinInspect"))->trigger(); },
                      [&](QDialog& inspector) {
                        ChooseFile(name, seen);
                        inspector.findChild<QPushButton*>(QStringLiteral("cmdSaveBlock"))->click();
                      });
  }

  std::string FolderShownBy(OpenMode mode, const std::string& current_file = {}) {
    std::string folder;
    InDialog<QFileDialog>([&] { AskOpenName(window_.get(), mode, current_file); },
                          [&](QFileDialog& dialog) { folder = dialog.directory().path().toStdString(); });
    return folder;
  }

  base::TempFolder folder_;
  device::FakePortLibrary library_;
  device::FakePortLibrarySource source_{&library_};
  MemoryStore store_;
  std::unique_ptr<MainWindow> window_;
};

TEST_F(WindowMemoryTest, AnUnchangedWindowWritesNothing) {
  Start();
  Comment([](QInputDialog&) {});
  End();
  EXPECT_TRUE(store_.texts.empty()) << store_.texts.begin()->first;
}

TEST_F(WindowMemoryTest, SizePositionAndSplitterAreRestored) {
  Start();
  window_->setGeometry(30, 20, 640, 500);
  QApplication::processEvents();
  Splitter()->setSizes({200, 400});
  Q_EMIT Splitter()->splitterMoved(200, 1);
  const QList<int> widths = Splitter()->sizes();
  End();
  Start();
  EXPECT_EQ(window_->geometry(), QRect(30, 20, 640, 500));
  EXPECT_EQ(Splitter()->sizes(), widths);
}

TEST_F(WindowMemoryTest, AMaximizedWindowIsMaximizedAgain) {
  Start();
  window_->showMaximized();
  End();
  Start();
  EXPECT_TRUE(window_->isMaximized());
}

TEST_F(WindowMemoryTest, ASizeThatDoesNotFitTheScreenIsCorrected) {
  const QRect screen = Start().screen()->availableGeometry();
  window_->setGeometry(screen.width() - 50, 10, screen.width() * 2, screen.height() * 2);
  End();
  Start();
  EXPECT_TRUE(screen.contains(window_->geometry())) << window_->width() << " x " << window_->height();
}

TEST_F(WindowMemoryTest, InvalidEntriesAreSkipped) {
  Start();
  const QRect original = window_->geometry();
  const QList<int> widths = Splitter()->sizes();
  End();
  for (const char* text : {"x", "-1,-1", "0,0", "1", "1,2,3", "99999999999,1", "AAAA"}) {
    store_.texts = {{"WINDOW/Geometry", text},
                    {"WINDOW/Splitter", text},
                    {"SIZES/CommentDialog", text},
                    {"FOLDERS/Log", text}};
    Start();
    EXPECT_EQ(window_->geometry(), original) << text;
    if (std::string_view(text) != "1,1") {
      EXPECT_EQ(Splitter()->sizes(), widths) << text;
    }
    End();
  }
}

TEST_F(WindowMemoryTest, TheSizeOfADialogIsRestored) {
  Start();
  QSize original;
  Comment([&](QInputDialog& dialog) {
    original = dialog.size();
    dialog.resize(original + QSize(100, 0));
  });
  End();
  EXPECT_EQ(store_.texts.size(), 1u);
  Start();
  Comment([&](QInputDialog& dialog) { EXPECT_EQ(dialog.size(), original + QSize(100, 0)); });
}

TEST_F(WindowMemoryTest, ADialogStaysOnTheScreen) {
  store_.Write("SIZES", "CommentDialog", "30000,30000");
  const QRect screen = Start().screen()->availableGeometry();
  Comment([&](QInputDialog& dialog) {
    const QRect rect = dialog.geometry();
    EXPECT_TRUE(screen.contains(rect))
        << rect.x() << ' ' << rect.y() << ' ' << rect.width() << ' ' << rect.height();
  });
}

class CountingDialog final : public QDialog {
 public:
  using QDialog::QDialog;
  int destroyed_receivers() const { return receivers(SIGNAL(destroyed(QObject*))); }
};

TEST_F(WindowMemoryTest, ADialogIsObservedOnceHoweverOftenItIsShown) {
  CountingDialog dialog(&Start());
  dialog.setObjectName(QStringLiteral("CommentDialog"));
  dialog.show();
  dialog.hide();
  const int receivers = dialog.destroyed_receivers();
  dialog.show();
  dialog.hide();
  EXPECT_EQ(dialog.destroyed_receivers(), receivers);
}

TEST_F(WindowMemoryTest, MessagesHaveTheSizeOfTheirText) {
  Start();
  InDialog<QMessageBox>([this] { MessagePrompt(window_.get()).ShowError("x"); },
                        [](QMessageBox& box) { box.resize(700, 300); });
  End();
  EXPECT_TRUE(store_.texts.empty());
}

TEST_F(WindowMemoryTest, FileDialogsStartInTheFolderOfTheLastFileOfTheirKind) {
  for (const char* kind : {"logs", "texts"}) std::filesystem::create_directory(folder_.Path(kind));
  base::WriteBytes(folder_.Path("texts/a.TXT"), "");
  Start();
  for (const auto& [mode, name] : {std::pair{OpenMode::kLog, folder_.Path("logs/a.LOG")},
                                   {OpenMode::kTextFile, folder_.Path("texts/a.TXT")}}) {
    ChooseFile(name);
    EXPECT_EQ(AskOpenName(window_.get(), mode), name);
  }
  End();
  Start();
  EXPECT_EQ(FolderShownBy(OpenMode::kLog), folder_.Path("logs"));
  EXPECT_EQ(FolderShownBy(OpenMode::kTextFile), folder_.Path("texts"));
  EXPECT_EQ(FolderShownBy(OpenMode::kLog, folder_.Path("texts/b.LOG")), folder_.Path("texts"))
      << "in the folder of the current file";
  std::filesystem::remove(folder_.Path("logs"));
  EXPECT_NE(FolderShownBy(OpenMode::kLog), folder_.Path("logs")) << "the folder no longer exists";
}

TEST_F(WindowMemoryTest, FileDialogsOfADialogKeepTheirFolderAndSize) {
  for (const char* kind : {"blocks", "other"}) std::filesystem::create_directory(folder_.Path(kind));
  Start();
  QSize size;
  SaveBlock(folder_.Path("blocks/a.bin"), [&](QFileDialog& dialog) {
    size = dialog.size() + QSize(0, 40);
    dialog.resize(size);
  });
  EXPECT_EQ(base::ReadBytes(folder_.Path("blocks/a.bin")), "A");
  End();
  Start();
  SaveBlock(folder_.Path("other/b.bin"), [&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().path().toStdString(), folder_.Path("blocks"));
    EXPECT_EQ(dialog.size(), size);
  });
  EXPECT_EQ(store_.texts["FOLDERS/Block"], folder_.Path("other"));
}

TEST_F(WindowMemoryTest, WithoutAStoreNothingIsRemembered) {
  MainWindow window(ContextWith(source_, folder_.path()));
  EXPECT_EQ(base::FolderMemory::Of(&window), nullptr);
  EXPECT_EQ(base::FolderMemory::Of(nullptr), nullptr);
}

}  // namespace
}  // namespace kolvane::window
