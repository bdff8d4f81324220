#include "window/message_prompt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>

#include "base/ui/qt_text.h"

namespace kolvane::window {
namespace {

constexpr QChar kBreak(0x200B);

/// Calls `inspect` with the message box with `text` before it is closed.
template <typename Inspect>
void ShowAndInspect(const std::string& text, Inspect inspect) {
  bool seen = false;
  QTimer::singleShot(0, qApp, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    inspect(*box);
    seen = true;
    box->accept();
  });
  MessagePrompt(nullptr).ShowError(text);
  EXPECT_TRUE(seen);
}

/// The label that shows the box's text; null if it is not shown in a label.
QLabel* TextLabel(const QMessageBox& box) {
  for (QLabel* label : box.findChildren<QLabel*>()) {
    if (label->isVisible() && label->text().remove(kBreak) == box.text()) return label;
  }
  return nullptr;
}

void ExpectShownInFull(const std::string& text) {
  ShowAndInspect(text, [&](const QMessageBox& box) {
    EXPECT_EQ(base::FromQt(box.text()), text);
    const QLabel* label = TextLabel(box);
    ASSERT_NE(label, nullptr);
    const int width = label->contentsRect().width() - std::max(label->indent(), 0);
    const QRect needed =
        label->fontMetrics().boundingRect(QRect(0, 0, width, 10'000), Qt::TextWordWrap, label->text());
    EXPECT_LE(needed.width(), width);
    EXPECT_LE(needed.height(), label->height());
    EXPECT_LE(box.width(), box.screen()->availableSize().width());
    EXPECT_LE(box.height(), box.screen()->availableSize().height());
  });
}

TEST(LongMessages, AreShownInFullWhateverTheLengthOfTheirWords) {
  ExpectShownInFull("Die Datei „/home/lab/" + std::string(76, 'm') + ".CMD“ kann nicht gelesen werden.");
  ExpectShownInFull("Die Datei „/home/" + std::string(255, 'W') + "/" + std::string(255, 'i') +
                    "/a.CMD“ kann nicht gelesen werden: " + std::string(120, 'x'));
}

TEST(ShortMessages, AreShownByTheBoxItself) {
  for (const char* text : {"Ungültige Adresse", "Fehler beim Verbindungsaufbau: -10 (-10)", "eins\nzwei"}) {
    ExpectShownInFull(text);
    ShowAndInspect(text, [](const QMessageBox& box) {
      EXPECT_EQ(TextLabel(box)->objectName(), "qt_msgbox_label");
      EXPECT_FALSE(TextLabel(box)->text().contains(kBreak));
    });
  }
}

}  // namespace
}  // namespace kolvane::window
