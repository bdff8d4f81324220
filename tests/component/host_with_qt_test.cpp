// A host that has a QApplication and uses the public header only, apart from looking at the window's
// widgets.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "base/temp_folder.h"
#include "component/host_fixture.h"

namespace kolvane {
namespace {

TEST_F(HostTest, TheIndexedDeviceIsShownAsConnected) {
  Open(0, [](QMainWindow& window) {
    auto* button = window.findChild<QAction*>("TB_CONNECT");
    EXPECT_EQ(button->property("Tag").toString(), "0");
    EXPECT_EQ(button->property("Image").toInt(), 20);
    EXPECT_EQ(button->toolTip(), "Verbindung trennen");
    EXPECT_EQ(window.findChild<QLabel*>("StatusBar1_1")->text(), "TCP/IP: 10.0.0.9, Port 7");
    EXPECT_FALSE(window.findChild<QAction*>("TB_PORTCONFIGURE")->isEnabled());
    EXPECT_TRUE(window.isModal());
  });
}

TEST_F(HostTest, ACommandGoesToTheIndexedDevice) {
  host_->script.read = [](Variant& answer, Variant&) { answer = "12.5\r\n"; };
  Open(0, [&](QMainWindow& window) {
    host_->script.calls.clear();
    gui::TypeCommand(window, "MSV?");
    EXPECT_EQ(PaneText(window).section('\n', -2), "MSV?\n12.5");
  });
  EXPECT_NE(std::find(host_->script.calls.begin(), host_->script.calls.end(),
                      "IO.WriteCommand(3, \"MSV?\", 10, 0)"),
            host_->script.calls.end());
}

TEST_F(HostTest, ACommandGoesToTheSingleDevice) {
  host_->script.read = [](Variant& answer, Variant&) { answer = "Prüfstand 3\r\n"; };
  Open(1, [&](QMainWindow& window) {
    gui::TypeCommand(window, "*IDN?");
    EXPECT_TRUE(PaneText(window).endsWith("*IDN?\nPrüfstand 3")) << PaneText(window).toStdString();
  });
}

TEST_F(HostTest, AnAnswerReadByteByByteEndsWhenTheHostHasNoMore) {
  base::WriteBytes(SettingsFile(), "[TERMINAL]\nRCVMODE=1\nRCVTERM=\n");
  int reads = 0;
  host_->script.read = [&](Variant&, Variant& buffer) {
    buffer = ++reads <= 2 ? Bytes{static_cast<std::uint8_t>('0' + reads)} : Bytes{};
  };
  Open(1, [&](QMainWindow& window) {
    gui::TypeCommand(window, "MSV?");
    EXPECT_TRUE(PaneText(window).endsWith("MSV?\n12")) << PaneText(window).toStdString();
  });
  EXPECT_EQ(reads, 3);
}

TEST_F(HostTest, AFlushThatTheHostRefusesShowsItsLine) {
  host_->script.on_call["FlushInQ"] = [] { throw std::runtime_error("nein"); };
  Open(1, [](QMainWindow& window) {
    EXPECT_TRUE(PaneText(window).contains("Empfangspuffer gelöscht (0 Bytes)"));
  });
}

TEST_F(HostTest, AnExceptionInTheSessionBecomesAFailedOperation) {
  host_->script.on_call["Read"] = [] { throw std::runtime_error("Leitung tot"); };
  Open(1, [&](QMainWindow& window) {
    gui::TypeCommand(window, "*IDN?");
    EXPECT_TRUE(PaneText(window).endsWith("*IDN?\nLeitung tot")) << PaneText(window).toStdString();
  });
}

TEST_F(HostTest, AHostsErrorReachesTheCallerAndNoWindowIsShown) {
  host_->script.on_call["GetDeviceInfo"] = [] { throw std::logic_error("belegt"); };
  terminal_.InitTerminal(host_);
  EXPECT_THROW(terminal_.OpenTerminal(1, 0), std::logic_error);
  EXPECT_EQ(gui::ShownTerminal(), nullptr);
  host_->script.on_call.clear();
  host_->kind = "seltsam";
  EXPECT_THROW(terminal_.OpenTerminal(1, 0), RuntimeError);
  EXPECT_EQ(gui::ShownTerminal(), nullptr);
}

TEST_F(HostTest, AMissingObjectIsAnError) {
  terminal_.InitTerminal(nullptr);
  EXPECT_THROW(terminal_.OpenTerminal(0, 0), RuntimeError);
}

TEST_F(HostTest, OtherModesCallNothingOnTheHost) {
  for (const std::int16_t oper_mode : {std::int16_t{2}, std::int16_t{3}}) {
    Open(oper_mode, [](QMainWindow& window) {
      auto* button = window.findChild<QAction*>("TB_CONNECT");
      EXPECT_EQ(button->toolTip(), "Verbindung aufbauen");
      EXPECT_EQ(window.findChild<QLabel*>("StatusBar1_1")->text(), "Nicht verbunden");
    });
    if (oper_mode == 2) {
      EXPECT_TRUE(host_->script.calls.empty());
    }
  }
  EXPECT_TRUE(host_->script.calls.empty());
}

TEST_F(HostTest, TheDeviceIsReturnedOpenAndTheObjectReleased) {
  Open(1, [&](QMainWindow& window) {
    auto* disconnect = window.findChild<QAction*>("mnuDisconnect");
    disconnect->setEnabled(true);
    disconnect->trigger();
    EXPECT_EQ(window.findChild<QLabel*>("StatusBar1_1")->text(), "Nicht verbunden");
    host_->script.calls.clear();
  });
  EXPECT_NE(std::find(host_->script.calls.begin(), host_->script.calls.end(), "OpenDevice()"),
            host_->script.calls.end());
  EXPECT_EQ(host_.use_count(), 1);
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
}

TEST_F(HostTest, OpensAgainAfterClosing) {
  for (int i = 0; i < 2; ++i) {
    Open(1, [&](QMainWindow& window) {
      EXPECT_FALSE(terminal_.CanUnload().ToBool());
      EXPECT_EQ(PaneText(window).count("Empfangspuffer gelöscht"), 1);
    });
  }
}

TEST_F(HostTest, TheLastAnswerAndTheFlagsOfAListOutliveTheWindow) {
  host_->script.read = [](Variant& answer, Variant&) { answer = "a,b\r\n"; };
  Open(1, [](QMainWindow& window) {
    gui::TypeCommand(window, "MSV?");
    PlayList(window, {"$SILENT ON", "$AUTOLOG ON"});
  });
  const std::string log = dir_.path().toStdString() + "/a.LOG";
  Open(1, [&](QMainWindow& window) {
    PlayList(window, {"$SPLITPARAMS", "$GETPARAM 2", "$IFEQUAL b", "ONE?", "$ENDIF", "$OPENLOG " + log,
                      "$SILENT OFF", "TWO?"});
    EXPECT_EQ(PaneText(window), "\nTWO?\na,b");
  });
  EXPECT_EQ(Count("WriteCommand(\"ONE?\n\")"), 1);
  EXPECT_EQ(base::ReadBytes(log), "TWO?\r\na,b\r\n");
}

TEST_F(HostTest, ANewWindowDoesNotRecordCommands) {
  Open(1, [](QMainWindow& window) { window.findChild<QAction*>("TB_RECORD")->trigger(); });
  Open(1, [](QMainWindow& window) {
    EXPECT_EQ(window.findChild<QAction*>("TB_RECORD")->property("Tag").toString(), "0");
    EXPECT_EQ(window.findChild<QAction*>("TB_RECORD")->property("Image").toInt(), 14);
  });
}

TEST_F(HostTest, ADescriptorClosesTheWindowAndTheMessageBoxAboveIt) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  TerminalOptions options;
  options.SettingsFile = dir_.path().toStdString() + "/Kolvane.ini";
  options.CloseDescriptor = ends[0];
  terminal_.SetOptions(options);
  terminal_.InitTerminal(host_);
  QTimer::singleShot(0, qApp, [&] {
    QTimer::singleShot(0, qApp, [&] { ASSERT_EQ(write(ends[1], "x", 1), 1); });
    QMessageBox::warning(gui::ShownTerminal(), "Host", "offen");
  });
  terminal_.OpenTerminal(1, 0);
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
  close(ends[0]);
  close(ends[1]);
}

TEST_F(HostTest, ASecondTerminalWhileOneIsOpenIsRefused) {
  Open(1, [&](QMainWindow&) {
    try {
      terminal_.OpenTerminal(1, 0);
      FAIL();
    } catch (const RuntimeError& error) {
      EXPECT_STREQ(error.what(), "Das Terminal ist bereits geöffnet");
    }
  });
}

TEST_F(HostTest, TheListRunsAtStartAndTheDescriptorClosesTheWindowAfterIt) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  TerminalOptions options;
  options.SettingsFile = SettingsFile();
  options.CommandList = dir_.path().toStdString() + "/start.CMD";
  options.PlayAtStart = true;
  options.CloseDescriptor = ends[0];
  base::WriteBytes(options.CommandList, "*IDN?\r\nMSV?\r\n");
  terminal_.SetOptions(options);
  terminal_.InitTerminal(host_);
  std::vector<std::string> written;
  host_->script.on_call["WriteCommand"] = [&] {
    written.push_back(host_->script.calls.back());
    if (written.size() < 2) return;
    ASSERT_EQ(write(ends[1], "x", 1), 1);
  };
  terminal_.OpenTerminal(1, 0);
  EXPECT_EQ(written, (std::vector<std::string>{"WriteCommand(\"*IDN?\n\")", "WriteCommand(\"MSV?\n\")"}));
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
  close(ends[0]);
  close(ends[1]);
}

