#include "script/command_file.h"

#include <gtest/gtest.h>

#include "base/fake_prompt.h"
#include "base/temp_folder.h"
#include "script/list_text.h"
#include "script/texts.h"
#include "terminal/session_fakes.h"

namespace kolvane::script {
namespace {

using Calls = std::vector<std::string>;

class FakeDialogs final : public CommandFileDialogs {
 public:
  std::optional<std::string> AskOpenName(const std::string& current_file) override {
    calls.push_back("open" + current_file);
    return answer;
  }
  std::optional<std::string> AskSaveName(const std::string& current_file) override {
    calls.push_back("save" + current_file);
    return answer;
  }

  std::optional<std::string> answer;
  Calls calls;
};

class CommandFileMenuTest : public testing::Test {
 protected:
  std::string Status() const { return texts::ListStatus(list.file_name()); }

  base::TempFolder folder;
  std::string file = folder.Path("a.CMD");
  RunFlags run;
  CommandList list{&run};
  FakeDialogs dialogs;
  base::FakePrompt prompt;
  CommandFileMenu menu{list, dialogs, prompt};
};

TEST_F(CommandFileMenuTest, OpensTheChosenFile) {
  base::WriteBytes(file, "A\r\nB\r\n");
  dialogs.answer = file;
  menu.Open();
  EXPECT_EQ(ListText(list), ">A|B");
  EXPECT_EQ(Status(), "Befehlsliste: " + file);

  dialogs.answer.reset();
  menu.Open();
  EXPECT_EQ(ListText(list), ">A|B");
  EXPECT_EQ(dialogs.calls, (Calls{"open", "open" + file}));
}

TEST_F(CommandFileMenuTest, ShowsWhyAFileCannotBeOpened) {
  menu.OpenFile("/none/x.CMD");
  EXPECT_EQ(prompt.errors, Calls{"Die Befehlsliste „/none/x.CMD“ kann nicht gelesen werden: "
                                 "Datei oder Ordner nicht gefunden"});
  EXPECT_EQ(Status(), "Befehlsliste: Unbenannt");
}

TEST_F(CommandFileMenuTest, SavesUnderTheCurrentName) {
  base::WriteBytes(file, "A\r\n");
  menu.OpenFile(file);
  list.SetText(2, "B");
  EXPECT_TRUE(list.modified());
  menu.Save();
  EXPECT_FALSE(list.modified());
  EXPECT_EQ(base::ReadBytes(file).substr(0, 10), "A\r\nB\r\n\r\n\r\n");
  EXPECT_EQ(dialogs.calls, Calls{});
}

TEST_F(CommandFileMenuTest, SavesANewListUnderANameForThisTimeOnly) {
  FillList(list, "A");
  menu.Save();
  EXPECT_EQ(folder.Names(), Calls{});

  dialogs.answer = file;
  list.SetText(1, "B");
  menu.Save();
  EXPECT_EQ(base::ReadBytes(file).size(), 1024 * 2 + 1u);
  EXPECT_EQ(Status(), "Befehlsliste: Unbenannt");
  EXPECT_EQ(list.last_file(), file);
  EXPECT_FALSE(list.modified());
  menu.Save();
  EXPECT_EQ(dialogs.calls, (Calls{"save", "save", "save"}));
  menu.New();
  EXPECT_EQ(list.last_file(), "");
}

TEST_F(CommandFileMenuTest, SaveAsEmptiesTheFileAndTakesItsName) {
  base::WriteBytes(file, "old");
  FillList(list, "A|B");
  list.SetCurrentRow(2);
  menu.SaveAs();
  EXPECT_EQ(ListText(list), "A|>B");

  dialogs.answer = file;
  menu.SaveAs();
  EXPECT_EQ(base::ReadBytes(file), "");
  EXPECT_EQ(ListText(list), ">A|B");
  EXPECT_EQ(Status(), "Befehlsliste: " + file);
  menu.Save();
  EXPECT_EQ(base::ReadBytes(file).substr(0, 6), "A\r\nB\r\n");
  EXPECT_EQ(base::ReadBytes(file).size(), 1024 * 2 + 2u);
}

TEST_F(CommandFileMenuTest, AFailedWriteIsShownAndChangesNothing) {
  FillList(list, "A");
  list.SetText(1, "B");
  dialogs.answer = "/dev/full";
  menu.Save();
  EXPECT_TRUE(list.modified());
  dialogs.answer = folder.Path("none/a.CMD");
  menu.SaveAs();
  EXPECT_EQ(Status(), "Befehlsliste: Unbenannt");
  EXPECT_EQ(prompt.errors,
            (Calls{"Die Befehlsliste „/dev/full“ kann nicht geschrieben werden: Der Datenträger ist voll",
                   "Die Befehlsliste „" + folder.Path("none/a.CMD") +
                       "“ kann nicht geschrieben werden: Datei oder Ordner nicht gefunden"}));
}

TEST_F(CommandFileMenuTest, SavingAsStartsFromTheCurrentFile) {
  base::WriteBytes(file, "A\r\n");
  menu.OpenFile(file);
  menu.SaveAs();
  EXPECT_EQ(dialogs.calls, Calls{"save" + file});
}

TEST_F(CommandFileMenuTest, ReportsWhatTheFileCannotHoldBeforeItIsWritten) {
  base::WriteBytes(file, "A\r\n");
  menu.OpenFile(file);
  list.SetText(3, "MEAS:RES 5 Ω");
  prompt.at_error = [&] { EXPECT_EQ(base::ReadBytes(file), "A\r\n"); };
  menu.Save();
  EXPECT_EQ(prompt.errors, Calls{"Das Zeichen „Ω“ in Zeile 3 kann nicht gespeichert werden. "
                                 "In der Datei steht dafür „?“."});
  EXPECT_EQ(base::ReadBytes(file).substr(0, 17), "A\r\n\r\nMEAS:RES 5 ?");
  EXPECT_EQ(list.Text(3), "MEAS:RES 5 Ω");
  EXPECT_TRUE(list.modified()) << "the file holds something else";

  list.SetText(3, "MEAS:RES 5");
  menu.Save();
  EXPECT_FALSE(list.modified());
  EXPECT_EQ(prompt.errors.size(), 1u);
}

TEST_F(CommandFileMenuTest, AListWithoutANameReportsItOnceTheNameIsChosen) {
  FillList(list, "→|Ω");
  menu.Save();
  EXPECT_EQ(prompt.errors, Calls{});
  dialogs.answer = file;
  menu.Save();
  EXPECT_EQ(prompt.errors, Calls{"Das Zeichen „→“ in Zeile 1 kann nicht gespeichert werden. "
                                 "In der Datei steht dafür „?“. Ebenso in einer weiteren Zeile."});
}

TEST_F(CommandFileMenuTest, NewEmptiesTheList) {
  base::WriteBytes(file, "A\r\n");
  menu.OpenFile(file);
  menu.New();
  EXPECT_EQ(ListText(list), "");
  EXPECT_EQ(Status(), "Befehlsliste: Unbenannt");
}

TEST_F(CommandFileMenuTest, DuringARunOnlySaveActs) {
  base::WriteBytes(file, "A\r\n");
  menu.OpenFile(file);
  dialogs.answer = folder.Path("b.CMD");
  run.ScriptRunning = 1;
  menu.New();
  menu.Open();
  menu.OpenFile(folder.Path("b.CMD"));
  menu.SaveAs();
  EXPECT_EQ(dialogs.calls, Calls{});
  EXPECT_EQ(prompt.errors, Calls{});
  EXPECT_EQ(ListText(list), ">A");
  menu.Save();
  EXPECT_EQ(base::ReadBytes(file).size(), 1024 * 2 + 1u);
}

TEST_F(CommandFileMenuTest, CountsWhatWasLeftOutUntilTheFileIsSaved) {
  base::WriteBytes(file, std::string(1026, '\n'));
  menu.OpenFile(file);
  EXPECT_EQ(list.left_out(), 2u);
  EXPECT_EQ(Status(), "Befehlsliste: " + file);
  menu.Save();
  EXPECT_EQ(list.left_out(), 0u);
}

}  // namespace
}  // namespace kolvane::script
