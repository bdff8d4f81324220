#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "help/contents.h"

namespace kolvane::help {

/// The table of contents `HelpContents`.
class ContentsTree final : public QTreeWidget {
  Q_OBJECT

 public:
  explicit ContentsTree(QWidget* parent = nullptr);

  void ShowEntries(const std::vector<ContentsEntry>& entries);
  /// Marks the entry of a page; none where the contents lack it.
  void Mark(const QString& page);

 Q_SIGNALS:
  void PageChosen(const QString& page, const QString& anchor);
};

/// The search field `HelpSearch` above the pages found, `HelpResults`. It searches at each letter.
class SearchPanel final : public QWidget {
  Q_OBJECT

 public:
  using SearchFunction = std::function<std::vector<SearchHit>(const QString& words)>;

  explicit SearchPanel(SearchFunction search, QWidget* parent = nullptr);

  void Start();
  /// Searches for the same words once more, as there is another file.
  void Refresh();
  /// Matches each of the words where it stands in a page, umlauts spelled out or not; nothing for no word.
  std::optional<QRegularExpression> Hits() const;
  /// Chooses the page after the chosen one, or with -1 the one before, round the ends of the list.
  void ChooseNext(int step);

 Q_SIGNALS:
  void PageChosen(const QString& page);

 private:
  void Choose(int row);
  void ChooseFirst();

  SearchFunction search_;
  QLineEdit* words_;
  QListWidget* results_;
  QLabel* count_;
};

}  // namespace kolvane::help