TEST_F(HostTest, AnUnreadableSettingIsShownAndRaised) {
  Open(1, [](QMainWindow&) {});
  const std::string bytes = "[TERMINAL]\nFONTSIZE=gross\n";
  base::WriteBytes(SettingsFile(), bytes);
  QString shown;
  QTimer::singleShot(0, qApp, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    shown = box->text();
    box->accept();
  });
  EXPECT_THROW(terminal_.OpenTerminal(2, 0), RuntimeError);
  EXPECT_TRUE(shown.contains("FONTSIZE=gross")) << shown.toStdString();
  EXPECT_EQ(base::ReadBytes(SettingsFile()), bytes);
  EXPECT_TRUE(terminal_.CanUnload().ToBool()) << "the last window has closed, and none was opened since";
}

TEST_F(HostTest, AHostsConnectionIsStoredAndTheStoredOneIsNotRead) {
  base::WriteBytes(SettingsFile(), "[PORT]\nADDRESS=x\nIPADDRESS=10.0.0.1\nIPPORT=9\n");
  Open(1, [](QMainWindow& window) {
    EXPECT_EQ(window.findChild<QLabel*>("StatusBar1_1")->text(), "TCP/IP: 10.0.0.8, Port 7");
  });
  const std::string saved = base::ReadBytes(SettingsFile());
  EXPECT_TRUE(saved.starts_with("[PORT]\nADDRESS=x\nIPADDRESS=10.0.0.8\nIPPORT=7\n")) << saved;
}

