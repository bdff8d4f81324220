#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <memory>
#include <string>

#include "base/temp_folder.h"
#include "inspect/marked_bytes.h"
#include "inspect/ui/bin_inspect_dialog.h"

namespace kolvane::inspect {

/// The inspector on marked bytes, with its own templates.
class BinInspectDialogTest : public testing::Test {
 protected:
  void Open(std::string_view bytes) {
    dialog_ = std::make_unique<BinInspectDialog>(BinInspectContext{state_, folder_.Path(""), ","});
    dialog_->Initialize(Marked(bytes));
    dialog_->show();
    dialog_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }

  void AddTemplate(const std::string& name, const std::string& text) {
    base::WriteBytes(folder_.Path(name), text);
  }

  template <typename Widget>
  Widget* Find(const char* name) {
    auto* found = dialog_->findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  DumpTextBox* Dump() { return Find<DumpTextBox>("txtBinData"); }
  QComboBox* Templates() { return Find<QComboBox>("cmbSpecialFormat"); }
  QListWidget* Lines() { return Find<QListWidget>("lstTemplate"); }
  QRadioButton* Option(int index) {
    return Find<QRadioButton>(("optFormat_" + std::to_string(index)).c_str());
  }
  QString Value() { return Find<QLabel>("NumDisplay")->text(); }
  QString SelectedText() { return Dump()->textCursor().selectedText(); }
  QStringList LineTexts() {
    QStringList texts;
    for (int row = 0; row < Lines()->count(); ++row) texts << Lines()->item(row)->text();
    return texts;
  }

  void ClickAt(Position position) {
    DumpView view = Dump()->View();
    view.MoveTo(position);
    Dump()->Show(view);
    QTest::mouseClick(Dump()->viewport(), Qt::LeftButton, {}, Dump()->cursorRect().center());
  }

  base::TempFolder folder_;
  InspectorState state_;
  std::unique_ptr<BinInspectDialog> dialog_;
};

}  // namespace kolvane::inspect
