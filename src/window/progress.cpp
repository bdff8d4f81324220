#include "window/progress.h"

#include "base/ui/qt_text.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr int kDisplayIntervalMs = 30;

}  // namespace

Progress::Progress(QWidget* parent, const QString& label, int appears_after_ms)
    : dialog_(parent, base::ToQt(texts::kProgram), label, appears_after_ms) {
  // From now on the time counts after which it appears.
  dialog_.ShowShare(0);
  since_shown_.start();
}

bool Progress::Advance(std::size_t done, std::size_t whole) {
  if (since_shown_.elapsed() < kDisplayIntervalMs) return !dialog_.wasCanceled();
  since_shown_.start();
  const double part = whole == 0 ? 0 : static_cast<double>(done) / static_cast<double>(whole);
  dialog_.ShowShare(part);
  return !dialog_.wasCanceled();
}

}  // namespace kolvane::window
