#include "script/checker/jump_check.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/text.h"
#include "script/checker/check_texts.h"
#include "script/checker/row_words.h"

namespace kolvane::script::checker {
namespace {

std::string WithoutSpaces(std::string text) {
  std::erase(text, ' ');
  return text;
}

bool IsLabel(std::string_view text) { return base::TrimSpacesRight(text).ends_with(':'); }

/// Short labels differ by little anyway, so for them only a comment mark or a second ":" counts.
bool IsSimilar(std::string_view target, std::string_view label) {
  constexpr std::size_t kShort = 3;
  if (!DifferByOneLetter(target, label)) return false;
  return std::min(target.size(), label.size()) > kShort || target.front() == '\'' || label.front() == '\'' ||
         target.ends_with("::");
}

}  // namespace

LabelTable::LabelTable(const std::vector<std::string_view>& rows) : rows_(rows) {
  int row = 0;
  for (const std::string_view text : rows) {
    ++row;
    if (!IsLabel(text)) continue;
    std::string folded = base::UpperCase(text);
    exact_[folded].push_back(row);
    without_spaces_[WithoutSpaces(folded)].push_back(row);
    folded_.emplace_back(row, std::move(folded));
  }
}

int LabelTable::FindIn(const Rows& rows, const std::string& folded) {
  const auto found = rows.find(folded);
  return found == rows.end() ? 0 : found->second.front();
}

int LabelTable::Find(std::string_view target) const { return FindIn(exact_, base::UpperCase(target)); }

int LabelTable::FindWithSpaces(std::string_view target) const {
  return FindIn(without_spaces_, WithoutSpaces(base::UpperCase(target)));
}

int LabelTable::NextDuplicate(int row) const {
  for (const int other : exact_.at(base::UpperCase(Text(row))))
    if (other > row) return other;
  return 0;
}

int LabelTable::FindSimilar(std::string_view target) const {
  const std::string wanted = base::UpperCase(target);
  for (const auto& [row, folded] : folded_)
    if (IsSimilar(wanted, folded)) return row;
  return 0;
}

namespace {

/// Reports a $GOTO without target: "$GOTO  end", "$GOTO the end", "$GOTO end:". Returns the row probably
/// meant or 0.
int FindNearTarget(int row, const RowParts& parts, const std::string& target, const LabelTable& labels,
                   std::vector<Finding>& findings) {
  const auto error = [&](std::string text, std::string replacement, int other_row) {
    findings.push_back({row, FindingKind::kError, std::move(text), std::move(replacement), other_row});
    return other_row;
  };
  const std::string whole(parts.line.substr(parts.name.size() + 1));
  if (parts.argument.empty() && !parts.rest.starts_with(','))
    return error(texts::EmptyArgument(true), "$GOTO " + std::string(parts.rest),
                 labels.Find(std::string(parts.rest) + ":"));
  if (const int spaced = labels.FindWithSpaces(target))
    return error(texts::TargetWithSpaces(target, spaced), {}, spaced);
  if (const int cut = parts.rest.empty() ? 0 : labels.Find(whole + ":"))
    return error(texts::TargetCutAtSpace(parts.argument, cut), {}, cut);
  if (const int similar = labels.FindSimilar(target)) {
    const std::string_view text = labels.Text(similar);
    return error(texts::SimilarTarget(target, text, similar),
                 "$GOTO " + std::string(text.substr(0, text.size() - 1)), similar);
  }
  return error(texts::NoTarget(target), {}, 0);
}

/// Whether `loop` is the innermost open one in every state.
bool IsInside(int loop, const StateSet& run) {
  for (int level = StateSet::kLowestLevel; level <= StateSet::kHighestLevel; ++level) {
    if (!run.HasLevel(level)) continue;
    if (level < 0 || level >= kLevels || run.LoopAt(level) != loop) return false;
  }
  return !run.empty();
}

/// The innermost loop around `target` if `row` is outside it; 0 for none.
int LoopEntered(int row, int target, const BlockPairs& pairs) {
  const int loop = pairs.LoopAround(target);
  return loop == 0 || pairs.Holds(loop, row) ? 0 : loop;
}

}  // namespace

int FindTarget(int row, const RowParts& parts, std::string_view label, const LabelTable& labels,
               std::vector<Finding>& findings) {
  const std::string target = std::string(label) + ":";
  const int found = labels.Find(target);
  if (parts.word == nullptr || !parts.has_argument) return found;
  if (found == 0) return FindNearTarget(row, parts, target, labels, findings);
  if (label.empty())
    findings.push_back({row, FindingKind::kHint, texts::EmptyArgument(!parts.rest.starts_with(','))});
  return found;
}

void CheckDuplicates(const std::vector<FlowStep>& steps, const LabelTable& labels,
                     std::vector<Finding>& findings) {
  std::vector<bool> seen(steps.size() + 1);
  for (const FlowStep& step : steps) {
    if (step.target == 0 || seen[static_cast<std::size_t>(step.target)]) continue;
    seen[static_cast<std::size_t>(step.target)] = true;
    if (const int duplicate = labels.NextDuplicate(step.target))
      findings.push_back({duplicate,
                          FindingKind::kHint,
                          texts::LabelTwice(labels.Text(duplicate), step.target),
                          {},
                          step.target});
  }
}

void CheckJumpsIntoLoops(const CheckedList& list, std::vector<Finding>& findings) {
  for (int row = 1; row <= list.last_row(); ++row) {
    const int target = list.Step(row).target;
    const int loop = target == 0 ? 0 : LoopEntered(row, target, list.pairs);
    if (loop == 0 || IsInside(loop, list.flow.At(row).executing)) continue;
    findings.push_back({row, FindingKind::kHint, texts::JumpIntoLoop(loop), {}, loop});
  }
}

}  // namespace kolvane::script::checker
