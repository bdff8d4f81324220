#include "window/status_bars.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>
#include <string>

namespace kolvane::window {
namespace {

class StatusBarsTest : public testing::Test {
 protected:
  StatusBarsTest() {
    bars_.second()->resize(600, 24);
    bars_.second()->show();
  }

  QLabel* Panel() { return bars_.second()->findChild<QLabel*>(QStringLiteral("StatusBar2_1")); }

  QImage Picture(const std::string& text) {
    bars_.ShowLogFile(text);
    return Panel()->grab().toImage();
  }

  const std::string folders_ = "Logdatei: /home/messplatz/" + std::string(200, 'x') + "/";
  QWidget window_;
  StatusBars bars_{&window_};
};

TEST_F(StatusBarsTest, TheFileNameOfALongPathIsVisible) {
  EXPECT_NE(Picture(folders_ + "eins.LOG"), Picture(folders_ + "zwei.LOG"));
  EXPECT_NE(Picture("Logdatei: /eins/" + folders_), Picture("Logdatei: /zwei/" + folders_));
  EXPECT_EQ(Picture(folders_ + folders_ + "eins.LOG"), Picture(folders_ + "y" + folders_ + "eins.LOG"));
}

TEST_F(StatusBarsTest, TheStartOfALongStateIsVisible) {
  bars_.first()->resize(600, 24);
  bars_.first()->show();
  const auto picture = [this](const std::string& text) {
    bars_.ShowState(terminal::StateKind::kWait, text);
    return bars_.first()->findChild<QLabel*>(QStringLiteral("StatusBar1_2"))->grab().toImage();
  };
  const std::string tail(200, 'x');
  EXPECT_NE(picture("wartet auf Antwort (2,1 s" + tail), picture("wartet auf Antwort (2,2 s" + tail));
  EXPECT_EQ(picture("wartet" + tail + "a"), picture("wartet" + tail + "b"));
}

TEST_F(StatusBarsTest, TheTextOfALongPathStaysComplete) {
  bars_.ShowLogFile(folders_ + "eins.LOG");
  EXPECT_EQ(Panel()->text().toStdString(), folders_ + "eins.LOG");
  EXPECT_EQ(Panel()->toolTip(), Panel()->text());
}

TEST_F(StatusBarsTest, TheSelectionIsVisible) {
  const QImage plain = Picture(folders_);
  Panel()->setSelection(0, 8);
  EXPECT_NE(Panel()->grab().toImage(), plain);
  EXPECT_EQ(Panel()->selectedText(), "Logdatei");
}

}  // namespace
}  // namespace kolvane::window
