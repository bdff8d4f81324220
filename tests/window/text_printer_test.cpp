#include "window/printing.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPageRanges>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>

#include "base/temp_folder.h"
#include "window/print_page.h"

namespace kolvane::window {
namespace {

class FakeLines final : public PrintSource {
 public:
  std::size_t LineCount() const override { return lines.size(); }
  PrintLine Line(std::size_t line) const override {
    ++asked;
    return lines.at(line);
  }
  std::vector<PrintLine> lines;
  mutable std::size_t asked = 0;
};

class TextPrinterTest : public testing::Test {
 protected:
  PrintResult Print(const QPageRanges& ranges = {}) {
    QBuffer buffer(&bytes_);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter pages(&buffer);
    pages.setPageSize(QPageSize(QPageSize::A4));
    pages.setPageRanges(ranges);
    return PrintText(pages, {"Kolvane Terminal", QFont("Liberation Mono", 10), color_}, lines_,
                     [this](std::size_t done, std::size_t whole) {
                       steps_.emplace_back(done, whole);
                       return steps_.size() < steps_wanted_;
                     });
  }
  qsizetype Pages() const { return bytes_.count("/Type /Page\n"); }
  void AddLines(int count) {
    for (int i = 0; i < count; ++i) lines_.lines.push_back({QStringLiteral("Zeile %1").arg(i), {}});
  }

  FakeLines lines_;
  QColor color_ = Qt::black;
  QByteArray bytes_;
  std::vector<std::pair<std::size_t, std::size_t>> steps_;
  std::size_t steps_wanted_ = 1000000;
};

TEST_F(TextPrinterTest, PrintsOnePage) {
  AddLines(10);
  EXPECT_EQ(Print(), PrintResult::kDone);
  EXPECT_TRUE(bytes_.startsWith("%PDF"));
  EXPECT_EQ(Pages(), 1);
  EXPECT_EQ(steps_.size(), 10u);
  EXPECT_EQ(steps_.back(), std::pair(std::size_t{9}, std::size_t{10}));
}

TEST_F(TextPrinterTest, NothingIsOneEmptyPage) {
  EXPECT_EQ(Print(), PrintResult::kDone);
  EXPECT_EQ(Pages(), 1);
}

TEST_F(TextPrinterTest, ContinuesOnFurtherPages) {
  AddLines(200);
  EXPECT_EQ(Print(), PrintResult::kDone);
  EXPECT_GE(Pages(), 3);
  EXPECT_LE(Pages(), 5);
}

TEST_F(TextPrinterTest, RowsAreBetweenHeadAndFoot) {
  QBuffer buffer(&bytes_);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  PrintPages pages(writer, "Kolvane Terminal");
  QFont small;
  small.setPointSize(8);
  const qreal head = QFontMetricsF(small, &writer).lineSpacing();
  const qreal first = pages.PlaceRow(100);
  EXPECT_GT(first, head);
  qreal last = first;
  for (qreal row = pages.PlaceRow(100); row > last; row = pages.PlaceRow(100)) {
    EXPECT_EQ(row, last + 100);
    last = row;
  }
  EXPECT_LT(last + 100, writer.height() - head);
  EXPECT_GT(last + 200, writer.height() - 2 * head);
}

TEST_F(TextPrinterTest, WrapsLongLines) {
  lines_.lines.push_back({QString(200 * 90, QLatin1Char('x')), {}});
  EXPECT_EQ(Print(), PrintResult::kDone);
  EXPECT_GE(Pages(), 3);
}

TEST_F(TextPrinterTest, ALineLongerThanAPieceMayEndWithinAPair) {
  lines_.lines.push_back(
      {QString(8191, QLatin1Char('x')) + QString::fromUtf8("\xF0\x9F\x98\x80 end"), {{8000, 1000, Qt::red}}});
  EXPECT_EQ(Print(), PrintResult::kDone);
}

TEST_F(TextPrinterTest, PrintsOnlyTheRequestedPages) {
  AddLines(1000);
  QPageRanges ranges;
  ranges.addRange(2, 3);
  EXPECT_EQ(Print(ranges), PrintResult::kDone);
  EXPECT_EQ(Pages(), 2);
  EXPECT_LT(lines_.asked, 1000u);
}

TEST_F(TextPrinterTest, CanBeCancelled) {
  AddLines(100);
  steps_wanted_ = 5;
  EXPECT_EQ(Print(), PrintResult::kCancelled);
  EXPECT_EQ(lines_.asked, 4u);
}

TEST_F(TextPrinterTest, LinesRemovedMeanwhileAreLeftOut) {
  AddLines(10);
  QBuffer buffer(&bytes_);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter pages(&buffer);
  const auto remove_at_fourth = [this](std::size_t done, std::size_t) {
    if (done == 3) lines_.lines.resize(3);
    return true;
  };
  EXPECT_EQ(PrintText(pages, {"", QFont(), Qt::black}, lines_, remove_at_fourth), PrintResult::kDone);
  EXPECT_EQ(lines_.asked, 3u);
}

TEST_F(TextPrinterTest, ADeviceThatDoesNotStartIsAFailure) {
  QBuffer buffer(&bytes_);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter pages(&buffer);
  QPainter other(&pages);
  EXPECT_EQ(PrintText(pages, {"", QFont(), Qt::black}, lines_, [](auto, auto) { return true; }),
            PrintResult::kFailed);
}

class OnePageWriter final : public QPdfWriter {
 public:
  using QPdfWriter::QPdfWriter;
  bool newPage() override { return false; }
};

TEST_F(TextPrinterTest, ADeviceThatTakesNoFurtherPageIsAFailure) {
  QBuffer buffer(&bytes_);
  buffer.open(QIODevice::WriteOnly);
  OnePageWriter pages(&buffer);
  AddLines(1000);
  EXPECT_EQ(PrintText(pages, {"", QFont(), Qt::black}, lines_, [](auto, auto) { return true; }),
            PrintResult::kFailed);
  EXPECT_LT(lines_.asked, 1000u) << "the rest is not printed";
}

TEST_F(TextPrinterTest, APrinterThatDoesNotStartIsAFailureOfAFormattedText) {
  const base::TempFolder folder;
  QTextDocument document;
  document.setHtml("<b>text</b>");
  const auto print = [&](const std::string& name) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(folder.Path(name)));
    return PrintFormatted(printer, document);
  };
  EXPECT_TRUE(print("a.pdf"));
  EXPECT_FALSE(print("missing/a.pdf"));
}

}  // namespace
}  // namespace kolvane::window
