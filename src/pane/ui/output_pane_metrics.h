#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kolvane::pane {

/// The width of text in the pane's font, and where a line wraps into rows. Characters are placed in text
/// order, each with its own advance: no kerning, no ligatures, no reordering, so that a position in a row is
/// always a sum of advances. Control characters are shown as "^" and a letter.
class OutputPaneMetrics {
 public:
  explicit OutputPaneMetrics(const QFont& font);

  /// The fonts for plain characters, other clusters and bold clusters. A bold cluster takes the width of the
  /// plain one.
  const QFont& plain_font() const { return plain_font_; }
  const QFont& cluster_font() const { return cluster_font_; }
  const QFont& bold_font() const { return bold_font_; }
  /// Device-independent pixels.
  int row_height() const { return row_height_; }
  qreal ascent() const { return ascent_; }
  qreal space_width() const { return narrow_[' ']; }

  /// The width of a cluster that starts at `x` of its row.
  qreal Advance(std::string_view cluster, qreal x) const;
  /// The x of byte `at` of a row.
  qreal X(std::string_view row, std::size_t at) const;
  /// The byte whose start is nearest to `x`.
  std::size_t ByteAt(std::string_view row, qreal x) const;

  /// The start of the row after the one that starts at `row` of `line`; the line's size if there is none. A
  /// row takes what fits into `width`; if possible it ends after a space, tab, comma, semicolon or ">", and a
  /// space at the edge may overhang. `printable`: the line is known to be IsPrintable.
  std::size_t NextRow(std::string_view line, std::size_t row, qreal width, bool printable) const;
  /// How many bytes of ordinary text fit into `width`, whatever the text is.
  std::size_t SurelyFitting(qreal width) const;
  /// Whether `text` holds only printable Latin-1 characters and line breaks.
  static bool IsOrdinary(std::string_view text);
  /// Whether `text` holds only printable ASCII.
  static bool IsPrintable(std::string_view text);

  /// Whether the cluster may be painted together with its neighbours.
  static bool IsPlain(std::string_view cluster);
  /// What is painted for a cluster that is not plain.
  static QString Shown(std::string_view cluster);

 private:
  qreal Measured(std::string_view cluster) const;
  std::size_t NextFixedRow(std::string_view line, std::size_t row, std::size_t columns) const;

  QFont plain_font_;
  QFont cluster_font_;
  QFont bold_font_;
  QFontMetricsF metrics_;
  int row_height_;
  qreal ascent_;
  std::array<qreal, 256> narrow_{};  // not of control characters from U+0080
  qreal widest_ = 0;
  qreal fixed_ = 0;  // the width of every printable ASCII character; 0 if they differ
  // Filled on demand with clusters outside Latin-1, and with its control characters from U+0080.
  mutable std::unordered_map<std::string, qreal> measured_;
};

}  // namespace kolvane::pane
