#pragma once

#include <QTreeWidget>
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

}  // namespace kolvane::help
