#pragma once

#include <gtest/gtest.h>

#include <QScrollBar>
#include <QtTest/QTest>
#include <string>

#include "pane/pane_state.h"
#include "pane/ui/output_pane.h"

namespace kolvane::pane {

/// A visible pane, with what its tests need.
class PaneWindow : public testing::Test {
 protected:
  void SetUp() override {
    pane_.resize(400, 200);
    pane_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane_));
  }

  void SetText(const char* text) { pane_.setPlainText(QString::fromUtf8(text)); }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&pane_, key, modifiers);
  }
  void Type(const char* keys) { QTest::keyClicks(&pane_, QString::fromUtf8(keys)); }
  std::string State() const { return pane::State(pane_.text()); }
  std::string Colors() const { return pane::Colors(pane_.text()); }
  void AppendLines(int count) {
    for (int i = 1; i <= count; ++i) pane_.AppendLine(LineKind::kAnswer, "line " + std::to_string(i));
    pane_.Flush();
  }
  QScrollBar& bar() { return *pane_.verticalScrollBar(); }
  bool IsAtEnd() { return bar().value() == bar().maximum(); }
  QPoint PointOf(std::size_t offset) const { return pane_.CharacterRect(offset).center(); }

  OutputPane pane_;
};

}  // namespace kolvane::pane
