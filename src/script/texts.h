#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "script/command_file.h"

/// The messages of the command list, and other texts that several files show.
namespace kolvane::script::texts {

inline constexpr std::string_view kUnknownCommand = "Unbekannter $ Befehl";
inline constexpr std::string_view kNoJumpTarget = "Sprungziel nicht gefunden";
inline constexpr std::string_view kLogAlreadyOpen = "Logdatei bereits geöffnet";
inline constexpr std::string_view kNoLogOpen = "Keine Logdatei geöffnet";
inline constexpr std::string_view kNoSuchParameter = "Ungültige Parameterposition";

inline constexpr std::string_view kListFull =
    "Die Befehlsliste ist voll. Der Befehl wurde nicht aufgezeichnet.";

inline constexpr std::string_view kNoRoomForARow =
    "Die Befehlsliste ist voll. Es wurde keine Zeile eingefügt.";

/// `count` is the number of lines that did not fit.
inline std::string NotPasted(int count) {
  return "Die Befehlsliste ist voll. Nicht eingefügte Zeilen: " + std::to_string(count);
}

// For screen readers.
inline constexpr std::string_view kRunningRow = "läuft";
inline constexpr std::string_view kErrorRow = "Fehler";
inline constexpr std::string_view kBreakpoint = "Haltepunkt";
inline std::string RowName(int row) { return "Zeile " + std::to_string(row); }

inline std::string ErrorInRow(int row, std::string_view error) {
  return "Fehler in Befehlsliste (Zeile " + std::to_string(row) + "): " + std::string(error);
}

/// For a character that is not in the device's code page.
inline std::string NotInCodePage(std::string_view character) {
  return "Das Zeichen „" + std::string(character) + "“ kann weder gesendet noch gespeichert werden";
}

/// Before a list is saved: the rows, at least one, with characters that a command file cannot hold;
/// `character` is the first of them.
std::string CharactersNotInFile(const std::vector<int>& rows, std::string_view character);

/// For the second status bar; an empty name means a new list.
std::string ListStatus(std::string_view file_name);
/// The lines of the file beyond the last row; empty if there are none.
std::string LinesLeftOut(std::size_t count);

/// Offers a list that a window has left unsaved: the name of its file, which may be empty, the time of the
/// copy, how many rows it has and how many such lists follow.
std::string AbandonedList(std::string_view file_name, std::string_view when, std::size_t rows,
                          std::size_t more);
/// The copy of a modified list could not be written.
std::string ListNotKept(int error);
inline constexpr std::string_view kRestore = "Wiederherstellen";
inline constexpr std::string_view kDiscard = "Verwerfen";

/// For a message box; empty if the result is no failure.
std::string FileFailure(const FileResult& result);

}  // namespace kolvane::script::texts
