// What the window shows while a modem is dialled.

#include <QLabel>

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
    panel_ = Find<QLabel>("StatusBar1_1");
    panel_->installEventFilter(&painted_);
  }

  /// Notes what the panel shows each time that it is painted.
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

TEST_F(DiallingWindow, PaintsEachStepAndTheConnectionInTheEnd) {
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

}  // namespace
}  // namespace kolvane::window
