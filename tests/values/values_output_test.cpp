#include "values/ui/values_output.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMainWindow>
#include <QPainter>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTest>
#include <cerrno>
#include <filesystem>
#include <new>

#include "base/fake_prompt.h"
#include "base/small_files.h"
#include "base/temp_folder.h"
#include "gui/box_answers.h"
#include "gui/fake_folder_memory.h"
#include "gui/pdf_content.h"
#include "gui/pixels.h"
#include "values/csv_reader.h"
#include "values/filled_store.h"
#include "values/ui/csv_job.h"
#include "values/ui/plot_painter.h"

namespace kolvane::values {
namespace {

class ValuesOutputTest : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i < 100; ++i) Add(store_, "MSV? 1,2", {0.5 * i, -1.0 * i});
    curves_.Refresh();
    plot_.resize(600, 400);
    plot_.ShowRows(100);
    window_.show();
  }

  SaveDialog* Dialog() { return window_.findChild<SaveDialog*>("SaveDialog"); }
  void Answer(const QString& filter, const std::string& name) {
    SaveDialog* dialog = Dialog();
    ASSERT_NE(dialog, nullptr);
    dialog->selectNameFilter(filter);
    dialog->selectFile(QString::fromStdString(name));
    QMetaObject::invokeMethod(dialog, "accept");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  // Saves 100 rows under a name in the folder and returns the file's contents.
  std::string Saved(const QString& filter, const std::string& name, const std::string& written_name = {}) {
    output_.Save(100);
    Answer(filter, folder_.Path(name));
    return base::ReadBytes(folder_.Path(written_name.empty() ? name : written_name));
  }

  base::TempFolder folder_;
  Store store_;
  CurveList curves_{store_};
  base::FakePrompt prompt_;
  QMainWindow window_;
  ValuesPlot plot_{store_, curves_, ","};
  ValuesOutput output_{store_, prompt_, plot_, &window_};
};

TEST_F(ValuesOutputTest, OffersEachForm) {
  output_.Save(100);
  ASSERT_NE(Dialog(), nullptr);
  EXPECT_TRUE(Dialog()->isVisible());
  EXPECT_EQ(Dialog()->windowTitle(), "Messwerte speichern");
  EXPECT_EQ(Dialog()->nameFilters(),
            (QStringList{"CSV, Komma und Dezimalpunkt (*.csv)", "CSV, Semikolon und Dezimalkomma (*.csv)",
                         "SVG-Bild (*.svg)", "PNG-Bild (*.png)", "PDF-Datei (*.pdf)"}));
}

TEST_F(ValuesOutputTest, SavesBothFormsOfCsv) {
  const auto comma = ReadCsv(Saved("CSV, Komma und Dezimalpunkt (*.csv)", "a.csv"), ',');
  ASSERT_TRUE(comma);
  EXPECT_EQ(comma->size(), 101u);
  EXPECT_EQ((*comma)[0], (std::vector<std::string>{"time", "command", "field1", "field2"}));
  EXPECT_EQ((*comma)[4][1], "MSV? 1,2");
  EXPECT_EQ((*comma)[4][2], "1.5");
  const auto semicolon = ReadCsv(Saved("CSV, Semikolon und Dezimalkomma (*.csv)", "b.csv"), ';');
  ASSERT_TRUE(semicolon);
  EXPECT_EQ((*semicolon)[4][2], "1,5");
  EXPECT_EQ((*semicolon)[4][3], "-3");
}

