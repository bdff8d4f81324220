// Makes every picture of the windows: kolvane-screenshots FOLDER writes them as FOLDER/*.png. It needs an X
// server with a window manager.
#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>
#include <exception>
#include <stdexcept>

#include "pictures.h"

namespace {

// Its name is visible in the pictures, so it is the same on every computer.
class Bench {
 public:
  Bench() : folder_(QDir::tempPath() + QStringLiteral("/pruefstand")) {
    if (!QDir().mkdir(folder_)) throw std::runtime_error(folder_.toStdString() + " is there already");
    QDir::setCurrent(folder_);
    qputenv("HOME", folder_.toUtf8());
  }
  ~Bench() { QDir(folder_).removeRecursively(); }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  std::string folder() const { return folder_.toStdString(); }

 private:
  QString folder_;
};

void MakePictures(const QString& target) {
  const Bench bench;
  kolvane::screenshots::Stage stage(bench.folder());
  for (const auto& pictures :
       {kolvane::screenshots::WindowPictures(), kolvane::screenshots::DialogPictures()}) {
    for (const auto& picture : pictures) picture(stage, target);
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "xcb");
  qputenv("CUPS_SERVER", "/nonexistent");
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  QApplication::setCursorFlashTime(0);
  QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 9));
  QTranslator german;
  if (german.load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&german);
  if (argc != 2) {
    std::fputs("usage: kolvane-screenshots FOLDER\n", stderr);
    return 2;
  }
  try {
    MakePictures(QDir(QString::fromLocal8Bit(argv[1])).absolutePath());
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kolvane-screenshots: %s\n", error.what());
    return 1;
  }
}
