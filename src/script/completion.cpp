#include "script/completion.h"

#include <algorithm>

#include "base/text.h"
#include "script/special_line.h"

namespace kolvane::script {
namespace {

std::string ArgumentName(const SpecialWord& word) {
  switch (word.argument) {
    case ArgumentKind::kNumber:
      return word.command == SpecialCommand::kDelay ? " ms" : " n";
    case ArgumentKind::kPosition:
      return " n";
    case ArgumentKind::kText:
    case ArgumentKind::kQuotedText:
      return " text";
    case ArgumentKind::kFile:
      return " datei";
    case ArgumentKind::kLabel:
      return " marke";
    default:
      break;
  }
  std::string words;
  for (const std::string_view each : ArgumentWords(word.argument))
    words.append(words.empty() ? " " : "|").append(each);
  return words;
}

std::vector<std::string> Labels(const CommandList& list) {
  std::vector<std::string> labels;
  for (int row = 1; row <= list.LastUsedRow(); ++row) {
    const std::string& text = list.Text(row);
    // $GOTO takes one word.
    if (text.size() > 1 && text.ends_with(':') && text.find_first_of(" ,") == text.npos)
      labels.push_back(text.substr(0, text.size() - 1));
  }
  return labels;
}

std::vector<std::string> Arguments(const SpecialWord& word, const CommandList& list) {
  if (word.argument == ArgumentKind::kLabel) return Labels(list);
  const auto words = ArgumentWords(word.argument);
  return {words.begin(), words.end()};
}

}  // namespace

std::vector<Completion> Completions(std::string_view typed, const CommandList& list) {
  std::vector<Completion> found;
  if (!typed.starts_with('$')) return found;
  const std::size_t space = typed.find(' ');
  if (space == typed.npos) {
    for (const SpecialWord& word : kSpecialWords) {
      const std::string name(word.word);
      if (base::StartsWithNoCase(name, typed))
        found.push_back(
            {name + (word.argument == ArgumentKind::kNone ? "" : " "), name + ArgumentName(word)});
    }
  } else if (const SpecialWord* word = FindSpecialWord(base::UpperCase(typed.substr(0, space)))) {
    const std::string prefix(typed.substr(0, space + 1));
    for (const std::string& argument : Arguments(*word, list))
      if (base::StartsWithNoCase(argument, typed.substr(space + 1)))
        found.push_back({prefix + argument, prefix + argument});
  }
  const auto complete = [typed](const Completion& each) {
    return base::EqualsNoCase(base::TrimSpacesRight(each.row), typed);
  };
  return std::ranges::any_of(found, complete) ? std::vector<Completion>() : found;
}

}  // namespace kolvane::script
