#include "window/progress.h"

#include "base/ui/qt_text.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr int kSteps = 1000;
constexpr int kDisplayIntervalMs = 30;

}  // namespace

Progress::Progress(QWidget* parent, const QString& label, int appears_after_ms) : dialog_(parent) {
  dialog_.setObjectName(QStringLiteral("ProgressDialog"));
  dialog_.setWindowTitle(base::ToQt(texts::kProgram));
  dialog_.setLabelText(label);
  dialog_.setCancelButtonText(QStringLiteral("Abbrechen"));
  dialog_.setWindowModality(Qt::WindowModal);
  dialog_.setMinimumDuration(appears_after_ms);
  dialog_.setRange(0, kSteps);
  // The dialog closes at the end of the work, not with the last step.
  dialog_.setAutoReset(false);
  dialog_.setAutoClose(false);
  dialog_.setValue(0);
  since_shown_.start();
}

bool Progress::Advance(std::size_t done, std::size_t whole) {
  if (since_shown_.elapsed() < kDisplayIntervalMs) return !dialog_.wasCanceled();
  since_shown_.start();
  const double part = whole == 0 ? 0 : static_cast<double>(done) / static_cast<double>(whole);
  dialog_.setValue(static_cast<int>(part * kSteps));
  return !dialog_.wasCanceled();
}

}  // namespace kolvane::window
