#include "values/ui/values_output.h"

#include <QBuffer>
#include <QDateTime>
#include <QFileInfo>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QSvgGenerator>
#include <algorithm>
#include <array>
#include <cerrno>

#include "base/files.h"
#include "base/ui/file_dialog.h"
#include "base/ui/qt_text.h"
#include "values/texts.h"
#include "values/ui/csv_job.h"
#include "values/ui/plot_painter.h"

namespace kolvane::values {
namespace {

constexpr double kUnitsPerInch = 96;
constexpr double kPointsPerInch = 72;
constexpr double kPixelsPerUnit = 2;
constexpr double kHeadUnits = 30;

// Fonts are measured in units, whatever the device's resolution.
QFontMetricsF MetricsOf(const PlotStyle& style) {
  static const QImage unit(1, 1, QImage::Format_RGB32);
  return {style.font, &unit};
}

void PaintLines(QPainter& painter, const QRectF& bounds, const PlotScene& scene, const QFont& font) {
  const PlotStyle style = PlotStyle::OnPaper(font);
  PlotPainter(bounds, scene, style, MetricsOf(style)).Paint(painter);
}

void WriteSvg(QIODevice& out, const PlotScene& scene, const QFont& font, QSizeF size) {
  QSvgGenerator generator;
  generator.setOutputDevice(&out);
  generator.setTitle(base::ToQt(texts::kTitle));
  generator.setResolution(static_cast<int>(kUnitsPerInch));
  generator.setSize(size.toSize());
  generator.setViewBox(QRectF(QPointF(), size));
  QPainter painter(&generator);
  PaintLines(painter, QRectF(QPointF(), size), scene, font);
}

void WritePdf(QIODevice& out, const PlotScene& scene, const QFont& font, QSizeF size) {
  QPdfWriter pages(&out);
  pages.setTitle(base::ToQt(texts::kTitle));
  pages.setCreator(base::ToQt(texts::kProgram));
  pages.setPageSize(QPageSize(size * kPointsPerInch / kUnitsPerInch, QPageSize::Point));
  pages.setPageMargins(QMarginsF());
  QPainter painter(&pages);
  const double scale = pages.logicalDpiX() / kUnitsPerInch;
  painter.scale(scale, scale);
  PaintLines(painter, QRectF(QPointF(), size), scene, font);
}

}  // namespace

QImage PictureImage(const PlotScene& scene, const QFont& font, QSizeF size) {
  QImage image((size * kPixelsPerUnit).toSize(), QImage::Format_RGB32);
  if (image.isNull()) return image;
  image.setDevicePixelRatio(kPixelsPerUnit);
  const PlotStyle style = PlotStyle::OnPaper(font);
  PlotPainter(QRectF(QPointF(), size), scene, style, MetricsOf(style)).Paint(image);
  return image;
}

QByteArray PictureFile(const PlotScene& scene, const QFont& font, QSizeF size, PictureForm form) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  switch (form) {
    case PictureForm::kSvg:
      WriteSvg(buffer, scene, font, size);
      break;
    case PictureForm::kPng:
      PictureImage(scene, font, size).save(&buffer, "PNG");
      break;
    case PictureForm::kPdf:
      WritePdf(buffer, scene, font, size);
      break;
  }
  return bytes;
}

