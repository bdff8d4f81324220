#include "window/recent_lists.h"

#include <QFileInfo>
#include <utility>

#include "base/ui/qt_text.h"

namespace kolvane::window {
namespace {

constexpr int kMost = 10;
constexpr char kSection[] = "RECENT";

std::string KeyOf(qsizetype index) { return "List" + std::to_string(index + 1); }

}  // namespace

RecentLists::RecentLists(QMenu* menu, StateStore* store, Open open)
    : QObject(menu), menu_(menu), store_(store), open_(std::move(open)) {
  for (int i = 0; store_ != nullptr && i < kMost; ++i) {
    const QString name = base::ToQt(store_->Read(kSection, KeyOf(i)));
    if (!name.isEmpty()) names_ << name;
  }
  Fill();
}

void RecentLists::Note(const std::string& file) {
  if (file.empty()) return;
  const QString name = QFileInfo(base::ToQt(file)).absoluteFilePath();
  if (!names_.isEmpty() && names_.front() == name) return;
  names_.removeAll(name);
  names_.prepend(name);
  if (names_.size() > kMost) names_.removeLast();
  for (qsizetype i = 0; store_ != nullptr && i < names_.size(); ++i)
    store_->Write(kSection, KeyOf(i), base::FromQt(names_[i]));
  Fill();
}

// The digit in front chooses with the keyboard.
void RecentLists::Fill() {
  menu_->clear();
  menu_->setEnabled(!names_.isEmpty());
  for (qsizetype i = 0; i < names_.size(); ++i) {
    QString caption = names_[i];
    caption.replace(QLatin1Char('&'), QLatin1String("&&"));
    QAction* item = menu_->addAction(QStringLiteral("&%1 %2").arg((i + 1) % kMost).arg(caption));
    // Later, since the menu that the item is in is filled again.
    connect(
        item, &QAction::triggered, this, [this, name = names_[i]] { open_(name); }, Qt::QueuedConnection);
  }
}

}  // namespace kolvane::window
