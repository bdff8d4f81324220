#include "pane/ui/regex_matcher.h"

#include "base/ui/qt_text.h"
#include "pane/pane_moves.h"

namespace kolvane::pane {
namespace {

using Options = QRegularExpression::PatternOptions;

Options OptionsOf(bool match_case) {
  const Options options = QRegularExpression::MultilineOption;
  return match_case ? options : options | QRegularExpression::CaseInsensitiveOption;
}

/// Converts positions in UTF-16 units, each not before the last one, into bytes.
class ByteCounter {
 public:
  explicit ByteCounter(std::string_view text, qsizetype units)
      : text_(text), ascii_(static_cast<std::size_t>(units) == text.size()) {}

  std::size_t At(qsizetype unit) {
    const auto wanted = static_cast<std::size_t>(unit);
    if (ascii_) return wanted;
    byte_ += ByteOfUnit(text_.substr(byte_), wanted - unit_);
    unit_ = wanted;
    return byte_;
  }

 private:
  std::string_view text_;
  bool ascii_;
  std::size_t byte_ = 0;
  std::size_t unit_ = 0;
};

// Whether `pattern` may tell a line within a text from one that stands alone without matching a line end:
// \A, \G, \Z, \z, verbs, or a group that is neither plain, named, (?:…) nor (?i…), such as a lookahead.
bool SeesLineEnds(const QString& pattern) {
  static const QRegularExpression kSuch(QStringLiteral(R"(\\[AGZz]|\(\*|\(\?(?!:|[imsx]+[:)]|P?<\w|'\w))"));
  return pattern.contains(kSuch);
}

// The match whose hit starts at `start`; with \K the match itself starts before its hit.
QRegularExpressionMatch MatchAt(const QRegularExpression& expression, const QString& text, qsizetype start) {
  QRegularExpressionMatch match = expression.match(text, start);
  for (auto matches = expression.globalMatch(text); match.capturedStart() != start && matches.hasNext();)
    match = matches.next();
  return match.capturedStart() == start ? match : QRegularExpressionMatch();
}

}  // namespace

RegexMatcher::RegexMatcher(const QString& pattern, bool match_case)
    : sees_line_ends_(SeesLineEnds(pattern)),
      expression_(pattern, OptionsOf(match_case) | QRegularExpression::UseUnicodePropertiesOption),
      ascii_(pattern, OptionsOf(match_case)) {}

QString RegexMatcher::Fault() const {
  if (expression_.isValid()) return {};
  return QStringLiteral("Kein gültiger Ausdruck, Fehler an Stelle %1: %2")
      .arg(expression_.patternErrorOffset() + 1)
      .arg(expression_.errorString());
}

Hits RegexMatcher::FindIn(std::string_view lines) const {
  Hits hits;
  if (!expression_.isValid()) return hits;
  const QString text = base::ToQt(lines);
  ByteCounter bytes(lines, text.size());
  // For ASCII, Unicode properties make no difference, but looking them up takes most of the time.
  const QRegularExpression& expression =
      static_cast<std::size_t>(text.size()) == lines.size() ? ascii_ : expression_;
  const auto add = [&](qsizetype begin, qsizetype end) {
    if (begin == end) return;
    const std::size_t first = bytes.At(begin);
    hits.push_back({first, bytes.At(end)});
  };
  if (sees_line_ends_) {
    FindLineByLine(expression, text, 0, add);
    return hits;
  }
  // All lines at once, because each start costs more than the search.
  qsizetype done = 0;
  for (auto matches = expression.globalMatch(text); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    const qsizetype line_end = text.indexOf(QLatin1Char('\n'), match.capturedStart());
    if (match.capturedEnd() > line_end) {
      FindLineByLine(expression, text, done, add);
      break;
    }
    add(match.capturedStart(), match.capturedEnd());
    done = match.capturedEnd();
  }
  return hits;
}

// For an expression that would match across line ends, or look beyond them.
template <typename Add>
void RegexMatcher::FindLineByLine(const QRegularExpression& expression, const QString& text, qsizetype from,
                                  const Add& add) {
  qsizetype begin = from == 0 ? 0 : text.lastIndexOf(QLatin1Char('\n'), from - 1) + 1;
  for (; begin < text.size(); from = begin) {
    const qsizetype end = text.indexOf(QLatin1Char('\n'), begin);
    const QString line = text.sliced(begin, end - begin);
    for (auto matches = expression.globalMatch(line, from - begin); matches.hasNext();) {
      const QRegularExpressionMatch match = matches.next();
      add(begin + match.capturedStart(), begin + match.capturedEnd());
    }
    begin = end + 1;
  }
}

std::string RegexMatcher::Replacement(std::string_view line, PaneRange hit, std::string_view with) const {
  const QString text = base::ToQt(line);
  const auto start = static_cast<qsizetype>(Utf16Length(line.substr(0, hit.begin)));
  const QRegularExpressionMatch match = MatchAt(expression_, text, start);
  constexpr QLatin1Char kEscape('\\');
  const QString put = base::ToQt(with);
  QString out;
  for (qsizetype i = 0; i < put.size(); ++i) {
    const QChar next = put[i] == kEscape && i + 1 < put.size() ? put[i + 1] : QChar();
    const bool is_group = next >= QLatin1Char('0') && next <= QLatin1Char('9');
    if (is_group)
      out += match.captured(next.digitValue());
    else
      out += put[i];
    if (is_group || next == kEscape) ++i;
  }
  return base::FromQt(out);
}

}  // namespace kolvane::pane
