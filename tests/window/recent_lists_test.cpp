#include "window/recent_lists.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <map>

namespace kolvane::window {
namespace {

class MapStore final : public StateStore {
 public:
  std::string Read(const std::string& section, const std::string& key) const override {
    const auto found = texts.find(section + "/" + key);
    return found == texts.end() ? "" : found->second;
  }
  void Write(const std::string& section, const std::string& key, const std::string& text) override {
    texts[section + "/" + key] = text;
  }
  std::map<std::string, std::string> texts;
};

class RecentListsTest : public testing::Test {
 protected:
  QStringList Captions() const {
    QStringList captions;
    for (const QAction* item : menu_.actions()) captions << item->text();
    return captions;
  }

  MapStore store_;
  QMenu menu_;
  QString opened_;
  RecentLists lists_{&menu_, &store_, [this](const QString& name) { opened_ = name; }};
};

TEST_F(RecentListsTest, StartsEmptyAndWritesNothing) {
  EXPECT_FALSE(menu_.isEnabled());
  lists_.Note("");
  EXPECT_TRUE(store_.texts.empty());
}

TEST_F(RecentListsTest, TheNewestIsFirstAndEachAppearsOnce) {
  lists_.Note("/a.CMD");
  lists_.Note("/b&c.CMD");
  lists_.Note("/a.CMD");
  EXPECT_EQ(Captions(), QStringList({"&1 /a.CMD", "&2 /b&&c.CMD"}));
  EXPECT_TRUE(menu_.isEnabled());
}

TEST_F(RecentListsTest, ANameThatQtCannotOpenIsLeftOut) {
  lists_.Note("/a.CMD");
  lists_.Note("/M\xFCller.CMD");
  EXPECT_EQ(Captions(), QStringList{"&1 /a.CMD"});
}

TEST_F(RecentListsTest, TenAreKeptFromOneWindowToTheNext) {
  for (int i = 1; i <= 12; ++i) lists_.Note("/" + std::to_string(i) + ".CMD");
  QMenu menu;
  const RecentLists next(&menu, &store_, [](const QString&) {});
  ASSERT_EQ(menu.actions().size(), 10);
  EXPECT_EQ(menu.actions().front()->text(), "&1 /12.CMD");
  EXPECT_EQ(menu.actions().back()->text(), "&0 /3.CMD");
}

TEST_F(RecentListsTest, OneIsOpened) {
  lists_.Note("/a.CMD");
  lists_.Note("/b.CMD");
  menu_.actions().back()->trigger();
  QApplication::processEvents();
  EXPECT_EQ(opened_, "/a.CMD");
}

}  // namespace
}  // namespace kolvane::window
