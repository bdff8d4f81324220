#include "device/ui/ports_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "base/fake_prompt.h"
#include "base/scope_exit.h"
#include "base/temp_folder.h"
#include "fake_port_library.h"

namespace kolvane::device {
namespace {

class PortsDialogTest : public testing::Test {
 protected:
  PortsDialogTest() { setenv("XDG_CONFIG_HOME", folder_.path().c_str(), 1); }
  ~PortsDialogTest() override {
    for (const char* name : {"KOLVANE_COM2", "KOLVANE_GPIB"}) unsetenv(name);
    unsetenv("XDG_CONFIG_HOME");
  }

  void Open(bool connected = false) {
    dialog_ = std::make_unique<PortsDialog>(PortsDialogContext{source_, prompt_, connected});
    dialog_->show();
  }
  QComboBox* Field(const char* name) {
    auto* field = dialog_->findChild<QComboBox*>(QLatin1String(name));
    EXPECT_NE(field, nullptr) << name;
    return field;
  }
  QPushButton* Button(const char* name) { return dialog_->findChild<QPushButton*>(QLatin1String(name)); }
  QString Result() {
    for (const auto* label : dialog_->findChildren<QLabel*>()) {
      if (label->buddy() == nullptr) return label->text();
    }
    return {};
  }
  std::string File() { return std::filesystem::exists(path_) ? base::ReadBytes(path_) : ""; }

