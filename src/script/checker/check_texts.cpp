#include "script/checker/check_texts.h"

#include "base/encoding.h"

namespace kolvane::script::checker::texts {
namespace {

constexpr std::size_t kLongest = 48;  // bytes of a quoted word

std::string Quoted(std::string_view text) {
  std::string shown(base::IsUtf8(text) ? base::Utf8Prefix(text, kLongest) : "?");
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
  }
  return "„" + shown + (text.size() > kLongest ? "…“" : "“");
}

std::string Word(const SpecialWord& word) { return std::string(word.word); }

std::string Row(int row) { return "Zeile " + std::to_string(row); }

std::string Rows(int first, int last) {
  return first == last ? Row(first) : "Zeilen " + std::to_string(first) + " bis " + std::to_string(last);
}

std::string Unknown(std::string_view name) {
  return std::string(script::texts::kUnknownCommand) + " " + Quoted(name);
}

std::string_view NameOf(ArgumentKind kind) {
  switch (kind) {
    case ArgumentKind::kNumber:
      return "die Zahl";
    case ArgumentKind::kPosition:
      return "die Position";
    case ArgumentKind::kText:
    case ArgumentKind::kQuotedText:
      return "der Text";
    case ArgumentKind::kFile:
      return "der Dateiname";
    case ArgumentKind::kLabel:
      return "die Marke";
    case ArgumentKind::kOnOff:
      return "ON oder OFF";
    case ArgumentKind::kWhichAnswers:
      return "ALWAYS oder QUERIES";
    case ArgumentKind::kNone:
      break;
  }
  return "das Argument";
}

}  // namespace

std::string UnknownCommand(std::string_view name, std::string_view proposal) {
  const std::string text = Unknown(name);
  return proposal.empty() ? text : text + ", gemeint ist wohl " + Quoted(proposal);
}

std::string NoElse(std::string_view name) {
  return Unknown(name) +
         ": Einen Sonst-Zweig gibt es nicht, schreiben Sie hinter $ENDIF eine zweite Bedingung";
}

std::string MissingArgument(const SpecialWord& word) {
  return "Zu " + Word(word) + " fehlt " + std::string(NameOf(word.argument));
}

std::string EmptyArgument(bool two_spaces) {
  return two_spaces ? "Das Argument ist leer, weil zwei Leerzeichen davor stehen" : "Das Argument ist leer";
}

std::string SurplusText(std::string_view rest) { return Quoted(rest) + " wird nicht beachtet"; }

std::string SurplusAfterComma(std::int32_t number) {
  return "Das Komma beendet die Zahl, es gilt " + std::to_string(number) + "; Dezimalzeichen ist der Punkt";
}

std::string SurplusAfterEndIf(std::string_view rest) {
  return "Mit " + Quoted(rest) + " dahinter schließt $ENDIF keine Bedingung";
}

std::string MissingQuote(std::string_view argument) {
  return "Das schließende Anführungszeichen fehlt, vom Text " + Quoted(argument) +
         " fällt das letzte Zeichen weg";
}

std::string OutOfRange(const SpecialWord& word, std::string_view argument) {
  return Quoted(argument) + " passt nicht, " + Word(word) + " nimmt Zahlen von -2147483648 bis 2147483647";
}

std::string NoNumber(std::string_view argument, std::int32_t number) {
  return Quoted(argument) + " ist keine Zahl, es gilt " + std::to_string(number);
}

std::string RoundedNumber(std::string_view argument, std::int32_t number) {
  return Quoted(argument) + " wird gerundet, es gilt " + std::to_string(number);
}

std::string NegativeNumber(const SpecialWord& word) {
  return word.command == SpecialCommand::kRepeat ? "Eine negative Zahl bedeutet einen Durchgang, wie 0"
                                                 : "Die Wartezeit ist negativ";
}

std::string NoPosition(std::string_view argument) {
  return "Die Position " + Quoted(argument) + " gibt es nicht, gezählt wird ab 1";
}

std::string NeitherOnNorOff(std::string_view argument) {
  return Quoted(argument) + " ändert nichts, wirksam sind ON und OFF";
}

std::string NeitherAlwaysNorQueries(std::string_view argument) {
  return std::string(script::texts::kUnknownCommand) + ": hinter $ANSWERS steht ALWAYS oder QUERIES, nicht " +
         Quoted(argument);
}

std::string OutsideCodePage(std::string_view character) {
  return "Das Zeichen " + Quoted(character) + " gibt es in Windows-1252 nicht, gespeichert wird dafür „?“";
}

std::string NoTarget(std::string_view target) { return "Sprungziel " + Quoted(target) + " nicht gefunden"; }

std::string TargetWithSpaces(std::string_view target, int row) {
  return NoTarget(target) + ": " + Row(row) + " unterscheidet sich nur durch Leerzeichen";
}

std::string TargetCutAtSpace(std::string_view argument, int row) {
  return "Sprungziel nicht gefunden: von der Marke in " + Row(row) +
         " zählt bis zum Leerzeichen oder Komma nur " + Quoted(argument);
}

std::string SimilarTarget(std::string_view target, std::string_view similar, int row) {
  return NoTarget(target) + ", gemeint ist wohl " + Quoted(similar) + " in " + Row(row);
}

std::string LabelTwice(std::string_view label, int first) {
  return "Die Marke " + Quoted(label) + " steht schon in " + Row(first) + ", jeder Sprung führt dorthin";
}

std::string JumpIntoLoop(int loop) {
  return "Sprung in die Schleife aus " + Row(loop) + ", ohne dass ihr $REPEAT ausgeführt ist";
}

std::string JumpLeavesCondition(int condition, int end) {
  return "Der Sprung lässt die Bedingung aus " + Row(condition) + " offen, $ENDIF in " + Row(end) +
         " schließt dann nicht mehr";
}

std::string PerhapsWithoutLoop(int loop) {
  return "Auf einem Weg hierher ist $REPEAT in " + Row(loop) + " nicht ausgeführt";
}

std::string CountOverflows(int loop) { return "Der Zähler der Schleife aus " + Row(loop) + " läuft über"; }

std::string LoopCrossesCondition(int loop, int condition) {
  return "Die Schleife aus " + Row(loop) + " und die Bedingung aus " + Row(condition) + " überkreuzen sich";
}

std::string NestedCondition(int outer) {
  return "Innere Bedingung: Gilt die äußere aus " + Row(outer) +
         " nicht, schließt schon das innere $ENDIF sie";
}

std::string NeverReached(int first, int last) {
  return first == last ? "Die Zeile wird nie erreicht" : "Die " + Rows(first, last) + " werden nie erreicht";
}

std::string BeyondTheList(int first, int last) {
  return (first == last ? "Die " + Row(first) + " hat" : "Die " + Rows(first, last) + " haben") +
         " in der Befehlsliste keinen Platz";
}

}  // namespace kolvane::script::checker::texts
