#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kolvane::pane {

/// How wide text is in the pane's font, and where a line breaks into rows. Characters stand side by side in
/// the order of the text, each with its own advance: no kerning, no ligatures, no reordering, so that a place
/// in a row is a sum of advances whatever the text. Control characters show as "^" and a letter.
class OutputPaneMetrics {
 public:
  explicit OutputPaneMetrics(const QFont& font);

  /// The fonts to paint plain characters, other clusters and bold ones with. A bold cluster takes the room of
  /// its plain one.
  const QFont& plain_font() const { return plain_font_; }
  const QFont& cluster_font() const { return cluster_font_; }
  const QFont& bold_font() const { return bold_font_; }
  /// Device-independent pixels.
  int row_height() const { return row_height_; }
  qreal ascent() const { return ascent_; }
  qreal blank() const { return narrow_[' ']; }

  /// What one cluster takes that begins at `x` of its row.
  qreal Advance(std::string_view cluster, qreal x) const;
  /// Where the byte `at` of a row stands.
  qreal X(std::string_view row, std::size_t at) const;
  /// The byte whose begin is nearest to `x`.
  std::size_t ByteAt(std::string_view row, qreal x) const;

  /// Where the row after the one that begins at `row` of `line` begins; the line's size if none does. A row
  /// takes what fits into `width`; it ends after a space, comma, semicolon or ">" where it holds one, and a
  /// space at the edge hangs over. `printable`: the line is known to be IsPrintable.
  std::size_t NextRow(std::string_view line, std::size_t row, qreal width, bool printable) const;
  /// A line of so many bytes, all of them ordinary, fits into `width` whatever they are.
  std::size_t SurelyFitting(qreal width) const;
  /// Whether `text` holds nothing but printable characters of Latin-1 and line breaks.
  static bool IsOrdinary(std::string_view text);
  /// Whether `text` holds nothing but printable ASCII.
  static bool IsPrintable(std::string_view text);

  /// Whether the cluster may be painted together with its neighbours.
  static bool IsPlain(std::string_view cluster);
  /// What is painted for a cluster that may not.
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
  std::array<qreal, 256> narrow_{};
  qreal widest_ = 0;
  qreal fixed_ = 0;  // what each printable ASCII character takes; 0 if they differ
  // Filled on demand with the clusters outside Latin-1.
  mutable std::unordered_map<std::string, qreal> measured_;
};

}  // namespace kolvane::pane
