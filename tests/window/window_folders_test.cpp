// The folders from which the window reads help files and templates.

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QTimer>

#include "base/temp_folder.h"
#include "device/fake_port_library.h"
#include "inspect/ui/bin_inspect_dialog.h"
#include "window/window_records.h"

namespace kolvane::window {
namespace {

class WindowFolders : public testing::Test, protected WindowRecords {
 protected:
  WindowFolders() {
    std::filesystem::copy_file(KOLVANE_COMPILED_HELP, own_.Path("Terminal.chm"));
    base::WriteBytes(own_.Path("TermCmdHelp.rtf"), "{\\rtf1 own\\par}");
    window_.Load();
    window_.show();
  }

  WindowContext Context() {
    WindowContext context = ContextWith(source_, component_.path());
    context.own_folder = own_.path();
    context.user_folder = user_.path();
    return context;
  }

  void Press(const char* key) { window_.findChild<QAction*>(QLatin1String(key))->trigger(); }
  pane::OutputPane* Pane() { return window_.findChild<pane::OutputPane*>(); }

  QStringList TemplatesOffered() {
    QStringList names;
    QTimer::singleShot(0, &window_, [&names] {
      auto* dialog = qobject_cast<inspect::BinInspectDialog*>(QApplication::activeModalWidget());
      auto* list = dialog->findChild<QComboBox*>(QStringLiteral("cmbSpecialFormat"));
      for (int row = 0; row < list->count(); ++row) names << list->itemText(row);
      dialog->reject();
    });
    window_.core().output.AddLine(LineKind::kAnswer, "<41>");
    Pane()->Select(0, Pane()->text().Length());
    Press("TB_INSPECT");
    return names;
  }

  base::TempFolder component_;
  base::TempFolder own_;
  base::TempFolder user_;
  device::FakePortLibrary library_;
  device::FakePortLibrarySource source_{&library_};
  MainWindow window_{Context()};
};

TEST_F(WindowFolders, HelpFilesThatTheComponentsFolderLacksAreFoundBesideTheLibrary) {
  Press("TB_HELP");
  const auto* help = window_.findChild<help::HelpWindow*>();
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(Pane()->plainText(), "own");
}

TEST_F(WindowFolders, HelpFilesOfTheComponentsFolderComeFirst) {
  base::WriteBytes(component_.Path("termcmdhelp.RTF"), "{\\rtf1 chosen\\par}");
  base::WriteBytes(component_.Path("Terminal.chm"), "damaged");
  Press("TB_HELP");
  EXPECT_EQ(window_.findChild<help::HelpWindow*>(), nullptr);
  Press("TB_SPECIALCOMMANDS");
  EXPECT_EQ(Pane()->plainText(), "chosen");
}

TEST_F(WindowFolders, TemplatesOfTheUserComeFirstAndThoseBesideTheLibraryAreNotOffered) {
  base::WriteBytes(own_.Path("own.BNS"), "");
  base::WriteBytes(component_.Path("a.BNS"), "");
  base::WriteBytes(user_.Path("z.BNS"), "");
  EXPECT_EQ(TemplatesOffered(), (QStringList{"z.BNS", "a.BNS"}));
}

}  // namespace
}  // namespace kolvane::window
