#pragma once

#include <string>
#include <string_view>

#include "base/system.h"
#include "base/text.h"
#include "base/texts.h"
#include "inspect/template_file.h"

/// The texts of the inspector.
namespace kolvane::inspect::texts {

using base::texts::NotRead;
using base::texts::NotWritten;

inline constexpr std::string_view kNothingSelected =
    "Bitte markieren Sie einen Binärdatenblock, den Sie analysieren möchten.";

// rows and columns of the panel of values
inline constexpr std::string_view kType = "Typ";
inline constexpr std::string_view kLittleEndian = "Little-Endian (Intel)";
inline constexpr std::string_view kBigEndian = "Big-Endian (Motorola)";
inline constexpr std::string_view kUnsigned8 = "8 Bit ohne Vorzeichen";
inline constexpr std::string_view kSigned8 = "8 Bit mit Vorzeichen";
inline constexpr std::string_view kUnsigned16 = "16 Bit ohne Vorzeichen";
inline constexpr std::string_view kSigned16 = "16 Bit mit Vorzeichen";
inline constexpr std::string_view kUnsigned32 = "32 Bit ohne Vorzeichen";
inline constexpr std::string_view kSigned32 = "32 Bit mit Vorzeichen";
inline constexpr std::string_view kUnsigned64 = "64 Bit ohne Vorzeichen";
inline constexpr std::string_view kSigned64 = "64 Bit mit Vorzeichen";
inline constexpr std::string_view kSingle = "Single (4 Byte)";
inline constexpr std::string_view kDouble = "Double (8 Byte)";
inline constexpr std::string_view kCharacters = "Zeichen";
inline constexpr std::string_view kBits = "Bits";
inline constexpr std::string_view kTime32 = "Zeit UTC (32 Bit)";
inline constexpr std::string_view kTime64 = "Zeit UTC (64 Bit)";
inline constexpr std::string_view kNoTime = "keine Zeit";

// buttons and fields
inline constexpr std::string_view kValues = "Werte an der Schreibmarke";
inline constexpr std::string_view kGoTo = "&Gehe zu:";
inline constexpr std::string_view kGoToTip = "Position: 17, &H11, +4 oder -4; die Eingabetaste springt hin";
inline constexpr std::string_view kFind = "S&uchen:";
inline constexpr std::string_view kFindTip =
    "Hexadezimalziffern (0D 0A) oder Text, Text aus Hexadezimalziffern in \"…\"; die Eingabetaste sucht "
    "weiter";
inline constexpr std::string_view kLoadFile = "&Datei laden...";
inline constexpr std::string_view kSaveBlock = "&Block speichern...";
inline constexpr std::string_view kCopyAs = "Kopieren &als";
inline constexpr std::string_view kResultList = "&Ergebnisliste";
inline constexpr std::string_view kRepeat = "Vorlage &wiederholen";
inline constexpr std::string_view kSaveCsv = "&CSV speichern...";
inline constexpr std::string_view kPreviousPage = "Seite &zurück";
inline constexpr std::string_view kNextPage = "Seite &vor";
inline constexpr std::string_view kAllFiles = "Alle Dateien (*)";
inline constexpr std::string_view kCsvFiles = "CSV-Dateien (*.csv)";
inline constexpr std::string_view kMoreRecords = "… weitere Sätze: „CSV speichern...“ nimmt alle";
inline constexpr std::string_view kTitle = "Binärdaten analysieren";
inline constexpr std::string_view kSearching = "Bytes werden gesucht …";
inline constexpr std::string_view kSaving = "Bytes werden gespeichert …";
inline constexpr std::string_view kCopying = "Bytes werden kopiert …";
inline constexpr std::string_view kTooLongToCopy =
    "Der Block ist zu lang zum Kopieren, möglich sind 16 MB. „Block speichern...“ schreibt ihn ganz.";
inline constexpr std::string_view kNothingToSave =
    "Die Formatvorlage ergibt hier keine Felder. Bitte wählen Sie eine Formatvorlage aus.";

inline std::string HexNumber(std::uint64_t number) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  do {
    text.insert(text.begin(), digits[number & 15]);
  } while ((number >>= 4) != 0);
  return "&H" + text;
}

inline std::string Bytes(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " Byte" : " Bytes");
}

/// `selected` bytes from `offset` on, in a block of `length` bytes.
inline std::string PositionText(std::uint64_t offset, std::uint64_t selected, std::uint64_t length) {
  return "Position " + std::to_string(offset) + " (" + HexNumber(offset) + "), " + Bytes(selected) +
         " markiert, Block " + Bytes(length);
}
inline std::string Page(std::uint64_t number, std::uint64_t count) {
  return ", Seite " + std::to_string(number) + " von " + std::to_string(count);
}
inline std::string NoOffset(std::string_view typed) {
  return "„" + std::string(typed) + "“ ist keine Position";
}
inline std::string OutsideBlock(std::int64_t offset, std::uint64_t length) {
  return "Position " + std::to_string(offset) + " liegt außerhalb: Block " + Bytes(length);
}
inline std::string NotFound(std::string_view typed) { return "„" + std::string(typed) + "“ nicht gefunden"; }
/// `error` is an errno.
inline std::string NotCopied(int error) {
  return "Der Block kann nicht kopiert werden: " + base::SystemErrorText(error);
}

/// What is wrong with a line of a template; `text` is UTF-8.
inline std::string Problem(int line, TemplateProblem::Kind kind, std::string_view text) {
  using Kind = TemplateProblem::Kind;
  const std::string quoted = "„" + std::string(text) + "“";
  const std::string prefix = "Zeile " + std::to_string(line) + ": ";
  switch (kind) {
    case Kind::kType:
      return prefix + "Typ " + quoted + " unbekannt";
    case Kind::kByteCount:
      return prefix + "Länge " + quoted + " hinter BYTECOUNT= ist keine Zahl";
    case Kind::kOffset:
      return prefix + "Position " + quoted + " ist keine Zahl";
    case Kind::kOutside:
      return prefix + "Position " + quoted + " führt über die 257 gelesenen Bytes hinaus";
    case Kind::kBits:
      return prefix + "Bitbereich ab " + quoted + " enthält kein Bit";
    case Kind::kHighBits:
      return prefix + "Bits ab 15 zählen nicht (" + quoted + ")";
    case Kind::kLength:
      return prefix + "Länge " + quoted + " ist keine Zahl";
  }
  return prefix;
}

}  // namespace kolvane::inspect::texts