TEST_F(ValuesOutputTest, SavesPictures) {
  const std::string vectors = Saved("SVG-Bild (*.svg)", "a.svg");
  QSvgRenderer svg(QByteArray::fromStdString(vectors));
  EXPECT_TRUE(svg.isValid());
  // A hundred values make 99 lines for each of the two curves.
  EXPECT_EQ(std::count(vectors.begin(), vectors.end(), 'L'), 2 * 99) << vectors.size();
  EXPECT_EQ(svg.viewBoxF().size(), QSizeF(plot_.size()));
  QImage png;
  ASSERT_TRUE(png.loadFromData(QByteArray::fromStdString(Saved("PNG-Bild (*.png)", "a.png")), "PNG"));
  EXPECT_EQ(png.size(), plot_.size() * 2);
  EXPECT_GT(gui::Pixels(png, png.rect(), CurveColor(0, false)), 500) << "in the colours for white paper";
  const std::string pdf = Saved("PDF-Datei (*.pdf)", "a.pdf");
  EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
  EXPECT_NE(pdf.find("/MediaBox [0 0 450.000000 300.000000]"), std::string::npos) << "3/4 point per unit";
}

TEST_F(ValuesOutputTest, APictureOfManyValuesShowsTheirRange) {
  for (int i = 0; i < 20000; ++i) Add(store_, "MSV? 1,2", {i % 2 == 0 ? 100.0 : -100.0, 0.0});
  plot_.ShowRows(store_.rows());
  const std::string vectors = Saved("SVG-Bild (*.svg)", "a.svg");
  QSvgRenderer svg(QByteArray::fromStdString(vectors));
  QImage picture(plot_.size(), QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  svg.render(&painter);
  painter.end();
  EXPECT_GT(gui::Pixels(picture, picture.rect(), CurveColor(0, false)), 600 * 400 / 2);
}

TEST_F(ValuesOutputTest, APdfFileNamesProgramAndTitle) {
  const std::string pdf = Saved("PDF-Datei (*.pdf)", "a.pdf");
  const auto entry = [](const char* key, const std::string& text) {
    std::string bytes = std::string("/") + key + " (\xFE\xFF";
    for (const char c : text) bytes.append({'\0', c});
    return bytes + ')';
  };
  EXPECT_NE(pdf.find(entry("Creator", "Kolvane Terminal")), std::string::npos);
  EXPECT_NE(pdf.find(entry("Title", "Messwerte")), std::string::npos);
}

TEST_F(ValuesOutputTest, ASingleValueIsADot) {
  Add(store_, "ONE?", {1});
  curves_.Refresh();
  plot_.ShowRows(101);
  const std::string vectors = Saved("SVG-Bild (*.svg)", "a.svg");
  EXPECT_EQ(std::count(vectors.begin(), vectors.end(), 'L'), 2 * 99 + 1) << "a line without length";
}

TEST_F(ValuesOutputTest, FontsOnPaperDoNotFollowTheScreen) {
  QFont small;
  small.setPixelSize(7);
  QFont large;
  large.setPixelSize(40);
  const int pixels = PlotStyle::OnPaper(small).font.pixelSize();
  EXPECT_EQ(PlotStyle::OnPaper(large).font.pixelSize(), pixels);
  EXPECT_GT(pixels, 7);
}

TEST_F(ValuesOutputTest, AddsTheSuffixOfTheFilter) {
  EXPECT_EQ(Saved("PDF-Datei (*.pdf)", "plot", "plot.pdf").substr(0, 4), "%PDF");
  EXPECT_NE(Saved("CSV, Semikolon und Dezimalkomma (*.csv)", "rows", "rows.csv").find("time;command"),
            std::string::npos);
}

TEST_F(ValuesOutputTest, UsesTheFormOfTheSuffix) {
  EXPECT_EQ(Saved("CSV, Komma und Dezimalpunkt (*.csv)", "plot.PDF").substr(0, 4), "%PDF");
  EXPECT_EQ(Saved("PDF-Datei (*.pdf)", "rows.csv").substr(0, 5), "time,");
  EXPECT_EQ(Saved("CSV, Semikolon und Dezimalkomma (*.csv)", "rows.dat").substr(0, 5), "time;");
}

TEST_F(ValuesOutputTest, RemembersFormAndFolder) {
  Saved("PNG-Bild (*.png)", "a.png");
  output_.Save(100);
  EXPECT_EQ(Dialog()->selectedNameFilter(), "PNG-Bild (*.png)");
  EXPECT_EQ(Dialog()->directory().canonicalPath(),
            QDir(QString::fromStdString(folder_.Path(""))).canonicalPath());
}

TEST_F(ValuesOutputTest, StartsInTheFolderOfTheWindowsMemory) {
  gui::FakeFolderMemory memory(&window_);
  std::filesystem::create_directory(folder_.Path("a"));
  std::filesystem::create_directory(folder_.Path("b"));
  memory.folders["Values"] = folder_.Path("a");
  output_.Save(100);
  EXPECT_EQ(Dialog()->directory().path().toStdString(), folder_.Path("a"));
  Answer("CSV, Komma und Dezimalpunkt (*.csv)", folder_.Path("b/x.csv"));
  EXPECT_EQ(memory.folders["Values"], folder_.Path("b"));
}

TEST_F(ValuesOutputTest, ReportsWhatCannotBeWritten) {
  auto* job = NewCsvJob(store_, 100, kCommaForm, folder_.Path("missing/a.csv"), &window_);
  int ended = -1;
  QObject::connect(job, &base::SlicedJob::Ended, [&ended](int error) { ended = error; });
  job->Start();
  EXPECT_EQ(ended, ENOENT);
  gui::BoxAnswers overwrite;
  overwrite.Start();
  for (const auto& [filter, file] :
       {std::pair{"CSV, Komma und Dezimalpunkt (*.csv)", "full.csv"}, {"SVG-Bild (*.svg)", "full.svg"}}) {
    std::filesystem::create_symlink("/dev/full", folder_.Path(file));
    output_.Save(100);
    Answer(filter, folder_.Path(file));
  }
  ASSERT_EQ(prompt_.errors.size(), 2u);
  EXPECT_NE(prompt_.errors[0].find("full.csv“ kann nicht geschrieben werden: "), std::string::npos);
  EXPECT_NE(prompt_.errors[1].find("full.svg“ kann nicht geschrieben werden: "), std::string::npos);
}

TEST_F(ValuesOutputTest, AFullDiskLeavesTheExistingFile) {
  while (store_.rows() < 100000) Add(store_, "A?", {1.0});
  base::WriteBytes(folder_.Path("a.csv"), "old");
  gui::BoxAnswers overwrite;
  overwrite.Start();
  const base::SmallFiles small(1 << 20);
  output_.Save(store_.rows());
  Answer("CSV, Komma und Dezimalpunkt (*.csv)", folder_.Path("a.csv"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !prompt_.errors.empty(); }));
  EXPECT_TRUE(prompt_.errors[0].ends_with("Die Datei würde zu groß")) << prompt_.errors[0];
  EXPECT_EQ(base::ReadBytes(folder_.Path("a.csv")), "old");
  EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.csv"});
}

