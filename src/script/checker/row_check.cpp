#include "script/checker/row_check.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"
#include "device/sendable.h"
#include "script/checker/check_texts.h"
#include "script/checker/row_words.h"
#include "terminal/texts.h"

namespace kolvane::script::checker {
namespace {

FlowOp OpOf(SpecialCommand command) {
  switch (command) {
    case SpecialCommand::kRepeat:
      return FlowOp::kRepeat;
    case SpecialCommand::kEndRepeat:
      return FlowOp::kEndRepeat;
    case SpecialCommand::kIfError:
    case SpecialCommand::kIfEqual:
    case SpecialCommand::kIfGreater:
    case SpecialCommand::kIfLess:
      return FlowOp::kCondition;
    case SpecialCommand::kEndIf:
      return FlowOp::kEndIf;
    case SpecialCommand::kGoTo:
      return FlowOp::kGoTo;
    case SpecialCommand::kStop:
      return FlowOp::kStop;
    case SpecialCommand::kOpenLog:
      return FlowOp::kOpenLog;
    case SpecialCommand::kWriteLog:
      return FlowOp::kWriteLog;
    case SpecialCommand::kCloseLog:
      return FlowOp::kCloseLog;
    case SpecialCommand::kSplitParams:
      return FlowOp::kSplitParams;
    case SpecialCommand::kGetParam:
      return FlowOp::kGetParam;
    case SpecialCommand::kDelay:
    case SpecialCommand::kClear:
    case SpecialCommand::kSilent:
    case SpecialCommand::kAutoLog:
    case SpecialCommand::kFlush:
    case SpecialCommand::kRead:
    case SpecialCommand::kAnswers:
      break;
  }
  return FlowOp::kPass;
}

bool IsHex(std::string_view text) {
  return text.size() > 2 && text.size() <= 10 && text[0] == '&' && (text[1] | 0x20) == 'h' &&
         text.find_first_not_of("0123456789ABCDEFabcdef", 2) == std::string_view::npos;
}

bool IsNumber(std::string_view text) { return IsHex(text) || base::WholeTextNumber(text).has_value(); }

/// Checks one known command with its argument.
class ArgumentCheck {
 public:
  ArgumentCheck(int row, const RowParts& parts, std::vector<Finding>& findings)
      : row_(row), parts_(parts), findings_(findings) {}

  RowMeaning Run() {
    step_.op = OpOf(parts_.word->command);
    if (parts_.word->argument == ArgumentKind::kNone) {
      CheckNothingFollows();
    } else if (!parts_.has_argument) {
      Add(FindingKind::kError, texts::MissingArgument(*parts_.word));
    } else if (parts_.argument.empty()) {
      CheckEmptyArgument();
    } else {
      CheckArgument();
      CheckRest();
    }
    if (step_.op == FlowOp::kOpenLog && OpensNothing()) step_.op = FlowOp::kOpenNoLog;
    return {step_, std::string(parts_.argument)};
  }

 private:
  void Add(FindingKind kind, std::string text, std::string replacement = {}) {
    findings_.push_back({row_, kind, std::move(text), std::move(replacement)});
  }

  std::string Corrected(std::string_view argument) const {
    return std::string(parts_.word->word) + " " + std::string(argument);
  }

  void CheckNothingFollows() {
    const std::string_view after = base::TrimSpaces(parts_.line.substr(parts_.name.size()));
    if (after.empty()) return;
    const bool end_if = parts_.word->command == SpecialCommand::kEndIf;
    if (end_if) step_.op = FlowOp::kPass;
    Add(FindingKind::kHint, end_if ? texts::SurplusAfterEndIf(after) : texts::SurplusText(after),
        std::string(parts_.word->word));
  }

  bool RefusesEmptyArgument() const {
    return parts_.word->argument == ArgumentKind::kPosition ||
           parts_.word->argument == ArgumentKind::kWhichAnswers;
  }

