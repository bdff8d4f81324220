#pragma once

#include <QByteArray>
#include <QFileDialog>
#include <QObject>
#include <QPagedPaintDevice>
#include <QPrinter>
#include <QSizeF>
#include <memory>

#include "base/prompt.h"
#include "values/row.h"
#include "values/ui/plot_painter.h"
#include "values/ui/values_plot.h"

namespace kolvane::values {

enum class PictureForm { kSvg, kPng, kPdf };

/// The bytes of a picture file, `size` in 1/96 inch; empty if memory runs out.
QByteArray PictureFile(const PlotScene& scene, const QFont& font, QSizeF size, PictureForm form);

/// The picture in pixels, two per unit of `size` in each direction.
QImage PictureImage(const PlotScene& scene, const QFont& font, QSizeF size);

/// Paints the picture on a page, at the page's width, below a line with the title and the time. Returns false
/// if the device fails.
bool PrintPicture(QPagedPaintDevice& device, const PlotScene& scene, const QFont& font, QSizeF size);

/// The formats in which values are saved, in the order of the name filters.
enum class SaveForm { kCommaCsv, kSemicolonCsv, kSvg, kPng, kPdf };

/// Asks for the file to save to. The format is that of the name's suffix, otherwise that of the selected
/// filter; a name without a suffix gets the filter's.
class SaveDialog final : public QFileDialog {
  Q_OBJECT

 public:
  /// Offers all formats, with `chosen` selected; OfferOnly limits them to one.
  SaveDialog(QWidget* parent, SaveForm chosen);

  void OfferOnly(SaveForm form);
  SaveForm Form() const;
  QString FileName() const { return selectedFiles().value(0); }

 protected:
  void accept() override;
};

/// Exports values and their picture: to files, to a printer, to the clipboard. Its dialogs do not block a
/// command list that runs beside the window. Failures are shown.
class ValuesOutput final : public QObject {
  Q_OBJECT

 public:
  /// All arguments must outlive this object.
  ValuesOutput(const Store& store, base::Prompt& prompt, const ValuesPlot& plot, QWidget* window);

  /// Asks where to save the first `rows` rows or the picture.
  void Save(std::size_t rows);
  /// Asks for the printer or, if there is none, for the name of a PDF file.
  void Print();
  QImage Picture() const;

 private:
  void SaveAs(const QString& name, SaveForm form, std::size_t rows);
  void SaveCsv(const std::string& name, CsvForm form, std::size_t rows);
  void SavePicture(const std::string& name, SaveForm form);
  void PrintToFile();
  void PrintOnPrinter();
  void ReportError(const std::string& name, int error);

  const Store& store_;
  base::Prompt& prompt_;
  const ValuesPlot& plot_;
  QWidget* window_;
  SaveForm form_ = SaveForm::kCommaCsv;
  std::unique_ptr<QPrinter> printer_;
};

}  // namespace kolvane::values
