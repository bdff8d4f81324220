// The main window and its parts.
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>

#include "pane/ui/output_pane.h"
#include "picture.h"
#include "pictures.h"

namespace kolvane::screenshots {
namespace {

constexpr QSize kButton(22, 22);
constexpr QSize kLarge(1270, 770);

constexpr char kList[] =
    "' Kraft an Kanal 1 überwachen\n"
    "$CLOSELOG\n"
    "$OPENLOG \"Kraft.LOG\"\n"
    "LIM 1,11,14\n"
    "$AUTOLOG ON\n"
    "$REPEAT 9\n"
    "MSV? 1\n"
    "$SPLITPARAMS\n"
    "$GETPARAM 1\n"
    "' 11 > Messwert\n"
    "$IFGREATER 11\n"
    "$WRITELOG Kraft_zu_klein\n"
    "$ENDIF\n"
    "LIMS? 1\n"
    "$DELAY 500\n"
    "$ENDREPEAT\n"
    "$AUTOLOG OFF\n"
    "$CLOSELOG\n";

QPixmap Top(QWidget* widget, int height) { return Grab(widget).copy(0, 0, widget->width(), height); }

void MainWindow(Stage& stage, const QString& folder) {
  stage.LoadList("Kraft.CMD", kList);
  stage.Trigger("TB_CONNECT");
  for (const char* command :
       {"*IDN?", "NAME? 1-3", "UNIT? 1-3", "MSV? 1-3", "RANGE 1,-5", "ERR?", "TARE 1", "MSV? 1"})
    stage.Send(QString::fromLatin1(command));
  Save(folder, QStringLiteral("hauptfenster"), Framed(&stage.window()));
}

// For README and software catalogues.
void LargeWindow(Stage& stage, const QString& folder) {
  const QSize usual = stage.window().size();
  stage.window().resize(kLarge);
  for (const char* command : {"UNIT? 0", "RANGE? 0", "MSV? 0", "RATE?", "LIM 1,11,14", "LIMS? 1",
                              "STA 100,1-2", "BUF?", "MSV? 1-3"})
    stage.Send(QString::fromLatin1(command));
  SaveAsItIs(folder, QStringLiteral("kolvane"), Framed(&stage.window()));
  stage.window().resize(usual);
}

void Parts(Stage& stage, const QString& folder) {
  Save(folder, QStringLiteral("werkzeugleiste-terminal"),
       Grab(stage.Find<QToolBar>("Toolbar1")).copy(0, 0, 360, 37));
  Save(folder, QStringLiteral("werkzeugleiste-senden"), Grab(stage.Find<QToolBar>("Toolbar2")));
}

// Each toolbar button by itself, for the tables of the help: TB_CONNECT is knopf-connect.
void Buttons(Stage& stage, const QString& folder) {
  for (const char* toolbar : {"Toolbar1", "Toolbar3"}) {
    for (const QAction* action : stage.Find<QToolBar>(toolbar)->actions()) {
      if (action->objectName().isEmpty()) continue;
      QPixmap picture(kButton);
      picture.fill(Qt::white);
      QPainter painter(&picture);
      painter.drawPixmap(0, 0, action->icon().pixmap(kButton));
      painter.end();
      Save(folder, QStringLiteral("knopf-") + action->objectName().mid(3).toLower(), picture);
    }
  }
}

void Menus(Stage& stage, const QString& folder) {
  const std::pair<const char*, const char*> menus[] = {{"mnuFile", "menue-datei"},
                                                       {"mnuCon", "menue-verbindung"},
                                                       {"mnuOptions", "menue-optionen"},
                                                       {"mnuExtras", "menue-extras"},
                                                       {"mnuPOP1", "kontextmenue"}};
  for (const auto& [name, file] : menus) {
    auto* menu = stage.Find<QMenu>(name);
    menu->popup(stage.window().mapToGlobal(QPoint(200, 100)));
    Save(folder, QLatin1String(file), Grab(menu));
    menu->close();
  }
}

// Nine steps: the next row to run is the one after $GETPARAM.
void RunningList(Stage& stage, const QString& folder) {
  for (int step = 0; step < 9; ++step) stage.Trigger("TB_SINGLESTEP");
  Save(folder, QStringLiteral("befehlsliste"), Top(stage.Find<QTableView>("CommandScript"), 440));
}

void Escape(QWidget* widget) {
  QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(widget, &key);
}

void Finding(Stage& stage, const QString& folder) {
  stage.Find<QTableView>("CommandScript")->setFocus();
  stage.Trigger("mnuFind");
  stage.Find<QLineEdit>("FindText")->setText(QStringLiteral("param"));
  stage.Find<QLineEdit>("ReplaceText")->setText(QStringLiteral("PARAM"));
  Save(folder, QStringLiteral("suchen"), Grab(stage.Find<QWidget>("FindBar")));
  stage.Find<QPushButton>("FindClose")->click();
}

void Checking(Stage& stage, const QString& folder) {
  stage.LoadList("Kraft.CMD",
                 "LIM 1,11,14\n$REPEAT 9\nMSV? 1\n$GETPARAM 1\n$IFGREATER 11\n$GOTO ned\n$ENDIF\n"
                 "$DELY 500\n$ENDREPEAT\n$STOP jetzt\n'end:\n");
  stage.Trigger("mnuCheckList");
  Save(folder, QStringLiteral("befehlsliste-pruefung"),
       Grab(stage.Find<QWidget>("CommandScript")->parentWidget()));
  Escape(stage.Find<QWidget>("FindingsList"));
}

void Standing(Stage& stage, const QString& folder) {
  stage.LoadList("Kraft.CMD", kList);
  auto* grid = stage.Find<QTableView>("CommandScript");
  for (const int row : {10, 13}) {
    grid->setCurrentIndex(grid->model()->index(row, 1));
    stage.Trigger("mnuBreakpoint");
  }
  stage.Trigger("TB_PLAY");
  Save(folder, QStringLiteral("haltepunkt"), Grab(grid->parentWidget()));
  Escape(stage.Find<QWidget>("WatchPanel"));
  stage.LoadList("Kraft.CMD", kList);
}

void BinaryAnswer(Stage& stage, const QString& folder) {
  stage.Trigger("mnuCloseLog");
  stage.Find<pane::OutputPane>("TermWin")->clear();
  stage.Choose("cmbReceiveFormat", 1);
  for (const char* command : {"BIN? 1,8", "RAMP? 32", "HEX? 0D0A41FF"})
    stage.Send(QString::fromLatin1(command));
  Save(folder, QStringLiteral("hauptfenster-binaer"), Framed(&stage.window()));
  stage.Choose("cmbReceiveMode", 0);
}

}  // namespace

std::vector<Picture> WindowPictures() {
  return {Buttons,     MainWindow, LargeWindow, Parts,    Menus,
          RunningList, Finding,    Checking,    Standing, BinaryAnswer};
}

}  // namespace kolvane::screenshots
