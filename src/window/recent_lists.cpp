#include "window/recent_lists.h"

#include <QFileInfo>
#include <utility>

#include "base/ui/qt_text.h"

namespace kolvane::window {
namespace {

constexpr int kMaxLists = 10;
constexpr char kRecent[] = "RECENT";

std::string KeyOf(qsizetype index) { return "List" + std::to_string(index + 1); }

}  // namespace

RecentLists::RecentLists(QMenu* menu, StateStore* store, Open open)
    : QObject(menu), menu_(menu), store_(store), open_(std::move(open)) {
  for (int i = 0; store_ != nullptr && i < kMaxLists; ++i) {
    const QString name = base::ToQt(store_->Read(kRecent, KeyOf(i)));
    if (!name.isEmpty()) names_ << name;
  }
  Fill();
}

void RecentLists::Note(const std::string& file) {
  const QString shown = base::ToQt(file);
  // Qt cannot open a file whose name is not UTF-8.
  if (file.empty() || base::FromQt(shown) != file) return;
  const QString name = QFileInfo(shown).absoluteFilePath();
  if (!names_.isEmpty() && names_.front() == name) return;
  names_.removeAll(name);
  names_.prepend(name);
  if (names_.size() > kMaxLists) names_.removeLast();
  for (qsizetype i = 0; store_ != nullptr && i < names_.size(); ++i)
    store_->Write(kRecent, KeyOf(i), base::FromQt(names_[i]));
  Fill();
}

// The leading digit selects an item by keyboard.
void RecentLists::Fill() {
  menu_->clear();
  menu_->setEnabled(!names_.isEmpty());
  for (qsizetype i = 0; i < names_.size(); ++i) {
    QString caption = names_[i];
    caption.replace(QLatin1Char('&'), QLatin1String("&&"));
    QAction* item = menu_->addAction(QStringLiteral("&%1 %2").arg((i + 1) % kMaxLists).arg(caption));
    // Queued, because the menu that contains the item is filled again.
    connect(
        item, &QAction::triggered, this, [this, name = names_[i]] { open_(name); }, Qt::QueuedConnection);
  }
}

}  // namespace kolvane::window
