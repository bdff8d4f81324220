#include "pane/ui/output_pane_metrics.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/ui/qt_text.h"
#include "pane/pane_moves.h"

namespace kolvane::pane {
namespace {

constexpr int kTabSpaces = 8;
constexpr std::size_t kMaxMeasured = 4096;
constexpr char16_t kParagraphSign = 0xB6;

QFont Unshaped(QFont font) {
  font.setKerning(false);
  font.setStyleStrategy(QFont::StyleStrategy(font.styleStrategy() | QFont::PreferNoShaping));
  return font;
}

QFont Bold(QFont font) {
  font.setBold(true);
  return font;
}

std::uint8_t ByteOf(char c) { return static_cast<std::uint8_t>(c); }

bool IsOneByte(std::string_view text, std::size_t at) {
  return ByteOf(text[at]) < 0x80 && (at + 1 == text.size() || ByteOf(text[at + 1]) < 0x80);
}

// 1 for control characters except line breaks, and for bytes of characters beyond Latin-1.
std::uint8_t IsOdd(std::uint8_t byte) {
  const unsigned control = static_cast<unsigned>(byte < ' ') & static_cast<unsigned>(byte != '\n');
  return static_cast<std::uint8_t>(control | static_cast<unsigned>(byte == 0x7F) |
                                   static_cast<unsigned>(byte > 0xC3));
}

// Shown as U+FFFD, which few fonts have: another font would be loaded only to measure it.
bool IsC1(std::size_t value) { return value > 0x7F && value < 0xA0; }

bool MayBreakAfter(char c) { return c == ' ' || c == '\t' || c == ',' || c == ';' || c == '>'; }

}  // namespace

OutputPaneMetrics::OutputPaneMetrics(const QFont& font)
    : plain_font_(Unshaped(font)),
      cluster_font_(font),
      bold_font_(Bold(font)),
      metrics_(plain_font_),
      row_height_(static_cast<int>(std::ceil(metrics_.height()))),
      ascent_(std::ceil(metrics_.ascent())) {
  for (std::size_t value = 0; value < narrow_.size(); ++value) {
    if (IsC1(value)) continue;
    const QString shown = Shown(base::FromQt(QChar(static_cast<char16_t>(value))));
    narrow_[value] = metrics_.horizontalAdvance(shown);
    if (value >= ' ' && value != 0x7F) widest_ = std::max(widest_, narrow_[value]);
  }
  const bool fixed = std::all_of(narrow_.begin() + ' ', narrow_.begin() + 0x7F,
                                 [this](qreal advance) { return advance == space_width(); });
  if (fixed) fixed_ = space_width();
}

qreal OutputPaneMetrics::Advance(std::string_view cluster, qreal x) const {
  const std::uint8_t lead = ByteOf(cluster.front());
  if (lead == '\t') {
    const qreal stop = kTabSpaces * space_width();
    return (std::floor(x / stop) + 1) * stop - x;
  }
  if (cluster.size() == 1) return narrow_[lead];
  const bool latin1 = cluster.size() == 2 && lead <= 0xC3;
  const char32_t value = latin1 ? DecodeAt(cluster, 0).value : 0;
  return latin1 && !IsC1(value) ? narrow_[value] : Measured(cluster);
}

qreal OutputPaneMetrics::Measured(std::string_view cluster) const {
  std::string key(cluster);
  const auto known = measured_.find(key);
  if (known != measured_.end()) return known->second;
  if (measured_.size() >= kMaxMeasured) measured_.clear();
  const qreal advance = QFontMetricsF(cluster_font_).horizontalAdvance(Shown(cluster));
  measured_.emplace(std::move(key), advance);
  return advance;
}

qreal OutputPaneMetrics::X(std::string_view row, std::size_t at) const {
  qreal x = 0;
  for (std::size_t begin = 0; begin < at;) {
    const std::size_t end = IsOneByte(row, begin) ? begin + 1 : ClusterEnd(row, begin);
    x += Advance(row.substr(begin, end - begin), x);
    begin = end;
  }
  return x;
}

std::size_t OutputPaneMetrics::ByteAt(std::string_view row, qreal x) const {
  qreal left = 0;
  for (std::size_t begin = 0; begin < row.size();) {
    const std::size_t end = ClusterEnd(row, begin);
    const qreal advance = Advance(row.substr(begin, end - begin), left);
    if (x < left + advance / 2) return begin;
    left += advance;
    begin = end;
  }
  return row.size();
}

std::size_t OutputPaneMetrics::NextRow(std::string_view line, std::size_t row, qreal width,
                                       bool printable) const {
  if (printable && fixed_ > 0) return NextFixedRow(line, row, static_cast<std::size_t>(width / fixed_));
  std::size_t candidate = row;
  qreal x = 0;
  for (std::size_t at = row; at < line.size();) {
    const std::size_t end = IsOneByte(line, at) ? at + 1 : ClusterEnd(line, at);
    x += Advance(line.substr(at, end - at), x);
    if (x > width && at > row) {
      if (line[at] == ' ') return end;
      return candidate > row ? candidate : at;
    }
    if (MayBreakAfter(line[end - 1])) candidate = end;
    at = end;
  }
  return line.size();
}

// NextRow by counting only: a million lines wrap again while the window is being resized.
std::size_t OutputPaneMetrics::NextFixedRow(std::string_view line, std::size_t row,
                                            std::size_t columns) const {
  const std::size_t full = row + std::max<std::size_t>(columns, 1);
  if (full >= line.size()) return line.size();
  if (line[full] == ' ') return full + 1;
  for (std::size_t at = full; at > row; --at) {
    if (MayBreakAfter(line[at - 1])) return at;
  }
  return full;
}

// U+FFFD is not measured. What it is shown for has two bytes, so it fits even if it is twice as wide as any
// other.
std::size_t OutputPaneMetrics::SurelyFitting(qreal width) const {
  return width > 0 && widest_ > 0 ? static_cast<std::size_t>(width / widest_) : 0;
}

bool OutputPaneMetrics::IsOrdinary(std::string_view text) {
  // In pieces without an early exit, so that the compiler uses vector instructions.
  constexpr std::size_t kPiece = 64;
  for (; text.size() >= kPiece; text.remove_prefix(kPiece)) {
    std::uint8_t odd = 0;
    for (std::size_t i = 0; i < kPiece; ++i) odd |= IsOdd(ByteOf(text[i]));
    if (odd != 0) return false;
  }
  return std::none_of(text.begin(), text.end(), [](char c) { return IsOdd(ByteOf(c)) != 0; });
}

bool OutputPaneMetrics::IsPrintable(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 0x7F; });
}

bool OutputPaneMetrics::IsPlain(std::string_view cluster) {
  const std::uint8_t lead = ByteOf(cluster.front());
  if (cluster.size() == 1) return lead >= ' ' && lead < 0x7F;
  if (cluster.size() != 2 || lead > 0xC3) return false;
  const char32_t value = DecodeAt(cluster, 0).value;
  return value >= 0xA0 && value != 0xAD;
}

QString OutputPaneMetrics::Shown(std::string_view cluster) {
  const char32_t value = DecodeAt(cluster, 0).value;
  // As terminals do: ^@ for NUL, ^[ for ESC, ^? for DEL. Most fonts lack pictures of control characters.
  if (value < ' ' || value == 0x7F) return QString(u'^') + QChar(static_cast<char16_t>(value ^ 0x40));
  if (IsC1(value)) return QChar(QChar::ReplacementCharacter);
  if (value == 0x2028 || value == 0x2029) return QChar(kParagraphSign);
  return base::ToQt(cluster);
}

}  // namespace kolvane::pane
