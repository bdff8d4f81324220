#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kolvane::base {

/// An ECMAScript regular expression. Its templates are compiled in one place: they are many.
class Pattern {
 public:
  explicit Pattern(const std::string& expression);

  /// Whether all of `text` is one match.
  bool Matches(const std::string& text) const;
  /// `text` with `by` in place of each match.
  std::string Replaced(const std::string& text, const std::string& by) const;
  /// The groups of each match in `text`; [0] is the match.
  std::vector<std::vector<std::string>> FindAll(const std::string& text) const;

 private:
  struct Compiled;
  std::shared_ptr<const Compiled> compiled_;
};

}  // namespace kolvane::base
