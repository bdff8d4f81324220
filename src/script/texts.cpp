#include "script/texts.h"

#include <cerrno>

namespace kolvane::script::texts {
namespace {

std::string Reason(int error) {
  switch (error) {
    case ENOENT:
      return "Datei oder Ordner nicht gefunden";
    case EACCES:
    case EPERM:
      return "Keine Berechtigung";
    case EISDIR:
      return "Der Name bezeichnet einen Ordner";
    case ENOTDIR:
      return "Ein Teil des Pfades ist kein Ordner";
    case ENOSPC:
    case EDQUOT:
      return "Der Datenträger ist voll";
    case EFBIG:
      return "Die Datei würde zu groß";
    case EROFS:
      return "Der Datenträger ist schreibgeschützt";
    case ENAMETOOLONG:
      return "Der Name ist zu lang";
    case ELOOP:
      return "Der Verweis führt im Kreis";
    case EIO:
      return "Fehler des Datenträgers";
    default:
      return "Systemfehler " + std::to_string(error);
  }
}

}  // namespace

std::string ListStatus(std::string_view file_name, std::size_t left_out) {
  std::string text = "Befehlsliste: ";
  text += file_name.empty() ? "Unbenannt" : file_name;
  if (left_out == 1) text += " (1 Zeile nicht geladen)";
  if (left_out > 1) text += " (" + std::to_string(left_out) + " Zeilen nicht geladen)";
  return text;
}

std::string FileFailure(const FileResult& result) {
  const std::string file = "Die Befehlsliste \"" + result.name + "\" kann nicht ";
  switch (result.problem) {
    case FileResult::Problem::kNone:
      return {};
    case FileResult::Problem::kCannotRead:
      return file + "gelesen werden: " + Reason(result.error) + ".";
    case FileResult::Problem::kLineTooLong:
      return file + "gelesen werden: Die Datei enthält zu lange Zeilen.";
    case FileResult::Problem::kListRunning:
      return file + "geladen werden, solange eine Befehlsliste läuft.";
    case FileResult::Problem::kCannotWrite:
      return file + "geschrieben werden: " + Reason(result.error) + ".";
  }
  return {};
}

}  // namespace kolvane::script::texts