bool PrintPicture(QPagedPaintDevice& device, const PlotScene& scene, const QFont& font, QSizeF size) {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  const double scale = device.logicalDpiX() / kUnitsPerInch;
  painter.scale(scale, scale);
  const QSizeF page = QSizeF(device.width(), device.height()) / scale;
  const PlotStyle style = PlotStyle::OnPaper(font);
  painter.setFont(style.font);
  const QRectF head(0, 0, page.width(), kHeadUnits);
  painter.drawText(head, Qt::AlignLeft, base::ToQt(texts::kTitle));
  painter.drawText(head, Qt::AlignRight,
                   QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yyyy HH:mm")));
  const double height = std::min(page.height() - kHeadUnits, page.width() * size.height() / size.width());
  PaintLines(painter, QRectF(0, kHeadUnits, page.width(), height), scene, font);
  return painter.end();
}

namespace {

constexpr auto kFolderKind = "Values";

struct FormRow {
  SaveForm form;
  std::string_view filter;
  const char* suffix;
};

constexpr std::array kRows = {FormRow{SaveForm::kCommaCsv, texts::kCommaCsv, "csv"},
                              FormRow{SaveForm::kSemicolonCsv, texts::kSemicolonCsv, "csv"},
                              FormRow{SaveForm::kSvg, texts::kSvg, "svg"},
                              FormRow{SaveForm::kPng, texts::kPng, "png"},
                              FormRow{SaveForm::kPdf, texts::kPdf, "pdf"}};

const FormRow& RowOf(SaveForm form) { return *std::ranges::find(kRows, form, &FormRow::form); }

const FormRow& RowOfFilter(const QString& filter) {
  const auto* row =
      std::ranges::find_if(kRows, [&](const FormRow& each) { return base::ToQt(each.filter) == filter; });
  return row == kRows.end() ? kRows.front() : *row;
}

}  // namespace

SaveDialog::SaveDialog(QWidget* parent, SaveForm chosen)
    : QFileDialog(parent, base::ToQt(texts::kSaveTitle)) {
  setObjectName(QStringLiteral("SaveDialog"));
  setAcceptMode(AcceptSave);
  setFileMode(AnyFile);
  QStringList filters;
  for (const FormRow& row : kRows) filters << base::ToQt(row.filter);
  setNameFilters(filters);
  selectNameFilter(base::ToQt(RowOf(chosen).filter));
  setDefaultSuffix(QLatin1String(RowOf(chosen).suffix));
  base::PrepareFileDialog(*this, kFolderKind);
  connect(this, &QFileDialog::filterSelected, this,
          [this](const QString& filter) { setDefaultSuffix(QLatin1String(RowOfFilter(filter).suffix)); });
}

void SaveDialog::OfferOnly(SaveForm form) {
  setNameFilters({base::ToQt(RowOf(form).filter)});
  setDefaultSuffix(QLatin1String(RowOf(form).suffix));
}

SaveForm SaveDialog::Form() const {
  const FormRow& chosen = RowOfFilter(selectedNameFilter());
  const QString suffix = QFileInfo(FileName()).suffix().toLower();
  if (suffix == QLatin1String(chosen.suffix)) return chosen.form;
  const auto* named =
      std::ranges::find_if(kRows, [&](const FormRow& row) { return suffix == QLatin1String(row.suffix); });
  return named == kRows.end() ? chosen.form : named->form;
}

// A filter may also have been selected without a signal from the dialog.
void SaveDialog::accept() {
  setDefaultSuffix(QLatin1String(RowOfFilter(selectedNameFilter()).suffix));
  QFileDialog::accept();
}

namespace {

constexpr QMarginsF kMargins(15, 15, 15, 15);

PictureForm PictureFormOf(SaveForm form) {
  if (form == SaveForm::kSvg) return PictureForm::kSvg;
  return form == SaveForm::kPng ? PictureForm::kPng : PictureForm::kPdf;
}

}  // namespace

ValuesOutput::ValuesOutput(const Store& store, base::Prompt& prompt, const ValuesPlot& plot, QWidget* window)
    : QObject(window), store_(store), prompt_(prompt), plot_(plot), window_(window) {}

void ValuesOutput::Save(std::size_t rows) {
  auto* dialog = new SaveDialog(window_, form_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QFileDialog::accepted, this, [this, dialog, rows] {
    form_ = dialog->Form();
    SaveAs(dialog->FileName(), form_, rows);
  });
  dialog->open();
}

void ValuesOutput::SaveAs(const QString& name, SaveForm form, std::size_t rows) {
  switch (form) {
    case SaveForm::kCommaCsv:
      return SaveCsv(base::FromQt(name), kCommaForm, rows);
    case SaveForm::kSemicolonCsv:
      return SaveCsv(base::FromQt(name), kSemicolonForm, rows);
    default:
      return SavePicture(base::FromQt(name), form);
  }
}

void ValuesOutput::SaveCsv(const std::string& name, CsvForm form, std::size_t rows) {
  auto* job = NewCsvJob(store_, std::min(rows, store_.rows()), form, name, window_);
  connect(job, &base::SlicedJob::Ended, this, [this, name](int error) {
    if (error != 0 && error != ECANCELED) ReportError(name, error);
  });
  job->Start();
}

void ValuesOutput::SavePicture(const std::string& name, SaveForm form) {
  const QByteArray bytes = PictureFile(plot_.Scene(false), plot_.font(), plot_.size(), PictureFormOf(form));
  const std::string_view whole(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  const int error = whole.empty() ? ENOMEM : base::ReplaceFile(name, whole);
  if (error != 0) ReportError(name, error);
}

void ValuesOutput::ReportError(const std::string& name, int error) {
  prompt_.ShowError(texts::NotWritten(name, error));
}

QImage ValuesOutput::Picture() const { return PictureImage(plot_.Scene(false), plot_.font(), plot_.size()); }

void ValuesOutput::Print() {
  QPrinterInfo::availablePrinterNames().isEmpty() ? PrintToFile() : PrintOnPrinter();
}

void ValuesOutput::PrintToFile() {
  auto* dialog = new SaveDialog(window_, SaveForm::kPdf);
  dialog->OfferOnly(SaveForm::kPdf);
  dialog->setWindowTitle(base::ToQt(texts::kPrintTitle));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QFileDialog::accepted, this,
          [this, dialog] { SavePicture(base::FromQt(dialog->FileName()), SaveForm::kPdf); });
  dialog->open();
}

void ValuesOutput::PrintOnPrinter() {
  printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer_->setDocName(base::ToQt(texts::kTitle));
  printer_->setPageOrientation(QPageLayout::Landscape);
  printer_->setPageMargins(kMargins, QPageLayout::Millimeter);
  auto* dialog = new QPrintDialog(printer_.get(), window_);
  dialog->setObjectName(QStringLiteral("PrintDialog"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, qOverload<>(&QDialog::accepted), this, [this] {
    if (!PrintPicture(*printer_, plot_.Scene(false), plot_.font(), plot_.size()))
      prompt_.ShowError(texts::kNotPrinted);
  });
  dialog->open();
}

}  // namespace kolvane::values
