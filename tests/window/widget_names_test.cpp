// Hosts, scripts and checks find every control by these names.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>

#include "base/fake_prompt.h"
#include "device/ui/connection_dialog.h"
#include "help/ui/help_window.h"
#include "inspect/ui/bin_inspect_dialog.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

/// Expects one object of each name below `root`, of the class or a derived one.
template <typename Class>
void ExpectEach(const QObject& root, std::initializer_list<const char*> names) {
  for (const char* name : names) {
    const auto found = root.findChildren<QObject*>(QLatin1String(name));
    ASSERT_EQ(found.size(), 1) << name;
    EXPECT_NE(qobject_cast<Class*>(found.constFirst()), nullptr) << name;
  }
}

class WidgetNames : public WindowFixture {};

TEST_F(WidgetNames, OfTheMainWindow) {
  EXPECT_EQ(window_.objectName(), "frmTerminal");
  EXPECT_NE(qobject_cast<QMainWindow*>(&window_), nullptr);
  ExpectEach<QComboBox>(window_,
                        {"cmbCommand", "cmbReceiveMode", "cmbReceiveFormat", "RcvTermChar", "SendTermChar"});
  ExpectEach<QLineEdit>(window_, {"ReceiveTimo", "BinChars"});
  ExpectEach<QPushButton>(window_, {"cmdSend"});
  ExpectEach<QWidget>(window_, {"TermWin"});
  ExpectEach<QAbstractItemView>(window_, {"CommandScript"});
  ExpectEach<QSplitter>(window_, {"SplitContainer"});
  ExpectEach<QToolBar>(window_, {"Toolbar1", "Toolbar2", "Toolbar3"});
  ExpectEach<QStatusBar>(window_, {"StatusBar1", "StatusBar2"});
  ExpectEach<QLabel>(window_, {"StatusBar1_1", "StatusBar1_2", "StatusBar2_1", "StatusBar2_2"});
}

TEST_F(WidgetNames, OfMenusAndTheirItems) {
  ExpectEach<QMenu>(window_, {"mnuFile", "mnuCon", "mnuOptions", "mnuExtras", "mnuPOP1"});
  ExpectEach<QAction>(window_, {"mnuNewCommandFile", "mnuOpenCommandFile", "mnuSaveCommandFile",
                                "mnuSaveCommandFileAs", "mnuOpenLog", "mnuCloseLog", "mnuSaveTerminal",
                                "mnuOpenTextFile", "mnuPrintTermWindow", "mnuExit", "mnuConfigureConnection",
                                "mnuConnect", "mnuDisconnect", "mnuOption_0", "mnuOption_1", "mnuOption_2"});
  ExpectEach<QAction>(
      window_, {"mnuCopy", "mnuCut", "mnuPaste", "mnuDelete", "mnuSelectAll", "mnuClearAll", "mnuSaveAs",
                "mnuOpen", "mnuPrint", "mnuBackColor", "mnuFont", "mnuBinInspect", "mnuInsertComment"});
  EXPECT_FALSE(window_.menuBar()->actions().contains(Find<QMenu>("mnuPOP1")->menuAction()));
}

TEST_F(WidgetNames, OfToolbarButtons) {
  ExpectEach<QAction>(*Find<QToolBar>("Toolbar1"),
                      {"TB_SAVETERMWIN", "TB_PRINT", "TB_PORTCONFIGURE", "TB_CONNECT", "TB_FLUSH",
                       "TB_OPENLOG", "TB_CLOSELOG", "TB_RECORDLOG", "TB_INSPECT", "TB_HELP"});
  ExpectEach<QAction>(
      *Find<QToolBar>("Toolbar3"),
      {"TB_PLAY", "TB_SINGLESTEP", "TB_STOP", "TB_BREAK", "TB_RECORD", "TB_NEWSCRIPT", "TB_OPENSCRIPT",
       "TB_SAVESCRIPT", "TB_PRINTSCRIPT", "TB_CUT", "TB_COPY", "TB_PASTE", "TB_SPECIALCOMMANDS"});
}

