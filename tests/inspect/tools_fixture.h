#pragma once

#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QTableWidget>
#include <QTimer>
#include <QUrl>

#include "inspect/dialog_fixture.h"

namespace kolvane::inspect {

/// The inspector's fields and buttons besides dump, format and value.
class InspectToolsTest : public BinInspectDialogTest {
 protected:
  QString PositionText() { return Find<QLabel>("PositionLabel")->text(); }
  QString Cell(const QString& type, int column) {
    auto* panel = Find<QTableWidget>("ValuePanel");
    for (int row = 0; row < panel->rowCount(); ++row) {
      if (panel->item(row, 0)->text() == type) return panel->item(row, column)->text();
    }
    return QStringLiteral("no such type");
  }
  void Type(const char* field, const QString& text) {
    auto* edit = Find<QLineEdit>(field);
    edit->setText(text);
    QTest::keyClick(edit, Qt::Key_Return);
  }
  std::size_t Caret() { return ByteAtPosition(Dump()->View().caret); }
  QPoint PointOf(Position position, double share) {
    QTextCursor cursor(Dump()->document());
    cursor.setPosition(static_cast<int>(BoxPositions(Dump()->View().text).ToBox(position)));
    const double width = QFontMetricsF(Dump()->font()).horizontalAdvance(QLatin1Char('0'));
    const QRect rect = Dump()->cursorRect(cursor);
    return {static_cast<int>(rect.left() + share * width), rect.center().y()};
  }
  QString Copied(const char* form) {
    Find<QAction>(form)->trigger();
    return QApplication::clipboard()->text();
  }
  void Answer(const char* name, const std::string& file) {
    QTimer::singleShot(0, dialog_.get(), [name, file] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->objectName(), name);
      const bool saves = std::string_view(name) == "SaveDialog";
      EXPECT_EQ(dialog->acceptMode(), saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
      dialog->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(file));
      static_cast<QDialog&>(*dialog).accept();
    });
  }
  void Drop(const std::string& file) {
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(file))});
    QDragEnterEvent enter({}, Qt::CopyAction, &mime, Qt::LeftButton, {});
    QCoreApplication::sendEvent(dialog_.get(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop({}, Qt::CopyAction, &mime, Qt::LeftButton, {});
    QCoreApplication::sendEvent(dialog_.get(), &drop);
  }
  void Click(const char* button) { Find<QPushButton>(button)->click(); }
};

}  // namespace kolvane::inspect
