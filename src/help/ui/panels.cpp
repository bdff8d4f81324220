#include "help/ui/panels.h"

#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "base/ui/qt_text.h"
#include "help/ui/help_texts.h"

namespace kolvane::help {
namespace {

constexpr int kPageRole = Qt::UserRole;
constexpr int kAnchorRole = Qt::UserRole + 1;
constexpr int kRowGap = 6;

}  // namespace

ContentsTree::ContentsTree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("HelpContents"));
  setAccessibleName(base::ToQt(texts::kContents));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  const auto choose = [this](const QTreeWidgetItem* item) {
    if (const QString page = item->data(0, kPageRole).toString(); !page.isEmpty())
      Q_EMIT PageChosen(page, item->data(0, kAnchorRole).toString());
  };
  connect(this, &QTreeWidget::itemClicked, this, choose);
  connect(this, &QTreeWidget::itemActivated, this, choose);
}

void ContentsTree::ShowEntries(const std::vector<ContentsEntry>& entries) {
  clear();
  QList<QTreeWidgetItem*> path;  // the last entry added and those around it
  for (const ContentsEntry& entry : entries) {
    path.resize(std::min<qsizetype>(entry.level, path.size()));
    auto* item = path.isEmpty() ? new QTreeWidgetItem(this) : new QTreeWidgetItem(path.last());
    item->setText(0, base::ToQt(entry.title));
    item->setToolTip(0, item->text(0));
    item->setSizeHint(0, QSize(0, fontMetrics().height() + kRowGap));
    item->setData(0, kPageRole, base::ToQt(entry.page));
    item->setData(0, kAnchorRole, base::ToQt(entry.anchor));
    path.append(item);
  }
}

void ContentsTree::SelectPage(const QString& page) {
  const auto is_page = [&page](const QTreeWidgetItem* item) {
    return item->data(0, kPageRole).toString().compare(page, Qt::CaseInsensitive) == 0;
  };
  // Several entries may lead to a page: the one that was chosen stays selected.
  if (currentItem() != nullptr && is_page(currentItem())) return;
  for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
    if (!is_page(*item)) continue;
    setCurrentItem(*item);
    return scrollToItem(*item);
  }
  setCurrentItem(nullptr);
}

namespace {

// Matches each letter that may be spelled out in both ways.
QString PatternOf(const QString& word) {
  static const QRegularExpression kSpelled(QStringLiteral("(ä|ae)|(ö|oe)|(ü|ue)|(ß|ss)"),
                                           QRegularExpression::CaseInsensitiveOption);
  constexpr const char* kBoth[] = {"(?:ä|ae)", "(?:ö|oe)", "(?:ü|ue)", "(?:ß|ss)"};
  QString pattern;
  qsizetype end = 0;
  for (auto match = kSpelled.globalMatch(word); match.hasNext();) {
    const QRegularExpressionMatch letter = match.next();
    pattern += QRegularExpression::escape(word.mid(end, letter.capturedStart() - end));
    pattern += base::ToQt(kBoth[letter.lastCapturedIndex() - 1]);
    end = letter.capturedEnd();
  }
  return pattern + QRegularExpression::escape(word.mid(end));
}

}  // namespace

SearchPanel::SearchPanel(SearchFunction search, QWidget* parent)
    : QWidget(parent),
      search_(std::move(search)),
      words_(new QLineEdit),
      results_(new QListWidget),
      count_(new QLabel) {
  words_->setObjectName(QStringLiteral("HelpSearch"));
  words_->setAccessibleName(base::ToQt(texts::kSearch));
  words_->setPlaceholderText(base::ToQt(texts::kSearchHint));
  words_->setClearButtonEnabled(true);
  results_->setObjectName(QStringLiteral("HelpResults"));
  results_->setAccessibleName(base::ToQt(texts::kResults));
  results_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  count_->setObjectName(QStringLiteral("HelpHits"));
  auto* column = new QVBoxLayout(this);
  for (QWidget* part : std::initializer_list<QWidget*>{words_, results_, count_}) column->addWidget(part);
  connect(words_, &QLineEdit::textChanged, this, &SearchPanel::Refresh);
  connect(words_, &QLineEdit::returnPressed, this, &SearchPanel::ChooseFirst);
  const auto choose = [this](const QListWidgetItem* item) {
    Q_EMIT PageChosen(item->data(kPageRole).toString());
  };
  connect(results_, &QListWidget::itemClicked, this, choose);
  connect(results_, &QListWidget::itemActivated, this, choose);
}

void SearchPanel::Start() {
  words_->setFocus(Qt::ShortcutFocusReason);
  words_->selectAll();
}

void SearchPanel::Refresh() {
  results_->clear();
  count_->clear();
  if (words_->text().trimmed().isEmpty()) return;
  for (const SearchHit& hit : search_(words_->text())) {
    auto* item = new QListWidgetItem(base::ToQt(hit.title), results_);
    item->setToolTip(item->text());
    item->setData(kPageRole, base::ToQt(hit.page));
  }
  count_->setText(texts::Hits(results_->count()));
}

std::optional<QRegularExpression> SearchPanel::Hits() const {
  QStringList patterns;
  for (const QString& word : words_->text().simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts))
    patterns << PatternOf(word);
  if (patterns.isEmpty()) return std::nullopt;
  return QRegularExpression(patterns.join(QLatin1Char('|')), QRegularExpression::CaseInsensitiveOption);
}

void SearchPanel::Choose(int row) {
  results_->setCurrentRow(row);
  Q_EMIT PageChosen(results_->item(row)->data(kPageRole).toString());
}

void SearchPanel::ChooseNext(int step) {
  const int count = results_->count();
  if (count > 0) Choose((std::max(results_->currentRow(), 0) + step + count) % count);
}

void SearchPanel::ChooseFirst() {
  if (results_->count() == 0) return;
  results_->setFocus();
  Choose(0);
}

}  // namespace kolvane::help
