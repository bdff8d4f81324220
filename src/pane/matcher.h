#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::pane {

/// Bytes [begin, end) of a text.
struct PaneRange {
  std::size_t begin;
  std::size_t end;
  bool empty() const { return begin == end; }
  bool operator==(const PaneRange&) const = default;
};

using Hits = std::vector<PaneRange>;

/// What is searched for. A hit is within one line and not empty; hits do not overlap. Texts are UTF-8.
class Matcher {
 public:
  virtual ~Matcher() = default;
  /// The hits in `lines`, each of which ends in LF, in text order.
  virtual Hits FindIn(std::string_view lines) const = 0;
  /// The text that replaces `hit`, one of FindIn's, in `line`, which has no LF.
  virtual std::string Replacement(std::string_view line, PaneRange hit, std::string_view with) const = 0;
};

/// A literal text, with or without regard to case.
class PlainMatcher final : public Matcher {
 public:
  /// `text` is not empty and holds no LF.
  PlainMatcher(std::string_view text, bool match_case);

  Hits FindIn(std::string_view lines) const override;
  std::string Replacement(std::string_view, PaneRange, std::string_view with) const override {
    return std::string(with);
  }

 private:
  std::string text_;
  bool match_case_;
};

/// `line` with each of its hits replaced.
std::string ReplaceHits(const Matcher& matcher, std::string_view line, std::string_view with);

}  // namespace kolvane::pane
