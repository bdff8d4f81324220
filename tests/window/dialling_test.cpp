// What the window shows while a modem is dialled.

#include <QAbstractItemView>
#include <QLabel>
#include <algorithm>
#include <filesystem>

#include "base/small_files.h"
#include "base/temp_folder.h"
#include "device/connection_texts.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

using device::port_code::kCom1;

class DiallingWindow : public WindowFixture {
 protected:
  DiallingWindow() {
    connection_.port_code = kCom1;
    connection_.modem_script = "ATZ\r\nATDT42";
    connection_.baud = 9600;
    connection_.baud_index = *device::BaudIndex(connection_.baud);
    panel_ = Find<QLabel>("StatusBar1_1");
    panel_->installEventFilter(&painted_);
  }

  /// Records what the panel shows at each paint.
  class PaintedTexts final : public QObject {
   public:
    QStringList texts;

   private:
    bool eventFilter(QObject* object, QEvent* event) override {
      const QString text = qobject_cast<QLabel*>(object)->text();
      if (event->type() == QEvent::Paint && (texts.isEmpty() || texts.back() != text)) texts << text;
      return false;
    }
  };

  QLabel* panel_;
  PaintedTexts painted_;
};

TEST_F(DiallingWindow, PaintsEachStepAndFinallyTheConnection) {
  QApplication::processEvents();
  painted_.texts.clear();
  library_.replies = {{"OK\r\n"}, {"RINGING\r\n"}, {"CONNECT 9600\r\n"}};
  Press("TB_CONNECT");
  QApplication::processEvents();
  EXPECT_EQ(painted_.texts.join('\n').toStdString(),
            "Modem wählt: „ATZ“ gesendet, warte auf Antwort\n"
            "Modem wählt: „ATDT42“ gesendet, warte auf Antwort\n"
            "Modem wählt: Antwort „RINGING“, warte auf CONNECT (noch 60 s)\n"
            "COM1 9600 Baud, Parity: Gerade, Data: 1, Stop: 1");
}

TEST_F(DiallingWindow, IsGivenUpWhenTheWindowIsToClose) {
  library_.replies = {{"OK\r\n"}, {"OK\r\n"}, {"CONNECT\r\n"}};
  QTimer::singleShot(0, &window_, [this] { close_.made = true; });
  Press("TB_CONNECT");
  EXPECT_EQ(library_.calls.back(), "ClosePort()");
  EXPECT_EQ(library_.replies.size(), 2u);
  EXPECT_LT(device_.open_step_status, 0);
}

// Actions triggered while the window waits.
TEST_F(DiallingWindow, LetsNothingElseConnectOrRun) {
  library_.replies = {{"OK\r\n"}, {"OK\r\n"}, {"CONNECT\r\n"}};
  Find<QAbstractItemView>("CommandScript")
      ->model()
      ->setData(Find<QAbstractItemView>("CommandScript")->model()->index(0, 1), "MSV?");
  QTimer::singleShot(0, &window_, [this] {
    for (const char* key : {"TB_CONNECT", "TB_PLAY", "TB_SINGLESTEP", "mnuConnect"}) Press(key);
  });
  Press("TB_CONNECT");
  EXPECT_EQ(std::count(library_.calls.begin(), library_.calls.end(), "WritePort(\"ATZ\r\")"), 1);
  EXPECT_EQ(std::count(library_.calls.begin(), library_.calls.end(), "WritePort(\"MSV?\n\")"), 0);
  EXPECT_TRUE(device_.connected);
}

TEST_F(DiallingWindow, TheRateOfPortsIniHoldsFromTheNextConnectionOn) {
  connection_.modem_script.clear();
  const base::TempFolder folder;
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.Path("")));
  std::filesystem::create_directory(folder.Path("Kolvane"));
  const auto rate = [this] {
    Press("TB_CONNECT");
    const QString text = panel_->text();
    Press("TB_CONNECT");
    return text.section(' ', 1, 1);
  };
  EXPECT_EQ(rate(), "9600");
  base::WriteBytes(folder.Path("Kolvane/ports.ini"), "[PORTS]\nCOM1_BAUD=115200\n");
  EXPECT_EQ(rate(), "115200");
  std::filesystem::remove(folder.Path("Kolvane/ports.ini"));
  EXPECT_EQ(rate(), "9600");
  qputenv("XDG_CONFIG_HOME", before);
}

}  // namespace
}  // namespace kolvane::window
