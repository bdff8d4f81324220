#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/texts.h"
#include "values/plot_view.h"

/// The texts of the values window.
namespace kolvane::values::texts {

using base::texts::kNoMemory;
using base::texts::kNotPrinted;
using base::texts::kProgram;
using base::texts::NotWritten;

inline constexpr std::string_view kNoCommand = "(ohne Befehl)";
inline constexpr std::string_view kTitle = "Messwerte";
inline constexpr std::string_view kPausedTitle = "Messwerte (angehalten)";
inline constexpr std::string_view kTable = "Messwerte";
inline constexpr std::string_view kTime = "Zeit";
inline constexpr std::string_view kCommand = "Befehl";
inline constexpr std::string_view kCurves = "Kurven";
inline constexpr std::array<std::string_view, 7> kCurveColumns = {
    "Kurve", "Wert", "Anzahl", "Minimum", "Maximum", "Mittelwert", "Standardabw."};
inline constexpr std::string_view kRename = "&Umbenennen";
inline constexpr std::string_view kColor = "&Farbe...";
inline constexpr std::string_view kCurveColor = "Farbe der Kurve";
inline constexpr std::string_view kShowOnly = "&Nur diese zeigen";
inline constexpr std::string_view kShowSelected = "&Zeigen";
inline constexpr std::string_view kHideSelected = "&Ausblenden";
inline constexpr std::string_view kPlot = "Diagramm der Messwerte";
inline constexpr std::string_view kSaveTitle = "Messwerte speichern";
inline constexpr std::string_view kCommaCsv = "CSV, Komma und Dezimalpunkt (*.csv)";
inline constexpr std::string_view kSemicolonCsv = "CSV, Semikolon und Dezimalkomma (*.csv)";
inline constexpr std::string_view kSvg = "SVG-Bild (*.svg)";
inline constexpr std::string_view kPng = "PNG-Bild (*.png)";
inline constexpr std::string_view kPdf = "PDF-Datei (*.pdf)";
inline constexpr std::string_view kSaving = "Messwerte werden gespeichert …";
inline constexpr std::string_view kPrintTitle = "Als PDF-Datei drucken";
inline constexpr std::string_view kTooManyRows =
    "So viele Zeilen passen nicht in die Zwischenablage. Bitte wählen Sie weniger aus, oder speichern Sie "
    "eine CSV-Datei.";
inline constexpr std::string_view kPause = "&Pause";
inline constexpr std::string_view kPauseTip = "Anzeige anhalten; Messwerte werden weiter gesammelt";
inline constexpr std::string_view kClear = "&Löschen";
inline constexpr std::string_view kClearTip = "Alle Messwerte löschen";
inline constexpr std::string_view kSave = "&Speichern...";
inline constexpr std::string_view kSaveTip = "Werte als CSV oder Diagramm als Bild speichern";
inline constexpr std::string_view kCopy = "&Kopieren";
inline constexpr std::string_view kCopyTip = "Ausgewählte Zeilen, sonst alle, und das Diagramm kopieren";
inline constexpr std::string_view kCopyPicture = "&Bild kopieren";
inline constexpr std::string_view kPrint = "&Drucken...";
inline constexpr std::string_view kPrintTip = "Diagramm drucken";
inline constexpr std::string_view kClose = "S&chließen";
inline constexpr std::string_view kShowAll = "&Alles zeigen";
inline constexpr std::string_view kShowAllTip = "Alle Messwerte in ganzer Höhe zeigen";
inline constexpr std::string_view kFollow = "&Ende folgen";
inline constexpr std::string_view kFollowTip = "Ausschnitt am Ende halten, während Messwerte kommen";
inline constexpr std::string_view kAutoScale = "Automatisch s&kalieren";
inline constexpr std::string_view kAutoScaleTip = "Höhe den sichtbaren Messwerten anpassen";
inline constexpr std::string_view kPan = "&Verschieben";
inline constexpr std::string_view kPanTip = "Ziehen mit der Maus verschiebt den Ausschnitt";
inline constexpr std::string_view kZoom = "Ver&größern";
inline constexpr std::string_view kZoomTip =
    "Ziehen mit der Maus vergrößert das aufgezogene Rechteck; auch mit Strg";
inline constexpr std::string_view kSelect = "Aus&wählen";
inline constexpr std::string_view kSelectTip = "Ziehen mit der Maus wählt Zeilen aus; auch mit Umschalt";
inline constexpr std::string_view kAxis = "Waagerechte Achse";
inline constexpr std::array<std::string_view, 2> kAxes = {"Über der Zeit", "Über der Zeile"};
inline constexpr std::string_view kNoRows = "Statistik: keine Messwerte";
inline constexpr std::string_view kNoValuesYet =
    "Noch keine Messwerte. Jede Antwort, die nur aus Zahlen besteht, erscheint hier.";
inline constexpr std::string_view kRowAxis = "Zeile";

inline std::string Field(int number) { return "Feld " + std::to_string(number); }
inline std::string RowNumber(std::size_t row) { return "Zeile " + std::to_string(row); }
inline std::string MoreNames(int count) { return "und " + std::to_string(count) + " weitere"; }

/// "10.000.000"
inline std::string Grouped(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; text.insert(at, 1, '.')) at -= 3;
  return text;
}
inline std::string Rows(std::size_t count) { return Grouped(count) + (count == 1 ? " Zeile" : " Zeilen"); }
inline std::string RowsAndValues(std::size_t rows, std::size_t values) {
  return Rows(rows) + ", " + Grouped(values) + (values == 1 ? " Messwert" : " Messwerte");
}
inline std::string PausedAt(std::size_t rows, std::size_t more) {
  return "Angehalten bei " + Rows(rows) + ", " + Grouped(more) + " weitere";
}
inline std::string SelectedRows(std::size_t count) {
  return "Statistik: ausgewählte Zeilen (" + Grouped(count) + ')';
}
/// Counted from 1, `last` included.
inline std::string VisibleRows(std::size_t first, std::size_t last) {
  return "Statistik: sichtbare Zeilen " + Grouped(first) + " bis " + Grouped(last);
}

inline std::string TimeAxis(TimeForm form) {
  constexpr std::string_view units[] = {"s", "min:s", "h:min:s"};
  return "Zeit seit Beginn (" + std::string(units[static_cast<std::size_t>(form)]) + ")";
}

inline std::string ReadingHead(std::string_view time, std::size_t row) {
  return std::string(time) + ", " + RowNumber(row);
}

}  // namespace kolvane::values::texts