TEST_F(HostTest, ValuesThatAHostDoesNotGiveStayAsStored) {
  const std::string stored = "[PORT]\nPORT=0\nADDRESS=9\nRSTIMO=11\nGPIBTIMO=1\nBAUD=2\nPARITY=0\n";
  base::WriteBytes(SettingsFile(), stored);
  Open(1, [](QMainWindow&) {});
  std::string saved = base::ReadBytes(SettingsFile());
  EXPECT_TRUE(saved.starts_with("[PORT]\nPORT=8\nADDRESS=9\nRSTIMO=11\nGPIBTIMO=1\nBAUD=2\nPARITY=0\n"))
      << saved;
  host_->script.properties = {{2, std::int16_t{2}}, {3, 19200},           {4, std::int16_t{2}},
                              {5, std::int16_t{8}}, {6, std::int16_t{1}}, {8, std::int16_t{7}}};
  Open(0, [](QMainWindow&) {});
  saved = base::ReadBytes(SettingsFile());
  EXPECT_TRUE(saved.starts_with("[PORT]\nPORT=1\nADDRESS=7\nRSTIMO=11\nGPIBTIMO=1\nBAUD=1\nPARITY=2\n"))
      << saved;
}

TEST_F(HostTest, WithoutADeviceTheRecordIsFilledFromTheSettings) {
  base::WriteBytes(SettingsFile(), "[PORT]\nPORT=8\nADDRESS=40\nIPADDRESS=10.0.0.1\nIPPORT=9\n");
  Open(3, [](QMainWindow& window) {
    window.findChild<QAction*>("TB_CONNECT")->trigger();
    EXPECT_TRUE(PaneText(window).contains("  Verbindung hergestellt mit TCP/IP: 10.0.0.1, Port 9"));
  });
  base::WriteBytes(SettingsFile(), "[PORT]\nPORT=0\nBAUD=2\n");
  Open(-1, [](QMainWindow& window) {
    window.findChild<QAction*>("TB_CONNECT")->trigger();
    EXPECT_EQ(window.findChild<QLabel*>("StatusBar1_1")->text(),
              "COM1 38400 Baud, Parity: Gerade, Data: 1, Stop: 1");
  });
}

