#pragma once

#include <QRegularExpression>
#include <QString>

#include "pane/pane_search.h"

namespace kolvane::pane {

/// A regular expression in QRegularExpression's syntax, applied to each line separately.
class RegexMatcher final : public Matcher {
 public:
  RegexMatcher(const QString& pattern, bool match_case);

  /// Where and why the expression is invalid, in German; empty if it is valid.
  QString Fault() const;

  Hits FindIn(std::string_view lines) const override;
  /// In `with`, `\0` to `\9` stand for the hit's groups and `\\` for one backslash.
  std::string Replacement(std::string_view line, PaneRange hit, std::string_view with) const override;

 private:
  template <typename Add>
  static void FindLineByLine(const QRegularExpression& expression, const QString& text, qsizetype from,
                             const Add& add);

  bool sees_line_ends_;
  QRegularExpression expression_;
  QRegularExpression ascii_;  // for text that is all ASCII
};

}  // namespace kolvane::pane
