#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "base/temp_folder.h"
#include "device/fake_port_library.h"
#include "gui/box_answers.h"
#include "window/window_records.h"

namespace kolvane::window {

/// A terminal window, shown, with answers for the dialogs that its commands open.
class WindowFixture : public testing::Test, protected WindowRecords {
 protected:
  WindowFixture() {
    // Keeps tests from printing on this computer's printers.
    qputenv("CUPS_SERVER", "/nonexistent");
    connection_.port_code = device::port_code::kTcpIp;
    connection_.ip_address = "10.0.0.5";
    window_.Load();
    window_.show();
  }

  template <typename Object>
  Object* Find(const char* name) {
    auto* found = window_.findChild<Object*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  void Press(const char* key) { Find<QAction>(key)->trigger(); }
  /// The names of a menu's items or a tool bar's buttons, without their prefix, a text for each group.
  QStringList Groups(const char* bar) {
    QStringList groups(1);
    for (const QAction* item : Find<QWidget>(bar)->actions()) {
      if (item->isSeparator()) {
        groups << QString();
      } else {
        groups.last() += (item->menu() ? item->menu()->objectName() : item->objectName()).mid(3) + ' ';
      }
    }
    return groups;
  }
  bool Enabled(const char* key) { return Find<QAction>(key)->isEnabled(); }
  pane::OutputPane* Pane() { return Find<pane::OutputPane>("TermWin"); }
  QString PaneText() { return Pane()->plainText(); }
  void AddLine(const std::string& line, LineKind kind = LineKind::kAnswer) {
    window_.core().output.AddLine(kind, line);
  }

  /// Hands the next modal dialog, which must be of that class, to `answer`.
  template <typename Dialog, typename Answer>
  void OnDialog(Answer answer) {
    QTimer::singleShot(0, &window_, [this, answer] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return ADD_FAILURE() << "no dialog, or one of another class";
      ++dialogs_;
      answer(*dialog);
    });
  }

  /// Picks the file in the next file dialog, which must have that title if one is given.
  void ChooseFile(const std::string& name, const QString& title = {}) {
    OnDialog<QFileDialog>([name, title](QFileDialog& dialog) {
      if (!title.isEmpty()) {
        EXPECT_EQ(dialog.windowTitle(), title);
      }
      dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(name));
      static_cast<QDialog&>(dialog).accept();
    });
  }
  template <typename Dialog>
  void Cancel() {
    OnDialog<Dialog>([](QDialog& dialog) { dialog.reject(); });
  }
  /// Runs `step`, answers the message box that it shows, and returns the box's text.
  QString MessageDuring(const std::function<void()>& step) {
    QString text;
    OnDialog<QMessageBox>([&text](QMessageBox& box) {
      EXPECT_EQ(box.objectName(), "MessageBox");
      text = box.text();
      box.accept();
    });
    step();
    return text;
  }
  /// From now on each message box is recorded and answered, a question with yes.
  void AnswerBoxes() { boxes_.Start(); }

  base::TempFolder folder_;
  device::FakePortLibrary library_;
  device::FakePortLibrarySource source_{&library_};
  MainWindow window_{ContextWith(source_, folder_.path())};
  int dialogs_ = 0;  ///< how many were answered, message boxes excluded
  gui::BoxAnswers boxes_;
};

}  // namespace kolvane::window