TEST_F(HostTest, AllOtherModesReadTheStoredConnection) {
  base::WriteBytes(SettingsFile(), "[PORT]\nADDRESS=x\n");
  for (const std::int16_t oper_mode : {std::int16_t{2}, std::int16_t{3}, std::int16_t{-1}}) {
    QTimer::singleShot(0, qApp, [] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      box->accept();
    });
    EXPECT_THROW(terminal_.OpenTerminal(oper_mode, 0), RuntimeError) << oper_mode;
  }
}

TEST_F(HostTest, TheFirstStartShowsTheDefaults) {
  Open(2, [](QMainWindow& window) {
    const auto* pane = window.findChild<QWidget*>("TermWin");
    EXPECT_EQ(pane->font().family(), "Courier New");
    EXPECT_EQ(pane->font().pointSize(), 10);
    EXPECT_FALSE(pane->font().bold());
    EXPECT_EQ(window.findChild<QComboBox*>("SendTermChar")->currentText(), "LF");
    EXPECT_EQ(window.findChild<QComboBox*>("RcvTermChar")->currentText(), "CRLF");
    EXPECT_EQ(window.findChild<QLineEdit*>("ReceiveTimo")->text(), "3000");
    EXPECT_TRUE(window.findChild<QAction*>("mnuOption_0")->isChecked());
    EXPECT_FALSE(window.findChild<QAction*>("mnuOption_1")->isChecked());
    EXPECT_FALSE(window.findChild<QAction*>("mnuOption_2")->isChecked());
    EXPECT_TRUE(window.findChild<QAction*>("mnuConfigureConnection")->isEnabled());
    EXPECT_TRUE(window.findChild<QAction*>("TB_PORTCONFIGURE")->isEnabled());
  });
}

