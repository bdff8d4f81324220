#pragma once

#include <QMenu>
#include <QObject>
#include <QStringList>
#include <functional>

#include "window/state_store.h"

namespace kolvane::window {

/// The command lists used last, `mnuRecent`: newest first, each once. They are kept from one window to the
/// next where there is a store.
class RecentLists final : public QObject {
  Q_OBJECT

 public:
  using Open = std::function<void(const QString& name)>;

  /// `store`, which may be null, outlives this.
  RecentLists(QMenu* menu, StateStore* store, Open open);

  /// A list of this file is in use; an empty name is none.
  void Note(const std::string& file);

 private:
  void Fill();

  QMenu* menu_;
  StateStore* store_;
  Open open_;
  QStringList names_;
};

}  // namespace kolvane::window
