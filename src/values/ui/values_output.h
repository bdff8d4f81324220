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

/// The bytes of a picture file, `size` in 1/96 inch; empty where memory is lacking.
QByteArray PictureFile(const PlotScene& scene, const QFont& font, QSizeF size, PictureForm form);

/// The picture in pixels, two each way for a unit of `size`.
QImage PictureImage(const PlotScene& scene, const QFont& font, QSizeF size);

/// Paints the picture on a page, as wide as that is, below a line with the title and the time. False where
/// the device does not take it.
bool PrintPicture(QPagedPaintDevice& device, const PlotScene& scene, const QFont& font, QSizeF size);

/// The forms in which values are saved, in the order of the name filters.
enum class SaveForm { kCommaCsv, kSemicolonCsv, kSvg, kPng, kPdf };

/// Asks for the file to save to. The form is what the name's suffix says, otherwise the name filter chosen; a
/// name without a suffix gets the filter's.
class SaveDialog final : public QFileDialog {
  Q_OBJECT

 public:
  /// Offers all forms, `chosen` first; the print-out's dialog has only kPdf.
  SaveDialog(QWidget* parent, const QString& folder, SaveForm chosen);

  void OfferOnly(SaveForm form);
  SaveForm Form() const;
  QString FileName() const { return selectedFiles().value(0); }

 protected:
  void accept() override;
};

/// Takes values and their picture out of the window: to files, to a printer, to the clipboard. Its dialogs do
/// not hold up a command list that runs beside the window. Failures are shown.
class ValuesOutput final : public QObject {
  Q_OBJECT

 public:
  /// All of it outlives this object.
  ValuesOutput(const Store& store, base::Prompt& prompt, const ValuesPlot& plot, QWidget* window);

  /// Asks where to save the first `rows` rows, or the picture.
  void Save(std::size_t rows);
  /// Asks for the printer, where there is none for the name of a PDF file.
  void Print();
  QImage Picture() const;

 private:
  void SaveAs(const QString& name, SaveForm form, std::size_t rows);
  void SaveCsv(const std::string& name, CsvForm form, std::size_t rows);
  void SavePicture(const std::string& name, SaveForm form);
  void PrintToFile();
  void PrintOnPrinter();
  void Tell(const std::string& name, int error);

  const Store& store_;
  base::Prompt& prompt_;
  const ValuesPlot& plot_;
  QWidget* window_;
  QString folder_;
  SaveForm form_ = SaveForm::kCommaCsv;
  std::unique_ptr<QPrinter> printer_;
};

}  // namespace kolvane::values
