#include "base/pattern.h"

#include <regex>

namespace kolvane::base {

struct Pattern::Compiled {
  std::regex regex;
};

Pattern::Pattern(const std::string& expression)
    : compiled_(std::make_shared<const Compiled>(Compiled{std::regex(expression)})) {}

bool Pattern::Matches(const std::string& text) const { return std::regex_match(text, compiled_->regex); }

std::string Pattern::Replaced(const std::string& text, const std::string& by) const {
  return std::regex_replace(text, compiled_->regex, by);
}

std::vector<std::vector<std::string>> Pattern::FindAll(const std::string& text) const {
  std::vector<std::vector<std::string>> all;
  for (std::sregex_iterator match(text.begin(), text.end(), compiled_->regex), end; match != end; ++match)
    all.emplace_back(match->begin(), match->end());
  return all;
}

}  // namespace kolvane::base
