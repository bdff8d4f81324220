#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <cstddef>
#include <vector>

namespace kolvane::window {

/// UTF-16 units [begin, begin + length) of a line with a look of their own.
struct PrintRun {
  int begin;
  int length;
  QColor color;  ///< not valid: the text's own
  bool bold = false;
};

/// One line of text to print; what no run covers looks like the text itself.
struct PrintLine {
  QString text;
  std::vector<PrintRun> runs;
};

/// Lines to print. They may become fewer while printing goes on.
class PrintSource {
 public:
  virtual ~PrintSource() = default;
  virtual std::size_t LineCount() const = 0;
  virtual PrintLine Line(std::size_t line) const = 0;
};

/// How lines are printed.
struct PrintStyle {
  QString caption;  ///< on top of each page
  QFont font;
  QColor text;  ///< the text's own colour; one too pale for paper becomes black
};

}  // namespace kolvane::window
