#include "window/analysis_commands.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <sstream>

#include "app/instrument.h"
#include "app/program.h"
#include "base/number.h"
#include "base/temp_folder.h"
#include "values/csv_reader.h"
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

TEST_F(ValuesCommandTest, NothingIsStoredBeforeTheFirstOpening) {
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

TEST_F(ValuesCommandTest, RowsAreAddedByAListWhileTheWindowIsOpen) {
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

TEST_F(ValuesCommandTest, TheListIsPlayedByItsKeyInTheWindowOfValues) {
  Connect();
  Show();
  base::WriteBytes(folder_.Path("a.CMD"), "MSV? 1\r\n");
  window_.OpenCommandFile(folder_.Path("a.CMD"));
  library_.replies = {{"1\r\n"}};
  AnswerBoxes();
  Window()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(Window()));
  QTest::keyClick(Window(), Qt::Key_F5);
  EXPECT_EQ(Rows(), QStringList{"MSV? 1|1"});
}

// An answer that comes while a message waits for its OK would be read by the next command.
TEST_F(ValuesCommandTest, AFailedSaveHoldsUpNoRun) {
  Show();
  Window()->findChild<QAction*>("ValuesSave")->trigger();
  auto* dialog = Window()->findChild<QFileDialog*>("SaveDialog");
  ASSERT_NE(dialog, nullptr);
  dialog->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(folder_.Path("no/a.csv")));
  static_cast<QDialog*>(dialog)->accept();
  QPointer<QMessageBox> box = Window()->findChild<QMessageBox*>("MessageBox");
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->isVisible());
  EXPECT_FALSE(box->isModal());
  EXPECT_TRUE(box->text().contains("no/a.csv"));
  box->button(QMessageBox::Ok)->click();
  EXPECT_TRUE(QTest::qWaitFor([&box] { return box == nullptr; }));
}

TEST_F(ValuesCommandTest, ValuesAreKeptWhileTheWindowIsClosed) {
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

struct Asked {
  const char* command;  ///< UTF-8
  const char* answer;   ///< the device's bytes
};

// Commands with characters that CSV must quote, and answers with fewer, more and no numbers.
constexpr Asked kAsked[] = {{"MSV? 1-2", "1.5,-2"},
                            {"SAY \"x\", y", "3"},
                            {"Größe?", "0,1,2"},
                            {"EMPTY?", ""},
                            {"GAP?", "1,,3"},
                            {"*IDN?", "KVA,\"8\",1"},
                            {"TEXT?", "\xFC\xDF, \"a\""},
                            {"A,B", "-0.0,1e-300,1.7976931348623157e308,4"},
                            {"WIDE?", "  7 ,8  "},
                            {"INF?", "1,inf"},
                            {"HEX?", "0x10"},
                            {"LONG?", "0.1,0.30000000000000004,123456789.125"}};

/// What a run without a window writes for the same commands and answers.
std::string CsvOfRun(int fields) {
  std::size_t next = 0;
  app::Instrument instrument(
      [&next](const std::string&) { return std::string(kAsked[next++].answer) + "\r\n"; });
  std::vector<std::string> words = {"send", "--connect", instrument.Resource(),  "--format",
                                    "csv",  "--fields",  std::to_string(fields), "--no-device-words",
                                    "--"};
  for (const Asked& each : kAsked) words.emplace_back(each.command);
  const app::Outcome outcome = app::RunProgram(words);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return outcome.out;
}

// Each line from its first separator onwards.
std::string WithoutTimes(const std::string& csv) {
  std::istringstream lines(csv);
  std::string rest;
  for (std::string line; std::getline(lines, line);)
    rest += line.substr(std::min(line.find(','), line.size())) + '\n';
  return rest;
}

// With `fields` columns after the time, which is removed: further columns are cut off, missing ones added
// empty.
values::CsvRows WithFields(const std::string& csv, std::size_t fields) {
  auto rows = values::ReadCsv(csv, ',');
  EXPECT_TRUE(rows);
  rows->erase(rows->begin());
  for (auto& row : *rows) {
    row.erase(row.begin());
    row.resize(1 + fields);
  }
  return *rows;
}

TEST_F(ValuesCommandTest, ASavedFileEqualsTheOutputOfARunWithoutAWindow) {
  Connect();
  Show();
  for (const Asked& each : kAsked) Ask(QString::fromUtf8(each.command), each.answer);
  Window()->Refresh();
  Window()->findChild<QAction*>("ValuesSave")->trigger();
  auto* dialog = Window()->findChild<QFileDialog*>("SaveDialog");
  ASSERT_NE(dialog, nullptr);
  dialog->selectNameFilter("CSV, Komma und Dezimalpunkt (*.csv)");
  dialog->selectFile(QString::fromStdString(folder_.Path("values.csv")));
  QMetaObject::invokeMethod(dialog, "accept");
  const std::string saved = base::ReadBytes(folder_.Path("values.csv"));
  EXPECT_EQ(std::count(saved.begin(), saved.end(), '\n'), 7) << saved;
  EXPECT_EQ(WithoutTimes(saved), WithoutTimes(CsvOfRun(4)));
  for (const std::size_t fields : {1u, 2u, 6u})
    EXPECT_EQ(WithFields(saved, fields), WithFields(CsvOfRun(static_cast<int>(fields)), fields)) << fields;
}

}  // namespace
}  // namespace kolvane::window
