#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kolvane::base {

/// An ECMAScript regular expression; its many templates are compiled in one place only.
class Pattern {
 public:
  explicit Pattern(const std::string& expression);

  /// Whether `text` matches as a whole.
  bool Matches(const std::string& text) const;
  /// `text` with each match replaced by `by`.
  std::string Replaced(const std::string& text, const std::string& by) const;
  /// The groups of each match in `text`; [0] is the match.
  std::vector<std::vector<std::string>> FindAll(const std::string& text) const;

 private:
  struct Compiled;
  std::shared_ptr<const Compiled> compiled_;
};

}  // namespace kolvane::base