TEST_F(ValuesOutputTest, WritesManyRowsInSlices) {
  while (store_.rows() < 200000) Add(store_, "A?", {1.0});
  auto* job = NewCsvJob(store_, 200000, kCommaForm, folder_.Path("many.csv"), &window_);
  int ended = -1;
  QObject::connect(job, &base::SlicedJob::Ended, [&ended](int error) { ended = error; });
  job->Start();
  EXPECT_EQ(ended, -1);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("many.csv")));
  // Rows added while saving are not written.
  Add(store_, "B?", {1, 2, 3});
  const auto* progress = window_.findChild<QProgressDialog*>("ProgressDialog");
  EXPECT_TRUE(QTest::qWaitFor([&] { return ended != -1 || progress->value() > 0; }));
  EXPECT_EQ(ended, -1) << "the progress is shown before the end";
  ASSERT_TRUE(QTest::qWaitFor([&ended] { return ended == 0; }));
  const auto rows = ReadCsv(base::ReadBytes(folder_.Path("many.csv")), ',');
  ASSERT_TRUE(rows);
  EXPECT_EQ(rows->size(), 200001u);
}

TEST_F(ValuesOutputTest, WorkInSlicesEndsIfMemoryRunsOut) {
  const auto piece = []() -> base::SlicedJob::Reached { throw std::bad_alloc(); };
  auto* job = new base::SlicedJob({"", ""}, piece, &window_);
  int ended = -1;
  QObject::connect(job, &base::SlicedJob::Ended, [&ended](int error) { ended = error; });
  job->Start();
  EXPECT_EQ(ended, ENOMEM);
}

