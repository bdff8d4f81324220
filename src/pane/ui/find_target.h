#pragma once

#include <QObject>
#include <QString>
#include <cstddef>
#include <memory>

#include "pane/pane_search.h"

namespace kolvane::pane {

/// Progress of a search.
struct FindState {
  std::size_t current = 0;  ///< number of the hit last gone to, from 1; 0: none
  std::size_t count = 0;
  bool complete = true;  ///< all of the text has been searched
};

/// Something that the find bar can search. While a search is set, hits are highlighted, also in text added
/// later.
class FindTarget : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  /// Goes to the first hit from the position where the first search started. Null ends the search.
  virtual void Search(std::shared_ptr<const Matcher> matcher) = 0;
  virtual void GoToNext() = 0;
  virtual void GoToPrevious() = 0;
  virtual FindState State() const = 0;
  /// The text selected within one line, as a proposal to search for.
  virtual QString SelectedText() const = 0;
  virtual QWidget* Widget() const = 0;

  /// Whether hits can be replaced at all, and whether they can now.
  virtual bool Replaces() const { return false; }
  virtual bool CanReplace() const { return false; }
  /// Replaces the current hit and goes to the next; does nothing if there is no current hit.
  virtual void ReplaceCurrent(const QString& /*with*/) {}
  /// Returns how many hits were replaced.
  virtual int ReplaceAll(const QString& /*with*/) { return 0; }

 Q_SIGNALS:
  void StateChanged();
};

}  // namespace kolvane::pane