  // A row without a name is refused: it counts as one that opens a log.
  bool OpensNothing() const { return parts_.has_argument && SpecialLine(parts_.line).Unquoted().empty(); }

  void CheckEmptyArgument() {
    if (parts_.word->argument == ArgumentKind::kLabel) return;
    const bool two_spaces = !parts_.rest.empty() && !parts_.rest.starts_with(',');
    Add(RefusesEmptyArgument() ? FindingKind::kError : FindingKind::kHint, texts::EmptyArgument(two_spaces),
        two_spaces ? Corrected(parts_.rest) : std::string());
  }

  void CheckArgument() {
    switch (parts_.word->argument) {
      case ArgumentKind::kNumber:
        return CheckNumber();
      case ArgumentKind::kPosition:
        return CheckPosition();
      case ArgumentKind::kQuotedText:
      case ArgumentKind::kFile:
        return CheckQuotes();
      case ArgumentKind::kOnOff:
        return CheckOnOff();
      case ArgumentKind::kWhichAnswers:
        if (!IsOneOf(kWhichAnswers))
          Add(FindingKind::kError, texts::NeitherAlwaysNorQueries(parts_.argument));
        return;
      default:
        return;
    }
  }

  bool IsOneOf(std::span<const std::string_view> words) const {
    return std::ranges::any_of(
        words, [this](std::string_view word) { return base::EqualsNoCase(parts_.argument, word); });
  }

  void CheckNumber() {
    const double value = base::LeadingNumber(parts_.argument);
    const auto number = base::FitInt32(value);
    if (!number) return Add(FindingKind::kError, texts::OutOfRange(*parts_.word, parts_.argument));
    step_.count = *number;
    if (IsDigitAfterComma()) Add(FindingKind::kHint, texts::SurplusAfterComma(*number));
    CheckForm(value, *number);
    if (*number >= 0) return;
    const bool overflows = step_.op == FlowOp::kRepeat && *number == std::numeric_limits<std::int32_t>::min();
    Add(FindingKind::kHint,
        overflows ? std::string(texts::kCountsBelowRange) : texts::NegativeNumber(*parts_.word));
  }

  void CheckPosition() {
    const double position = base::LeadingNumber(parts_.argument);
    if (position < 1 || !base::FitInt32(position))
      return Add(FindingKind::kError, texts::NoPosition(parts_.argument));
    CheckForm(position, static_cast<std::int32_t>(std::nearbyint(position - 1)) + 1);
  }

  void CheckForm(double value, std::int32_t number) {
    if (!IsNumber(parts_.argument)) {
      Add(FindingKind::kHint, texts::NoNumber(parts_.argument, number));
    } else if (value != std::nearbyint(value)) {
      Add(FindingKind::kHint, texts::RoundedNumber(parts_.argument, number));
    }
  }

  void CheckQuotes() {
    const std::string_view text = parts_.argument;
    if (!text.starts_with('"') || (text.size() > 1 && text.ends_with('"')) || !parts_.rest.empty()) return;
    Add(FindingKind::kHint, texts::MissingQuote(text), Corrected(std::string(text) + '"'));
  }

  void CheckOnOff() {
    if (IsOneOf(kOnOff)) return;
    constexpr std::string_view kGermanOn[] = {"EIN", "AN"};
    constexpr std::string_view kGermanOff[] = {"AUS", "AB"};
    const std::string_view on_or_off = IsOneOf(kGermanOn) ? kOn : IsOneOf(kGermanOff) ? kOff : "";
    Add(FindingKind::kHint, texts::NeitherOnNorOff(parts_.argument),
        on_or_off.empty() ? std::string() : Corrected(on_or_off));
  }

  bool IsDigitAfterComma() const {
    return parts_.rest.size() > 1 && parts_.rest[0] == ',' && parts_.rest[1] >= '0' && parts_.rest[1] <= '9';
  }

