#pragma once

#include <QIcon>
#include <QMainWindow>
#include <QPointer>
#include <QTabWidget>
#include <QTextBrowser>
#include <functional>
#include <memory>

#include "help/help_file.h"
#include "help/topics.h"
#include "help/ui/panels.h"

namespace kolvane::help {

/// Shows pages of a help file. It reads only that file: a link to anything else only emits LinkOutside.
class HelpPage final : public QTextBrowser {
  Q_OBJECT

 public:
  explicit HelpPage(QWidget* parent = nullptr);

  /// Sets the file whose pages are shown; another file starts a new history.
  void Use(std::shared_ptr<const HelpFile> file);
  const HelpFile* file() const { return file_.get(); }

  /// Shows a page, at the anchor if there is one; does nothing if the file has no such page.
  void ShowPage(const QString& path, const QString& anchor = {});
  /// The page shown; empty before the first one.
  QString Path() const;

  void ResetZoom();

 Q_SIGNALS:
  void LinkOutside(const QString& address);

 protected:
  QVariant loadResource(int type, const QUrl& url) override;
  void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;

 private:
  void FollowLink(const QUrl& url);

  std::shared_ptr<const HelpFile> file_;
  QUrl loading_;  ///< the page being read, which source() does not name yet
  int normal_points_;
};

/// What the help window uses of the window above it.
struct HelpWindowServices {
  std::function<QIcon(const char* name)> icon;
  std::function<void(const QTextDocument& page, const QString& title, QWidget* parent)> print;
};

/// The help viewer `HelpWindow`: not modal, and accepts input while a modal dialog of the terminal is shown.
/// Closing hides it; it is destroyed with its parent.
class HelpWindow final : public QMainWindow {
  Q_OBJECT

 public:
  /// The initial size if the screen is large enough: no page has to be scrolled sideways.
  static constexpr QSize kFirstSize{1000, 680};

  HelpWindow(HelpWindowServices services, QWidget* parent);

  /// Shows the target in this file, or the start page if the file lacks the topic, and raises the window.
  /// Pages of the same file shown before stay in the history.
  void ShowTarget(const std::shared_ptr<const HelpFile>& file, const HelpTarget& target);

 protected:
  bool event(QEvent* event) override;

 private:
  void BuildToolbar();
  void BuildParts();
  QAction* AddAction(const char* name, const char* text, const char* icon, const QList<QKeySequence>& keys,
                     const std::function<void()>& action);
  void PageChanged();
  void ShowFound(const QString& page);
  void Find();
  void FindNext(QTextDocument::FindFlags direction);
  void StayUsable();

  HelpWindowServices services_;
  HelpPage* page_;
  ContentsTree* contents_;
  SearchPanel* search_;
  QTabWidget* tabs_;
  QPointer<QWindow> owner_;
};

}  // namespace kolvane::help