  base::TempFolder folder_;
  std::string path_ = folder_.Path("Kolvane/ports.ini");
  FakePortLibrary library_;
  FakePortLibrarySource source_{&library_};
  base::FakePrompt prompt_;
  std::unique_ptr<PortsDialog> dialog_;
};

TEST_F(PortsDialogTest, EmptyFieldsShowTheDefaultsAndWriteNothing) {
  Open();
  EXPECT_EQ(dialog_->objectName(), "PortsDialog");
  for (const char* name :
       {"COM1_Node", "COM1_Baud", "COM2_Node", "COM2_Baud", "LPT1_Node", "LPT2_Node", "GPIB_Board"}) {
    EXPECT_EQ(Field(name)->currentText(), "") << name;
    EXPECT_NE(Field(name)->lineEdit()->placeholderText(), "") << name;
  }
  EXPECT_EQ(Field("COM1_Node")->lineEdit()->placeholderText(), "/dev/ttyS0");
  Button("cmdTest")->click();
  EXPECT_EQ(Result(), "Nichts zugeordnet");
  EXPECT_TRUE(library_.calls.empty());
  Button("cmdOK")->click();
  EXPECT_EQ(dialog_->result(), QDialog::Accepted);
  EXPECT_EQ(File(), "");
}

TEST_F(PortsDialogTest, EnterInAFieldConfirmsOnEveryDesktop) {
  const base::ScopeExit restore([] { qApp->setStyleSheet(QString()); });
  // As on KDE, where "Prüfen" comes first.
  qApp->setStyleSheet(
      QStringLiteral("QDialogButtonBox { button-layout: %1 }").arg(QDialogButtonBox::KdeLayout));
  for (const bool connected : {false, true}) {
    Open(connected);
    QTest::keyClick(Field("COM1_Node"), Qt::Key_Return);
    EXPECT_EQ(dialog_->result(), QDialog::Accepted) << connected;
    EXPECT_FALSE(dialog_->isVisible()) << connected;
    EXPECT_EQ(Result(), "") << connected;
  }
}

TEST_F(PortsDialogTest, TabGoesThroughTheFieldsToTheButtons) {
  Open();
  dialog_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  EXPECT_EQ(dialog_->focusWidget(), Field("COM1_Node"));
  for (const char* next : {"COM1_Baud", "COM2_Node", "COM2_Baud", "LPT1_Node", "LPT2_Node", "GPIB_Board"}) {
    QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(dialog_->focusWidget(), Field(next));
  }
  QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
  EXPECT_NE(qobject_cast<QPushButton*>(dialog_->focusWidget()), nullptr);
}

TEST_F(PortsDialogTest, EachFieldOffersThePortsOfItsKind) {
  using Kind = AttachedPort::Kind;
  PortsDialogContext context{source_, prompt_};
  context.attached = {{Kind::kSerial, {}, "/dev/ttyUSB0"},
                      {Kind::kParallel, {}, "/dev/parport3"},
                      {Kind::kUsb, {}, "/dev/usbtmc0"},
                      {Kind::kGpib, {}, "/dev/gpib1", 1}};
  dialog_ = std::make_unique<PortsDialog>(context);
  const auto offered = [this](const char* name) {
    QStringList texts;
    for (int i = 0; i < Field(name)->count(); ++i) texts << Field(name)->itemText(i);
    return texts;
  };
  for (const char* name : {"COM1_Node", "COM2_Node"})
    EXPECT_EQ(offered(name), (QStringList{"", "/dev/ttyUSB0"})) << name;
  for (const char* name : {"LPT1_Node", "LPT2_Node"})
    EXPECT_EQ(offered(name), (QStringList{"", "/dev/parport3"})) << name;
  EXPECT_EQ(offered("GPIB_Board"), (QStringList{"", "1"}));
  EXPECT_EQ(offered("COM1_Baud").mid(0, 3), (QStringList{"", "300", "600"}));
}

TEST_F(PortsDialogTest, EachFieldHasAKeyAndRoomForItsDefault) {
  Open();
  QStringList keys;
  for (const auto* label : dialog_->findChildren<QLabel*>()) {
    if (label->buddy() == nullptr) continue;
    const QString key = QKeySequence::mnemonic(label->text()).toString();
    EXPECT_FALSE(key.isEmpty() || keys.contains(key)) << label->text().toStdString();
    keys << key;
  }
  EXPECT_FALSE(keys.contains(QKeySequence::mnemonic(Button("cmdTest")->text()).toString()));
  for (const char* name : {"COM1_Node", "COM1_Baud", "COM2_Baud"}) {
    const QLineEdit* line = Field(name)->lineEdit();
    EXPECT_LE(line->fontMetrics().horizontalAdvance(line->placeholderText()), line->width() - 8) << name;
  }
}

TEST_F(PortsDialogTest, OkWritesChangesAndKeepsTheRest) {
  std::filesystem::create_directories(folder_.Path("Kolvane"));
  base::WriteBytes(path_, "; mine\n[PORTS]\nCOM1=/dev/a\nX=1\n");
  Open();
  EXPECT_EQ(Field("COM1_Node")->currentText(), "/dev/a");
  Field("COM1_Node")->setCurrentText(" /dev/b ");
  Field("COM1_Baud")->setCurrentText("115200");
  Button("cmdOK")->click();
  EXPECT_EQ(File(), "; mine\n[PORTS]\nCOM1=/dev/b\nX=1\nCOM1_BAUD=115200\n");
}

TEST_F(PortsDialogTest, CancelWritesNothing) {
  Open();
  Field("COM1_Node")->setCurrentText("/dev/b");
  Button("cmdCancel")->click();
  EXPECT_EQ(File(), "");
}

TEST_F(PortsDialogTest, AnInvalidRateIsRefused) {
  for (const char* rate : {"schnell", "0", "-1", "+9600", "9600,5"}) {
    Open();
    Field("COM2_Baud")->setCurrentText(QString::fromUtf8(rate));
    Button("cmdOK")->click();
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(prompt_.errors.back(), "„" + std::string(rate) + "“ ist keine Baudrate");
  }
  EXPECT_EQ(File(), "");
}

TEST_F(PortsDialogTest, AnInvalidBoardIsRefused) {
  for (const char* board : {"x", "-1", "+1", "16", "/dev/gpib0"}) {
    Open();
    Field("GPIB_Board")->setCurrentText(QString::fromUtf8(board));
    Button("cmdOK")->click();
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(prompt_.errors.back(),
              "„" + std::string(board) + "“ ist keine Nummer einer GPIB-Karte (0 bis 15)");
  }
  EXPECT_EQ(File(), "");
  Field("GPIB_Board")->setCurrentText("15");
  Button("cmdOK")->click();
  EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(PortsDialogTest, AnInvalidBoardOfTheEnvironmentDoesNotBlockTheDialog) {
  setenv("KOLVANE_GPIB", "x", 1);
  Open();
  EXPECT_FALSE(Field("GPIB_Board")->isEnabled());
  Button("cmdOK")->click();
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_TRUE(prompt_.errors.empty());
}

TEST_F(PortsDialogTest, ATestOpensAndClosesEachPort) {
  library_.results["OpenPort"] = {0, -10};
  library_.status_text = "Gerät nicht gefunden";
  Open();
  Field("COM1_Node")->setCurrentText("/dev/a");
  Field("COM1_Baud")->setCurrentText("38400");
  Field("GPIB_Board")->setCurrentText("1");
  Button("cmdTest")->click();
  EXPECT_EQ(library_.calls,
            (std::vector<std::string>{"SetNode(1, \"/dev/a\")", "OpenPort(1, 38400, \"n\", 8, 1, 4096)",
                                      "ClosePort()", "SetNode(488, \"1\")",
                                      "OpenPort(488, 1, \"n\", 8, 1, 4096)", "ClosePort()"}));
  EXPECT_EQ(Result(), "COM1: in Ordnung\nGPIB: -10: Gerät nicht gefunden");
}

TEST_F(PortsDialogTest, ATestReportsWhyThereIsNoPortLibrary) {
  source_.library = nullptr;
  Open();
  Field("COM1_Node")->setCurrentText("/dev/a");
  Button("cmdTest")->click();
  EXPECT_EQ(Result(), "COM1: Die Portbibliothek fehlt.");
}

TEST_F(PortsDialogTest, WhileConnectedNothingIsTested) {
  Open(true);
  EXPECT_FALSE(Button("cmdTest")->isEnabled());
  EXPECT_NE(Button("cmdTest")->toolTip(), "");
}

TEST_F(PortsDialogTest, ValuesFromTheEnvironmentCannotBeChanged) {
  setenv("KOLVANE_COM2", "/dev/env", 1);
  Open();
  EXPECT_EQ(Field("COM2_Node")->currentText(), "/dev/env");
  EXPECT_FALSE(Field("COM2_Node")->isEnabled());
  EXPECT_TRUE(Field("COM2_Node")->toolTip().contains("KOLVANE_COM2"));
  Button("cmdOK")->click();
  EXPECT_EQ(File(), "");
}

}  // namespace
}  // namespace kolvane::device
