#include "window/values_command.h"

#include <QTableView>
#include <QTest>

#include "base/number.h"
#include "base/temp_folder.h"
#include "values/ui/values_table.h"
#include "values/ui/values_window.h"
#include "window/sending_fixture.h"

namespace kolvane::window {
namespace {

class ValuesCommandTest : public SendingFixture {
 protected:
  values::ValuesWindow* Window() { return window_.findChild<values::ValuesWindow*>("ValuesWindow"); }
  void Show() {
    Press("mnuValues");
    ASSERT_NE(Window(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(Window()));
  }
  void Ask(const QString& command, const std::string& answer) {
    library_.replies.push_back({answer + "\r\n"});
    Send(command);
  }
  QStringList Rows() {
    Window()->Refresh();
    const auto* model = Window()->findChild<values::ValuesTable*>("ValuesTable")->model();
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row) {
      QStringList cells;
      for (int column = 1; column < model->columnCount(); ++column)
        cells << model->index(row, column).data().toString();
      rows << cells.join(QLatin1Char('|'));
    }
    return rows;
  }
};

TEST_F(ValuesCommandTest, NothingIsTakenBeforeTheFirstTime) {
  Connect();
  Ask("MSV?", "1.5");
  EXPECT_EQ(Window(), nullptr);
  Show();
  EXPECT_EQ(Rows(), QStringList{});
}

TEST_F(ValuesCommandTest, EachAnswerThatSplitsIntoNumbersIsARow) {
  Connect();
  Show();
  Ask("MSV? 1-2", "1.5,-2");
  Ask("*IDN?", "KOLVANE,1,2");
  terminal_.output.SilentMode = true;
  Ask("MSV? 1", "0.25");
  terminal_.output.SilentMode = false;
  Send("MSV?");
  const QString sign = QString::fromStdString(base::SystemDecimalSign());
  EXPECT_EQ(Rows(), (QStringList{"MSV? 1-2|1" + sign + "5|-2", "MSV? 1|0" + sign + "25|"}));
}

TEST_F(ValuesCommandTest, RowsComeFromAListBesideWhichTheWindowIsOpen) {
  Connect();
  Show();
  base::WriteBytes(folder_.Path("a.CMD"), "MSV? 1\r\n$SILENT ON\r\n'MSV? 2\r\nMSV? 3\r\n");
  window_.OpenCommandFile(folder_.Path("a.CMD"));
  library_.replies = {{"1\r\n"}, {"3\r\n"}};
  AnswerBoxes();
  window_.PressPlay();
  EXPECT_EQ(Rows(), (QStringList{"MSV? 1|1", "MSV? 3|3"}));
  terminal_.output.SilentMode = false;
}

TEST_F(ValuesCommandTest, WhatWasTakenStaysWhileTheWindowIsClosed) {
  Connect();
  Show();
  Ask("A?", "1");
  Window()->close();
  EXPECT_FALSE(Window()->isVisible());
  Ask("A?", "2");
  Show();
  EXPECT_EQ(Rows(), (QStringList{"A?|1", "A?|2"}));
}

TEST_F(ValuesCommandTest, ClosesWithTheTerminal) {
  Show();
  values::ValuesWindow* shown = Window();
  window_.close();
  EXPECT_FALSE(shown->isVisible());
}

}  // namespace
}  // namespace kolvane::window