TEST_F(WidgetNames, ThePaneHasThePropertiesOfATextWidget) {
  AddLine("one");
  auto* pane = Find<QWidget>("TermWin");
  EXPECT_EQ(pane->property("plainText").toString(), "\none");
  Pane()->selectAll();
  EXPECT_EQ(pane->property("selectedText").toString(), "\none");
  EXPECT_EQ(pane->property("readOnly").typeId(), QMetaType::Bool);
}

TEST_F(WidgetNames, TheCurrentIndexIsTheCurrentRow) {
  auto* view = Find<QAbstractItemView>("CommandScript");
  EXPECT_EQ(view->model()->rowCount(), 1024);
  EXPECT_EQ(view->model()->columnCount(), 2);
  auto* grid = Find<script::CommandGrid>("CommandScript");
  grid->setCurrentIndex(view->model()->index(4, 1));
  EXPECT_EQ(grid->list().current_row(), 5);
}

TEST_F(WidgetNames, OfTheConnectionDialog) {
  base::FakePrompt prompt;
  const device::ConnectionDialog dialog({connection_, device_, source_, prompt, folder_.path()});
  EXPECT_EQ(dialog.objectName(), "U_Port");
  ExpectEach<QRadioButton>(dialog, {"Port_0", "Port_1", "Port_2", "Port_3", "Port_4", "Port_5", "Port_6",
                                    "Port_7", "Port_8", "Port_9"});
  ExpectEach<QTabWidget>(dialog, {"SSTab1"});
  ExpectEach<QComboBox>(
      dialog, {"Baud", "Parity", "DataBits", "StopBits", "Addr485", "DTRControl", "RTSControl", "GPIBAddr",
               "GPIBTIMO", "PAPOMode", "LPTTimo", "IPAddrList", "USBAddrList"});
  ExpectEach<QLineEdit>(dialog, {"TIMO", "RCV", "DialTIMO", "XOnLimit", "XOffLimit", "XonChar", "XoffChar",
                                 "EOSChar", "txtIPPort", "TCPIPTimo", "USBTimo"});
  ExpectEach<QPlainTextEdit>(dialog, {"txtModemScript"});
  ExpectEach<QCheckBox>(dialog,
                        {"ExtPar_0", "ExtPar_1", "ExtPar_4", "ExtPar_5", "ExtPar_6", "ExtPar_7", "ExtPar_8",
                         "SendEOIOnWrite", "SendEOIWithEOS", "StopReadOnEOS", "RepeatAddressing"});
  ExpectEach<QListView>(dialog, {"lstScan"});
  ExpectEach<QPushButton>(dialog, {"Command1", "Command2", "Command3"});
  ExpectEach<QLabel>(dialog, {"Label1"});
}

TEST_F(WidgetNames, OfTheInspector) {
  AddLine("<41><42>");
  Pane()->selectAll();
  OnDialog<inspect::BinInspectDialog>([](inspect::BinInspectDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "frmBinInspect");
    ExpectEach<QPlainTextEdit>(dialog, {"txtBinData"});
    ExpectEach<QLabel>(dialog, {"NumDisplay"});
    ExpectEach<QListView>(dialog, {"lstTemplate"});
    ExpectEach<QComboBox>(dialog, {"cmbSpecialFormat"});
    ExpectEach<QCheckBox>(dialog, {"chkMotorola"});
    ExpectEach<QGroupBox>(dialog, {"Frame1"});
    ExpectEach<QRadioButton>(
        dialog, {"optFormat_0", "optFormat_1", "optFormat_2", "optFormat_3", "optFormat_4", "optFormat_5"});
    dialog.reject();
  });
  Press("mnuBinInspect");
  EXPECT_EQ(dialogs_, 1);
}

TEST_F(WidgetNames, OfTheHelpWindow) {
  const help::HelpWindow help({[](const char*) { return QIcon(); }, {}}, &window_);
  EXPECT_EQ(help.objectName(), "HelpWindow");
  EXPECT_TRUE(help.isWindow());
}

}  // namespace
}  // namespace kolvane::window
