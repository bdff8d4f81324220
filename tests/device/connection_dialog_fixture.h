#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "base/fake_prompt.h"
#include "base/temp_folder.h"
#include "device/fake_port_library.h"
#include "device/ui/connection_dialog.h"

namespace kolvane::device {

/// The dialog with TCP/IP chosen, once it is opened.
class ConnectionDialogFixture : public testing::Test {
 protected:
  ConnectionDialogFixture() { parameters_.port_option = 8; }

  void Open() {
    dialog_ = std::make_unique<ConnectionDialog>(
        ConnectionDialogContext{parameters_, state_, source_, prompt_, folder_.path()});
    dialog_->show();
  }

  template <typename Widget>
  Widget* Find(const QString& name) {
    auto* found = dialog_->findChild<Widget*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
  }

  QTabWidget* Tabs() { return Find<QTabWidget>("SSTab1"); }
  void Choose(int port) { Find<QRadioButton>(QStringLiteral("Port_%1").arg(port))->click(); }
  void Press(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
  QString Text(const char* line) { return Find<QLineEdit>(line)->text(); }
  QString Shown(const char* box) { return Find<QComboBox>(box)->currentText(); }

  QString Items(const char* name) {
    const auto* box = Find<QComboBox>(name);
    QStringList items;
    for (int i = 0; i < box->count(); ++i) items << box->itemText(i);
    return items.join('|');
  }

  // The numbers of the pages that can be reached, the current one in brackets.
  QString Pages() {
    QString pages;
    for (int page = 0; page < Tabs()->count(); ++page) {
      if (Tabs()->isTabEnabled(page))
        pages += QString(page == Tabs()->currentIndex() ? "[%1]" : "%1").arg(page);
    }
    return pages;
  }

  ConnectionParameters parameters_;
  DeviceState state_;
  FakePortLibrary library_;
  FakePortLibrarySource source_{&library_};
  base::FakePrompt prompt_;
  base::TempFolder folder_;
  std::unique_ptr<ConnectionDialog> dialog_;
};

}  // namespace kolvane::device
