#include "script/texts.h"

#include "base/system.h"

namespace kolvane::script::texts {

std::string ListStatus(std::string_view file_name) {
  return "Befehlsliste: " + std::string(file_name.empty() ? "Unbenannt" : file_name);
}

std::string LinesLeftOut(std::size_t count) {
  if (count == 0) return {};
  return count == 1 ? "1 Zeile nicht geladen" : std::to_string(count) + " Zeilen nicht geladen";
}

std::string AbandonedList(std::string_view file_name, std::string_view when, std::size_t rows,
                          std::size_t more) {
  file_name.remove_prefix(file_name.rfind('/') + 1);
  // What a narrow window leaves of it is the start and the end.
  std::string text = file_name.empty() ? std::string("Nicht gespeicherte Befehlsliste")
                                       : "„" + std::string(file_name) + "“ nicht gespeichert";
  text += rows == 1 ? ": 1 Zeile" : ": " + std::to_string(rows) + " Zeilen";
  text += " vom " + std::string(when);
  if (more > 0) text += " (danach " + std::to_string(more) + " weitere)";
  return text;
}

std::string ListNotKept(int error) {
  return "Die geänderte Befehlsliste kann nicht für den nächsten Start aufbewahrt werden: " +
         base::SystemErrorText(error);
}

std::string CharactersNotInFile(const std::vector<int>& rows, std::string_view character) {
  std::string text = "Das Zeichen „" + std::string(character) + "“ in Zeile " + std::to_string(rows.front()) +
                     " kann nicht gespeichert werden. In der Datei steht dafür „?“.";
  if (rows.size() == 2) text += " Ebenso in einer weiteren Zeile.";
  if (rows.size() > 2) text += " Ebenso in " + std::to_string(rows.size() - 1) + " weiteren Zeilen.";
  return text;
}

std::string FileFailure(const FileResult& result) {
  const std::string file = "Die Befehlsliste „" + result.name + "“ kann nicht ";
  switch (result.problem) {
    case FileResult::Problem::kNone:
      return {};
    case FileResult::Problem::kCannotRead:
      return file + "gelesen werden: " + base::SystemErrorText(result.error);
    case FileResult::Problem::kLineTooLong:
      return file + "gelesen werden: Die Datei enthält zu lange Zeilen";
    case FileResult::Problem::kListRunning:
      return file + "geladen werden, solange eine Befehlsliste läuft";
    case FileResult::Problem::kCannotWrite:
      return file + "geschrieben werden: " + base::SystemErrorText(result.error);
  }
  return {};
}

}  // namespace kolvane::script::texts