TEST_F(HostTest, StoredTerminatorsAreShownAsWords) {
  const auto expect_shown = [&](const char* stored, const QString& shown) {
    base::WriteBytes(SettingsFile(), std::string("[TERMINAL]\nSENDTERM=") + stored + "\n");
    Open(1, [&](QMainWindow& window) {
      EXPECT_EQ(window.findChild<QComboBox*>("SendTermChar")->currentText(), shown) << stored;
    });
    EXPECT_EQ(base::ReadBytes(SettingsFile()).find(std::string("SENDTERM=") + stored + "\n"), 11u);
  };
  expect_shown("", "Kein");
  expect_shown("\\n", "LF");
  expect_shown("\\r", "CR");
  expect_shown("\\r\\n", "CRLF");
  expect_shown("\";\"", ";");
  expect_shown("§", "§");
}

TEST_F(HostTest, OneOptionIsKeptAndTwoStartAgainEachTime) {
  Open(1, [](QMainWindow& window) {
    for (const char* name : {"mnuOption_0", "mnuOption_1", "mnuOption_2"})
      window.findChild<QAction*>(name)->trigger();
  });
  Open(1, [](QMainWindow& window) {
    for (const char* name : {"mnuOption_0", "mnuOption_1", "mnuOption_2"})
      EXPECT_FALSE(window.findChild<QAction*>(name)->isChecked()) << name;
  });
}

TEST_F(HostTest, SettingsThatCannotBeSavedAreALineOnStandardError) {
  std::filesystem::create_directory(SettingsFile());
  testing::internal::CaptureStderr();
  Open(1, [](QMainWindow&) {});
  // The platform also prints lines.
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(err.ends_with("kolvane: Die Einstellungen können nicht in der Datei „" + SettingsFile() +
                            "“ gespeichert werden: Der Name bezeichnet einen Ordner\n"))
      << err;
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
}

// The terminal with the user's settings, in folders of the test.
class OwnTerminalTest : public HostTest {
 protected:
  OwnTerminalTest() {
    terminal_.SetOptions({});
    setenv("XDG_CONFIG_HOME", temp_.Path("config").c_str(), 1);
    setenv("XDG_STATE_HOME", temp_.Path("state").c_str(), 1);
    setenv("KOLVANE_FOLDER", temp_.path().c_str(), 1);
  }
  ~OwnTerminalTest() override {
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "KOLVANE_FOLDER"}) unsetenv(name);
  }

  static void TypeRow(QMainWindow& window) {
    auto* model = window.findChild<QAbstractItemView*>("CommandScript")->model();
    model->setData(model->index(0, 1), "MSV?");
  }
  bool HasUnsavedFolder() const { return std::filesystem::exists(temp_.Path("state/Kolvane/Unsaved")); }

  base::TempFolder temp_;
};

TEST_F(OwnTerminalTest, AListThatWasNotSavedIsOfferedByTheNextOne) {
  Open(2, TypeRow);
  EXPECT_TRUE(HasUnsavedFolder());
  Open(2, [](QMainWindow& window) {
    EXPECT_TRUE(window.findChild<QWidget*>("UnsavedBar")->isVisible());
    window.findChild<QAbstractButton*>("cmdRestore")->click();
    auto* list = window.findChild<QAbstractItemView*>("CommandScript");
    EXPECT_EQ(list->model()->index(0, 1).data().toString(), "MSV?");
  });
}

TEST_F(OwnTerminalTest, InOtherModesAndWithItsOwnSettingsAHostIsOfferedNoList) {
  for (const int oper_mode : {0, 1, 3}) Open(static_cast<std::int16_t>(oper_mode), TypeRow);
  TerminalOptions options;
  options.SettingsFile = SettingsFile();
  terminal_.SetOptions(options);
  Open(2, TypeRow);
  EXPECT_FALSE(HasUnsavedFolder());
}

class StateTest : public HostTest {
 protected:
  StateTest() {
    qputenv("XDG_CONFIG_HOME", dir_.path().toUtf8());
    qputenv("XDG_STATE_HOME", dir_.path().toUtf8());
  }
  ~StateTest() override {
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("XDG_STATE_HOME");
  }

