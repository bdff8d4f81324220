#include "help/ui/help_page.h"

#include "help/ui/help_texts.h"

namespace kolvane::help {
namespace {

constexpr QLatin1String kScheme("chm");

QUrl PageUrl(const QString& path, const QString& anchor) {
  QUrl url;
  url.setScheme(kScheme);
  url.setPath(QLatin1Char('/') + path);
  if (!anchor.isEmpty()) url.setFragment(anchor);
  return url;
}

QString PathOf(const QUrl& url) { return url.scheme() == kScheme ? url.path().mid(1) : QString(); }

}  // namespace

HelpPage::HelpPage(QWidget* parent) : QTextBrowser(parent), normal_points_(font().pointSize()) {
  setObjectName(QStringLiteral("HelpPage"));
  setAccessibleName(QString::fromUtf8(texts::kPage));
  setOpenLinks(false);
  connect(this, &QTextBrowser::anchorClicked, this, &HelpPage::FollowLink);
}

void HelpPage::Use(std::shared_ptr<const HelpFile> file) {
  if (file == file_) return;
  file_ = std::move(file);
  // An empty source makes the next page be read even if the old file had one of that name.
  clearHistory();
  setSource(QUrl());
  clearHistory();
}

void HelpPage::ShowPage(const QString& path, const QString& anchor) { setSource(PageUrl(path, anchor)); }

QString HelpPage::Path() const { return PathOf(source()); }

void HelpPage::ResetZoom() {
  QFont normal = font();
  normal.setPointSize(normal_points_);
  setFont(normal);
}

void HelpPage::FollowLink(const QUrl& url) {
  if (url.scheme() == kScheme) return setSource(url);
  Q_EMIT LinkOutside(url.toDisplayString());
}

QVariant HelpPage::loadResource(int type, const QUrl& url) {
  const QUrl page = loading_.isEmpty() ? source() : loading_;
  const QString path = PathOf(url.isRelative() ? page.resolved(url) : url);
  // Empty, but not null: Qt would look for a local file of that name otherwise.
  if (file_ == nullptr || path.isEmpty()) return QByteArray("");
  const std::string name = path.toStdString();
  if (type == QTextDocument::ImageResource) return QByteArray::fromStdString(file_->Bytes(name));
  return QString::fromStdString(file_->Page(name));
}

void HelpPage::doSetSource(const QUrl& url, QTextDocument::ResourceType type) {
  const bool known = file_ != nullptr && file_->Has(PathOf(url).toStdString());
  if (!known && !url.isEmpty()) return;
  loading_ = url;
  QTextBrowser::doSetSource(url, type);
  loading_.clear();
}

}  // namespace kolvane::help
