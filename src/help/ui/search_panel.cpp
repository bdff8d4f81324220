#include "help/ui/search_panel.h"

#include <QVBoxLayout>
#include <utility>

#include "help/ui/help_texts.h"

namespace kolvane::help {
namespace {

constexpr int kPageRole = Qt::UserRole;

}  // namespace

SearchPanel::SearchPanel(SearchFunction search, QWidget* parent)
    : QWidget(parent),
      search_(std::move(search)),
      words_(new QLineEdit),
      results_(new QListWidget),
      count_(new QLabel) {
  words_->setObjectName(QStringLiteral("HelpSearch"));
  words_->setAccessibleName(QString::fromUtf8(texts::kSearch));
  words_->setPlaceholderText(QString::fromUtf8(texts::kSearchHint));
  words_->setClearButtonEnabled(true);
  results_->setObjectName(QStringLiteral("HelpResults"));
  results_->setAccessibleName(QString::fromUtf8(texts::kResults));
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
    auto* item = new QListWidgetItem(QString::fromStdString(hit.title), results_);
    item->setData(kPageRole, QString::fromStdString(hit.page));
  }
  count_->setText(texts::Hits(results_->count()));
}

QString SearchPanel::FirstWord() const { return words_->text().simplified().section(QLatin1Char(' '), 0, 0); }

void SearchPanel::ChooseFirst() {
  if (results_->count() == 0) return;
  results_->setCurrentRow(0);
  results_->setFocus();
  Q_EMIT PageChosen(results_->item(0)->data(kPageRole).toString());
}

}  // namespace kolvane::help