TEST_F(ValuesOutputTest, LeavesNoFileIfCancelledOrTheStoreIsCleared) {
  while (store_.rows() < 200000) Add(store_, "A?", {1.0});
  const auto run = [this](const std::function<void()>& interrupt) {
    QPointer<base::SlicedJob> job =
        NewCsvJob(store_, store_.rows(), kCommaForm, folder_.Path("many.csv"), &window_);
    int ended = -1;
    QObject::connect(job, &base::SlicedJob::Ended, [&ended](int error) { ended = error; });
    job->Start();
    interrupt();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended >= 0 && job == nullptr; }));
    return ended;
  };
  EXPECT_EQ(run([this] { window_.findChild<QProgressDialog*>("ProgressDialog")->cancel(); }), ECANCELED);
  EXPECT_EQ(run([this] { store_.Clear(); }), ECANCELED);
  EXPECT_EQ(folder_.Names().size(), 0u);
}

TEST_F(ValuesOutputTest, PrintsToAPdfFileWithoutAPrinter) {
  qputenv("CUPS_SERVER", "/nonexistent");
  output_.Print();
  ASSERT_NE(Dialog(), nullptr);
  EXPECT_EQ(Dialog()->windowTitle(), "Als PDF-Datei drucken");
  EXPECT_EQ(Dialog()->nameFilters(), QStringList{"PDF-Datei (*.pdf)"});
  Answer("PDF-Datei (*.pdf)", folder_.Path("print.pdf"));
  EXPECT_EQ(base::ReadBytes(folder_.Path("print.pdf")).substr(0, 5), "%PDF-");
  EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(ValuesOutputTest, PrintsOnAPage) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFileName(QString::fromStdString(folder_.Path("page.pdf")));
  EXPECT_TRUE(PrintPicture(printer, plot_.Scene(false), plot_.font(), plot_.size()));
  // The picture's white background, in units of 1/`scale` point, is as wide as the page.
  const QRegularExpression background(
      "^([0-9.]+) 0 0 .* cm.*\n([0-9.]+) 0 0 [0-9.]+ 0 0 cm\n0 30 ([0-9.]+) ([0-9.]+) re\n",
      QRegularExpression::DotMatchesEverythingOption | QRegularExpression::MultilineOption);
  const auto match = background.match(gui::PdfContent(base::ReadBytes(folder_.Path("page.pdf"))));
  ASSERT_TRUE(match.hasMatch());
  const double scale = match.captured(1).toDouble() * match.captured(2).toDouble();
  const QSizeF page = printer.pageLayout().paintRectPoints().size();
  EXPECT_NEAR(match.captured(3).toDouble() * scale, page.width(), 2);
  EXPECT_NEAR(match.captured(4).toDouble() * scale, page.width() * plot_.height() / plot_.width(), 2);
}

// The curve is at its values, on white whatever the screen's colours.
TEST_F(ValuesOutputTest, PicturesShowTheCurves) {
  const QImage picture = PictureImage(plot_.Scene(false), plot_.font(), plot_.size());
  EXPECT_EQ(picture.pixelColor(1, picture.height() / 2), QColor(Qt::white));
  EXPECT_GT(gui::Pixels(picture, picture.rect(), CurveColor(0, false)), 500);
}

TEST_F(ValuesOutputTest, PicturesShowASingleValue) {
  store_.Clear();
  Add(store_, "MSV? 1", {7});
  curves_.Refresh();
  plot_.ShowRows(1);
  const QImage picture = PictureImage(plot_.Scene(false), plot_.font(), plot_.size());
  const QRect below_legend = picture.rect().adjusted(0, picture.height() / 4, 0, 0);
  EXPECT_GT(gui::Pixels(picture, below_legend, CurveColor(0, false)), 0);
}

}  // namespace
}  // namespace kolvane::values
