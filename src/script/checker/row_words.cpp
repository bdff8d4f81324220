#include "script/checker/row_words.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/text.h"
#include "script/special_line.h"

namespace kolvane::script::checker {

RowParts::RowParts(std::string_view text) : line(base::TrimSpaces(text)) {
  if (!IsSpecial()) return;
  const SpecialLine special(line);
  word = FindSpecialWord(special.Command());
  name = line.substr(0, line.find_first_of(" ,"));
  has_argument = special.HasArgument();
  if (has_argument) argument = special.Argument();
  const std::size_t used = name.size() + (has_argument ? 1 + argument.size() : 0);
  rest = base::TrimSpaces(line.substr(used));
}

namespace {

constexpr std::size_t kLongestName = 15;  // of names compared letter by letter

/// What the commands are called in other languages.
constexpr std::pair<std::string_view, std::string_view> kOtherNames[] = {
    {"$LOOP", "$REPEAT"},      {"$FOR", "$REPEAT"}, {"$NEXT", "$ENDREPEAT"}, {"$ENDLOOP", "$ENDREPEAT"},
    {"$ENDFOR", "$ENDREPEAT"}, {"$WAIT", "$DELAY"}, {"$SLEEP", "$DELAY"},    {"$PAUSE", "$DELAY"},
    {"$EXIT", "$STOP"},        {"$QUIT", "$STOP"},  {"$HALT", "$STOP"},      {"$JUMP", "$GOTO"},
    {"$FI", "$ENDIF"},         {"$CLS", "$CLEAR"},
};

constexpr std::string_view kElseNames[] = {"$ELSE",   "$ELSEIF",    "$ELSIF", "$ELIF",
                                           "$IFELSE", "$OTHERWISE", "$SONST"};

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }

/// The number of letters to insert, remove, replace or swap; more than kLongestName for longer names.
std::size_t Distance(std::string_view a, std::string_view b) {
  if (std::max(a.size(), b.size()) > kLongestName) return kLongestName + 1;
  std::array<std::array<std::size_t, kLongestName + 1>, kLongestName + 1> cost{};
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = i + j;
        continue;
      }
      cost[i][j] = std::min(
          {cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
    }
  }
  return cost[a.size()][b.size()];
}

const SpecialWord* OtherName(std::string_view name) {
  for (const auto& [other, word] : kOtherNames) {
    if (name == other) return FindSpecialWord(word);
  }
  return nullptr;
}

const SpecialWord* NearestWord(std::string_view name) {
  const SpecialWord* nearest = nullptr;
  std::size_t least = name.size() <= 5 ? 2 : 3;  // a distance that is too large
  for (const SpecialWord& special : kSpecialWords) {
    const std::size_t size = special.word.size();
    if (std::max(size, name.size()) - std::min(size, name.size()) >= least) continue;
    const std::size_t distance = Distance(name, special.word);
    if (distance >= least) continue;
    least = distance;
    nearest = &special;
  }
  return nearest;
}

/// The only word that begins with `name`; null for none or several.
const SpecialWord* OnlyWordStartingWith(std::string_view name) {
  const SpecialWord* found = nullptr;
  for (const SpecialWord& special : kSpecialWords) {
    if (name.size() < 4 || !special.word.starts_with(name)) continue;
    if (found != nullptr) return nullptr;
    found = &special;
  }
  return found;
}

std::string WithWord(const SpecialWord& word, std::string_view tail) {
  std::string row(word.word);
  if (word.argument == ArgumentKind::kNone || tail.empty()) return row;
  return row + (tail.starts_with(' ') ? "" : " ") + std::string(tail);
}

/// "$DELAY100", "$GOTO:end", "$STOP;": a word followed by something other than a letter.
std::optional<WordProposal> WordWithTail(const RowParts& parts, std::string_view name) {
  const SpecialWord* longest = nullptr;
  for (const SpecialWord& special : kSpecialWords) {
    const std::size_t size = special.word.size();
    if (!name.starts_with(special.word) || IsLetter(name[size])) continue;
    if (longest == nullptr || size > longest->word.size()) longest = &special;
  }
  if (longest == nullptr) return std::nullopt;
  std::string_view tail = parts.line.substr(longest->word.size());
  tail.remove_prefix(std::min(tail.find_first_not_of("\t:;=.,_"), tail.size()));
  return WordProposal{longest, WithWord(*longest, tail)};
}

/// "$ STOP".
std::optional<WordProposal> WordAfterSpace(const RowParts& parts) {
  if (parts.name != "$") return std::nullopt;
  const std::string joined = "$" + std::string(base::TrimSpaces(parts.line.substr(1)));
  const RowParts corrected(joined);
  if (corrected.word == nullptr) return std::nullopt;
  return WordProposal{corrected.word, joined};
}

}  // namespace

WordProposal ProposeWord(const RowParts& parts) {
  const std::string name = base::UpperCase(parts.name.substr(0, 4 * kLongestName));
  if (IsElse(name)) return {};
  if (auto proposal = WordAfterSpace(parts)) return *proposal;
  const SpecialWord* word = OtherName(name);
  if (word == nullptr) {
    if (auto proposal = WordWithTail(parts, name)) return *proposal;
    word = NearestWord(name);
  }
  if (word == nullptr) word = OnlyWordStartingWith(name);
  if (word == nullptr) return {};
  return {word, WithWord(*word, parts.line.substr(parts.name.size()))};
}

bool IsElse(std::string_view name) {
  return std::find(std::begin(kElseNames), std::end(kElseNames),
                   base::UpperCase(name.substr(0, kLongestName))) != std::end(kElseNames);
}

bool DifferByOneLetter(std::string_view a, std::string_view b) {
  if (a.size() > b.size()) std::swap(a, b);
  if (b.size() - a.size() > 1) return false;
  const auto [at_a, at_b] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  const std::string_view rest_a(at_a, a.end());
  const std::string_view rest_b(at_b, b.end());
  if (a.size() < b.size()) return rest_a == rest_b.substr(1);
  if (rest_a.empty()) return false;
  if (rest_a.substr(1) == rest_b.substr(1)) return true;
  return rest_a.size() > 1 && rest_a[0] == rest_b[1] && rest_a[1] == rest_b[0] &&
         rest_a.substr(2) == rest_b.substr(2);
}

}  // namespace kolvane::script::checker
