#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QWidget>
#include <functional>
#include <vector>

#include "help/page_index.h"

namespace kolvane::help {

/// The search field `HelpSearch` above the pages found, `HelpResults`. It searches at each letter.
class SearchPanel final : public QWidget {
  Q_OBJECT

 public:
  using SearchFunction = std::function<std::vector<SearchHit>(const QString& words)>;

  explicit SearchPanel(SearchFunction search, QWidget* parent = nullptr);

  void Start();
  /// Searches for the same words once more, as there is another file.
  void Refresh();
  QString FirstWord() const;

 Q_SIGNALS:
  void PageChosen(const QString& page);

 private:
  void ChooseFirst();

  SearchFunction search_;
  QLineEdit* words_;
  QListWidget* results_;
  QLabel* count_;
};

}  // namespace kolvane::help
