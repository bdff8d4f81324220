#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "script/special_line.h"
#include "script/texts.h"

/// Every text of the command list checker. Words quoted from the list are shortened, and their control
/// characters replaced.
namespace kolvane::script::checker::texts {

// Words and arguments
std::string UnknownCommand(std::string_view name, std::string_view proposal);
std::string NoElse(std::string_view name);
std::string MissingArgument(const SpecialWord& word);
std::string EmptyArgument(bool two_spaces);
std::string SurplusText(std::string_view rest);
std::string SurplusAfterComma(std::int32_t number);
std::string SurplusAfterEndIf(std::string_view rest);
std::string MissingQuote(std::string_view argument);
std::string OutOfRange(const SpecialWord& word, std::string_view argument);
std::string NoNumber(std::string_view argument, std::int32_t number);
std::string RoundedNumber(std::string_view argument, std::int32_t number);
std::string NegativeNumber(const SpecialWord& word);
std::string NoPosition(std::string_view argument);
std::string NeitherOnNorOff(std::string_view argument);
std::string NeitherAlwaysNorQueries(std::string_view argument);
inline constexpr std::string_view kCountsBelowRange =
    "Der Zähler läuft bei $ENDREPEAT über, verwenden Sie 0 für einen Durchgang";
inline constexpr std::string_view kTabBeforeCommand =
    "Vor dem $ steht ein Tabulator, die Zeile geht daher an das Gerät";

// Characters
std::string OutsideCodePage(std::string_view character);
inline constexpr std::string_view kSavedAsUtf8 =
    "Die Zeile ist in UTF-8 gespeichert, Befehlsdateien sind Windows-1252";

// Jumps
std::string NoTarget(std::string_view target);
std::string TargetWithSpaces(std::string_view target, int row);
std::string TargetCutAtSpace(std::string_view argument, int row);
std::string SimilarTarget(std::string_view target, std::string_view similar, int row);
std::string LabelTwice(std::string_view label, int first);
std::string JumpIntoLoop(int loop);
std::string JumpLeavesCondition(int condition, int end);

// Loops
inline constexpr std::string_view kLoopWithoutEnd =
    "Zu diesem $REPEAT fehlt $ENDREPEAT, der Block läuft nur einmal";
inline constexpr std::string_view kEndWithoutLoop = "Zu diesem $ENDREPEAT fehlt $REPEAT";
inline constexpr std::string_view kTooDeep = "Mehr als 16 geschachtelte Schleifen";
inline constexpr std::string_view kPerhapsTooDeep =
    "Hier können schon 16 Schleifen offen sein, weil Sprünge sie verlassen, ohne sie zu beenden";
std::string PerhapsWithoutLoop(int loop);
std::string CountOverflows(int loop);
std::string LoopCrossesCondition(int loop, int condition);

// Conditions
inline constexpr std::string_view kConditionWithoutEnd = "Zu dieser Bedingung fehlt $ENDIF";
inline constexpr std::string_view kEndWithoutCondition =
    "Zu diesem $ENDIF fehlt die Bedingung, die folgenden wirken dann nicht mehr";
inline constexpr std::string_view kPerhapsWithoutCondition =
    "Auf einem Weg ist hier keine Bedingung offen, die folgenden wirken dann nicht mehr";
inline constexpr std::string_view kEarlierConditionOpen =
    "Schließt die Bedingung nicht, wenn noch eine frühere offen ist";
inline constexpr std::string_view kConditionsAddUp =
    "Bei jedem Durchlauf bleibt eine Bedingung mehr offen, nach 32767 läuft der Zähler über";
std::string NestedCondition(int outer);

// Parameters and log
inline constexpr std::string_view kNoSplitBefore = "Vor diesem $GETPARAM steht kein $SPLITPARAMS";
inline constexpr std::string_view kPerhapsNoSplitBefore =
    "Auf einem Weg hierher steht kein $SPLITPARAMS vor diesem $GETPARAM";
inline constexpr std::string_view kLogClosed = script::texts::kNoLogOpen;
inline constexpr std::string_view kLogClosedUnlessOpenedByHand =
    "Keine Logdatei geöffnet, falls nicht schon vor dem Ablauf eine offen ist";
inline constexpr std::string_view kLogPerhapsClosed = "Auf einem Weg hierher ist keine Logdatei geöffnet";
inline constexpr std::string_view kLogOpen = script::texts::kLogAlreadyOpen;
inline constexpr std::string_view kLogPerhapsOpen = "Auf einem Weg hierher ist die Logdatei bereits geöffnet";

// Rows
std::string NeverReached(int first, int last);
std::string BeyondTheList(int first, int last);

}  // namespace kolvane::script::checker::texts
