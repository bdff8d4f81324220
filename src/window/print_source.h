#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <cstddef>
#include <vector>

namespace kolvane::window {

/// UTF-16 units [begin, begin + length) of a line in a colour of their own.
struct PrintRun {
  int begin;
  int length;
  QColor color;
};

/// One line of text to print; what no run covers is in the text's own colour.
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
