#pragma once

#include <QTextBrowser>
#include <memory>

#include "help/help_file.h"

namespace kolvane::help {

/// Shows pages of a help file. It reads nothing but that file: a link that leads out of it only emits
/// LinkOutside.
class HelpPage final : public QTextBrowser {
  Q_OBJECT

 public:
  explicit HelpPage(QWidget* parent = nullptr);

  /// The file whose pages are shown from now on; another file starts a new history.
  void Use(std::shared_ptr<const HelpFile> file);
  const HelpFile* file() const { return file_.get(); }

  /// Shows a page, at an anchor of it where there is one; stays where it is if the file has no such page.
  void ShowPage(const QString& path, const QString& anchor = {});
  /// The page on display; empty before the first one.
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
  QUrl loading_;  ///< the page that is being read, which source() does not name yet
  int normal_points_;
};

}  // namespace kolvane::help