  void OpenAndResize(std::int16_t oper_mode) {
    Open(oper_mode, [](QMainWindow& window) {
      EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
      QApplication::processEvents();
      window.resize(611, 522);
    });
  }
  bool HasStateFile() const { return QFile::exists(dir_.path() + "/Kolvane/state.ini"); }
};

TEST_F(StateTest, TheUsersOwnTerminalRestoresItsSize) {
  terminal_.SetOptions({});
  Open(2, [](QMainWindow& window) { EXPECT_NE(window.size(), QSize(611, 522)); });
  EXPECT_FALSE(HasStateFile()) << "nothing was changed";
  OpenAndResize(2);
  EXPECT_TRUE(HasStateFile());
  Open(2, [](QMainWindow& window) { EXPECT_EQ(window.size(), QSize(611, 522)); });
}

TEST_F(StateTest, TheAdditionsOfAWindowAreKeptOnceOneIsChanged) {
  terminal_.SetOptions({});
  const QString file = QString::fromLocal8Bit(qgetenv("XDG_CONFIG_HOME")) + "/Kolvane/Extras.ini";
  QFile::remove(file);
  for (std::int16_t mode = 0; mode <= 2; ++mode) Open(mode, [](QMainWindow&) {});
  EXPECT_FALSE(QFile::exists(file)) << "nothing was changed";
  Open(2, [](QMainWindow& window) { window.findChild<QAction*>("mnuQueriesOnly")->trigger(); });
  EXPECT_EQ(base::ReadBytes(file.toStdString()), "[EXTRAS]\nQueriesOnly=1\n");
  Open(1,
       [](QMainWindow& window) { EXPECT_TRUE(window.findChild<QAction*>("mnuQueriesOnly")->isChecked()); });
}

// The item is not selectable for a host's device.
TEST_F(StateTest, AHostsBytesAreInTheCodePageWhateverTheOwnInstrumentSpeaks) {
  terminal_.SetOptions({});
  ASSERT_TRUE(QDir(dir_.path()).mkpath("Kolvane"));
  base::WriteBytes(dir_.path().toStdString() + "/Kolvane/Extras.ini", "[EXTRAS]\nUtf8=1\n");
  base::WriteBytes(dir_.path().toStdString() + "/Kolvane/Kolvane.ini", "[TERMINAL]\nRCVMODE=2\n");
  host_->script.read = [](Variant&, Variant& buffer) { buffer = Bytes{0xC3, 0xA4}; };
  Open(1, [](QMainWindow& window) {
    window.findChild<QLineEdit*>("BinChars")->setText("2");
    gui::TypeCommand(window, "NAME?");
    EXPECT_TRUE(PaneText(window).endsWith("\nÃ¤")) << PaneText(window).toStdString();
  });
}

TEST_F(StateTest, StateThatCannotBeKeptIsReportedAndTheTerminalCloses) {
  terminal_.SetOptions({});
  ASSERT_TRUE(QDir(dir_.path()).mkpath("Kolvane/Extras.ini"));
  ASSERT_TRUE(QDir(dir_.path()).mkpath("Kolvane/state.ini"));
  testing::internal::CaptureStderr();
  Open(2, [](QMainWindow& window) {
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.findChild<QAction*>("mnuListen")->trigger();
    window.resize(611, 522);
  });
  const std::string err = testing::internal::GetCapturedStderr();
  for (const char* file : {"Extras.ini", "state.ini"})
    EXPECT_NE(err.find(std::string(file) + "“ gespeichert werden: "), std::string::npos) << err;
}

TEST_F(StateTest, ATerminalOfAHostOrWithItsOwnSettingsKeepsNothing) {
  OpenAndResize(2);
  terminal_.SetOptions({});
  OpenAndResize(0);
  OpenAndResize(1);
  OpenAndResize(7);
  EXPECT_FALSE(HasStateFile());
}

}  // namespace
}  // namespace kolvane
