// Dialogs and message boxes.
#include <QEventLoop>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QThread>
#include <QTreeView>

#include "base/ui/qt_text.h"
#include "pane/ui/output_pane.h"
#include "picture.h"
#include "pictures.h"
#include "values/ui/values_window.h"
#include "window/progress.h"
#include "window/texts.h"

namespace kolvane::screenshots {
namespace {

void SaveDialog(Stage& stage, const QString& folder, const char* action, const char* file) {
  stage.WithDialog([&] { stage.Trigger(action); },
                   [&](QWidget* dialog) { Save(folder, QLatin1String(file), Framed(dialog)); });
}

struct PageRow {
  int port;
  int page;
  const char* file;
};

constexpr PageRow kPages[] = {{0, 0, "verbindung-rs232"}, {0, 1, "verbindung-rs232-erweitert"},
                              {6, 2, "verbindung-gpib"},  {4, 3, "verbindung-druckerport"},
                              {8, 4, "verbindung-tcpip"}, {7, 5, "verbindung-offline"},
                              {9, 6, "verbindung-usb"}};

void SavePages(QWidget* dialog, const QString& folder) {
  auto* pages = dialog->findChild<QTabWidget*>();
  for (const PageRow& row : kPages) {
    dialog->findChild<QRadioButton*>(QStringLiteral("Port_%1").arg(row.port))->click();
    pages->setCurrentIndex(row.page);
    if (row.port == 9) dialog->findChild<QPushButton*>(QStringLiteral("Command3"))->click();
    Save(folder, QLatin1String(row.file), Framed(dialog));
  }
}

void ConnectionDialog(Stage& stage, const QString& folder) {
  stage.Trigger("mnuDisconnect");
  stage.WithDialog([&] { stage.Trigger("mnuConfigureConnection"); },
                   [&](QWidget* dialog) { SavePages(dialog, folder); });
  SaveDialog(stage, folder, "mnuPorts", "schnittstellen-zuordnen");
}

// The first answer in the pane, read with the first template.
void Inspector(Stage& stage, const QString& folder) {
  if (!stage.Find<QAction>("mnuBinInspect")->isEnabled()) return;
  auto* pane = stage.Find<pane::OutputPane>("TermWin");
  const QString text = pane->plainText();
  const auto begin = static_cast<std::size_t>(text.indexOf(QLatin1Char('<')));
  pane->Select(begin, static_cast<std::size_t>(text.indexOf(QLatin1String("RAMP?"))) - 1);
  stage.WithDialog([&] { stage.Trigger("mnuBinInspect"); },
                   [&](QWidget* dialog) {
                     dialog->findChild<QRadioButton*>(QStringLiteral("optFormat_5"))->click();
                     auto* dump = dialog->findChild<QPlainTextEdit*>(QStringLiteral("txtBinData"));
                     QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
                     QApplication::sendEvent(dump, &release);
                     Save(folder, QStringLiteral("binaerdaten"), Framed(dialog));
                   });
}

// A wave on channel 1 and its effect on the others.
void Values(Stage& stage, const QString& folder) {
  stage.Choose("cmbReceiveFormat", 0);
  stage.Choose("cmbReceiveMode", 0);
  stage.Trigger("mnuValues");
  for (int row = 0; row < 120; ++row) {
    stage.Send(QStringLiteral("MSV? 5-6"));
    QThread::msleep(25);
  }
  auto* window = stage.Find<values::ValuesWindow>("ValuesWindow");
  window->resize(900, 560);
  window->Refresh();
  Save(folder, QStringLiteral("messwerte"), Framed(window));
  window->close();
}

void HelpWindow(Stage& stage, const QString& folder) {
  if (!stage.Find<QAction>("TB_HELP")->isEnabled()) return;
  stage.Trigger("TB_HELP");
  auto* help = stage.Find<QWidget>("HelpWindow");
  help->resize(900, 560);
  help->findChild<QTabWidget*>(QStringLiteral("HelpTabs"))->setCurrentIndex(1);
  help->findChild<QLineEdit*>(QStringLiteral("HelpSearch"))->setText(QStringLiteral("Endezeichen Pause"));
  auto* pages = help->findChild<QListWidget*>(QStringLiteral("HelpResults"));
  Q_EMIT pages->itemActivated(pages->item(0));
  Save(folder, QStringLiteral("hilfefenster"), Framed(help));
  help->close();
}

// An IP port without a listener.
void RefusedConnection(Stage& stage, const QString& folder) {
  stage.RefuseConnections();
  SaveDialog(stage, folder, "mnuConnect", "meldung");
}

void ListError(Stage& stage, const QString& folder) {
  stage.LoadList("Fehler.CMD", "' ohne $OPENLOG\nMSV? 1\n$WRITELOG Beginn\nMSV? 2\n");
  stage.Connect();
  SaveDialog(stage, folder, "TB_PLAY", "meldung-befehlsliste");
  const QPixmap list = Grab(stage.Find<QTableView>("CommandScript"));
  Save(folder, QStringLiteral("befehlsliste-fehler"), list.copy(0, 0, list.width(), 160));
}

// A file dialog reads its folder in the background.
void AwaitFiles(const QWidget& dialog) {
  const auto* view = dialog.findChild<QTreeView*>();
  if (view->model()->rowCount(view->rootIndex()) > 0) return;
  QEventLoop read;
  QObject::connect(dialog.findChild<QFileSystemModel*>(), &QFileSystemModel::directoryLoaded, &read,
                   &QEventLoop::quit);
  read.exec();
}

void SmallDialogs(Stage& stage, const QString& folder) {
  stage.WithDialog([&] { stage.Trigger("mnuInsertComment"); },
                   [&](QWidget* dialog) {
                     dialog->findChild<QLineEdit*>()->setText(QStringLiteral("Prüfling 17, Raum 21 °C"));
                     Save(folder, QStringLiteral("kommentar"), Framed(dialog));
                   });
  SaveDialog(stage, folder, "mnuFont", "schriftart");
  SaveDialog(stage, folder, "mnuBackColor", "farbe");
  stage.WithDialog([&] { stage.Trigger("mnuOpenCommandFile"); },
                   [&](QWidget* dialog) {
                     AwaitFiles(*dialog);
                     Save(folder, QStringLiteral("datei-oeffnen"), Framed(dialog));
                   });
}

void ProgressDialog(Stage& stage, const QString& folder) {
  const window::Progress progress(&stage.window(), base::ToQt(window::texts::kLoading), 0);
  auto* dialog = stage.Find<QProgressDialog>("ProgressDialog");
  dialog->setValue(dialog->maximum() * 2 / 5);
  dialog->show();
  Save(folder, QStringLiteral("fortschritt"), Framed(dialog));
}

}  // namespace

std::vector<Picture> DialogPictures() {
  return {Inspector,         Values,    HelpWindow,   ConnectionDialog,
          RefusedConnection, ListError, SmallDialogs, ProgressDialog};
}

}  // namespace kolvane::screenshots