  void CheckRest() {
    const bool is_reported = parts_.word->argument == ArgumentKind::kNumber && IsDigitAfterComma();
    if (parts_.rest.empty() || is_reported) return;
    Add(FindingKind::kHint, texts::SurplusText(parts_.rest), OneWord());
  }

  /// Several words joined into the one word that $WRITELOG can write.
  std::string OneWord() const {
    if (parts_.word->argument != ArgumentKind::kQuotedText || parts_.line.find(',') != std::string_view::npos)
      return {};
    std::string words(parts_.line.substr(parts_.name.size() + 1));
    std::replace(words.begin(), words.end(), ' ', '_');
    return Corrected(words);
  }

  int row_;
  const RowParts& parts_;
  std::vector<Finding>& findings_;
  FlowStep step_;
};

// The row is treated as what was probably meant, so that its partner is not reported too.
RowMeaning CheckUnknown(int row, const RowParts& parts, std::vector<Finding>& findings) {
  if (IsElse(parts.name)) {
    findings.push_back({row, FindingKind::kError, texts::NoElse(parts.name)});
    return {};
  }
  const WordProposal proposal = ProposeWord(parts);
  findings.push_back(
      {row, FindingKind::kError, texts::UnknownCommand(parts.name, proposal.row), proposal.row});
  if (proposal.word == nullptr) return {};
  std::vector<Finding> ignored;
  RowMeaning meaning = ArgumentCheck(row, RowParts(proposal.row), ignored).Run();
  meaning.step.misspelled = true;
  return meaning;
}

void CheckTab(int row, const RowParts& parts, std::vector<Finding>& findings) {
  const std::size_t start = parts.line.find_first_not_of(" \t");
  if (start == 0 || start == std::string_view::npos) return;
  const std::string_view command = parts.line.substr(start);
  if (command.starts_with('$'))
    findings.push_back(
        {row, FindingKind::kHint, std::string(texts::kTabBeforeCommand), std::string(command)});
}

}  // namespace

FlowOp FlowOpOf(const RowParts& parts) {
  return parts.word == nullptr ? FlowOp::kPass : OpOf(parts.word->command);
}

RowMeaning CheckRow(int row, const RowParts& parts, std::vector<Finding>& findings) {
  if (parts.IsSpecial())
    return parts.word == nullptr ? CheckUnknown(row, parts, findings)
                                 : ArgumentCheck(row, parts, findings).Run();
  CheckTab(row, parts, findings);
  // A host's device is sent it.
  if (parts.IsExecutable() && parts.line.find('\0') != parts.line.npos)
    findings.push_back({row, FindingKind::kHint, terminal::texts::NotSendable(device::kShownNul)});
  return {};
}

namespace {

/// The original of a UTF-8 row that was read as Windows-1252; no value for any other row, `text` itself if
/// part of the original is not in the code page.
std::optional<std::string> ReadAsUtf8(std::string_view text, std::string bytes) {
  if (!base::IsUtf8(bytes)) return std::nullopt;
  if (bytes.starts_with(base::kUtf8Mark)) bytes.erase(0, base::kUtf8Mark.size());
  return base::OutsideWindows1252(bytes).empty() ? bytes : std::string(text);
}

}  // namespace

void CheckCharacters(int row, std::string_view text, std::vector<Finding>& findings) {
  if (base::IsAscii(text)) return;
  if (const std::string_view foreign = base::OutsideWindows1252(text); !foreign.empty()) {
    findings.push_back({row, FindingKind::kHint, texts::OutsideCodePage(foreign)});
    return;
  }
  const auto meant = ReadAsUtf8(text, base::ToWindows1252(text));
  if (!meant) return;
  findings.push_back(
      {row, FindingKind::kHint, std::string(texts::kSavedAsUtf8), *meant == text ? std::string() : *meant});
}

}  // namespace kolvane::script::checker
