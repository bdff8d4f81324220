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
  /// Selects the entry of a page; none if the contents lack it.
  void SelectPage(const QString& page);

 Q_SIGNALS:
  void PageChosen(const QString& page, const QString& anchor);
};

/// The search field `HelpSearch` above the pages found, `HelpResults`. It searches after each letter.
class SearchPanel final : public QWidget {
  Q_OBJECT

 public:
  using SearchFunction = std::function<std::vector<SearchHit>(const QString& words)>;

  explicit SearchPanel(SearchFunction search, QWidget* parent = nullptr);

  void Start();
  /// Searches again, for new words or in another file.
  void Refresh();
  /// Matches each word where it occurs in a page, umlauts spelled out or not; no value if there is no word.
  std::optional<QRegularExpression> Hits() const;
  /// Chooses the page after the current one, or with -1 the one before, wrapping around at the ends.
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
