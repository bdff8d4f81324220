#pragma once

#include <QMenu>
#include <QObject>
#include <QStringList>
#include <functional>
#include <string>

#include "window/state_store.h"

namespace kolvane::window {

/// The command lists used last, `mnuRecent`: newest first, each only once. They are kept from one window to
/// the next if there is a store.
class RecentLists final : public QObject {
  Q_OBJECT

 public:
  using Open = std::function<void(const QString& name)>;

  /// `store`, which may be null, must outlive this object.
  RecentLists(QMenu* menu, StateStore* store, Open open);

  /// A list of this file is in use; an empty name is ignored.
  void Note(const std::string& file);

 private:
  void Fill();

  QMenu* menu_;
  StateStore* store_;
  Open open_;
  QStringList names_;
};

}  // namespace kolvane::window
