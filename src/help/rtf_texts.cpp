#include "help/rtf_texts.h"

namespace kolvane::help {

std::string_view FaultText(RtfFault fault) {
  switch (fault) {
    case RtfFault::kNone:
      break;
    case RtfFault::kNotRichText:
      return "Die Datei ist keine RTF-Datei";
    case RtfFault::kTruncated:
      return "Die Datei ist unvollständig";
    case RtfFault::kBadByte:
      return "Die Datei enthält ein beschädigtes Zeichen";
    case RtfFault::kTextBehindEnd:
      return "Hinter dem Ende des Textes steht noch etwas";
    case RtfFault::kTooDeep:
      return "Die Gruppen der Datei sind zu tief geschachtelt";
    case RtfFault::kTooLarge:
      return "Die Datei enthält zu viele Absätze";
  }
  return {};
}

}  // namespace kolvane::help
