#pragma once

#include <QRegularExpression>
#include <QString>

#include "pane/matcher.h"

namespace kolvane::pane {

/// A regular expression as QRegularExpression has them, each line for itself.
class RegexMatcher final : public Matcher {
 public:
  RegexMatcher(const QString& pattern, bool match_case);

  /// Where and why the expression is none, German; empty for a valid one.
  QString Fault() const;

  Hits FindIn(std::string_view lines) const override;
  /// `\0` to `\9` in `with` stand for what the hit's groups hold, `\\` for one backslash.
  std::string Replacement(std::string_view line, PaneRange hit, std::string_view with) const override;

 private:
  template <typename Add>
  void FindLineByLine(const QString& text, qsizetype from, const Add& add) const;

  QRegularExpression expression_;
  QRegularExpression ascii_;  // for text that is ASCII throughout
};

}  // namespace kolvane::pane
