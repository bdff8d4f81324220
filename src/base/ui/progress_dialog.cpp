#include "base/ui/progress_dialog.h"

namespace kolvane::base {
namespace {

constexpr int kSteps = 1000;

}  // namespace

ProgressDialog::ProgressDialog(QWidget* parent, const QString& title, const QString& what,
                               int appears_after_ms)
    : QProgressDialog(what, QStringLiteral("Abbrechen"), 0, kSteps, parent) {
  setObjectName(QStringLiteral("ProgressDialog"));
  setWindowTitle(title);
  setWindowModality(Qt::WindowModal);
  setMinimumDuration(appears_after_ms);
  setAutoReset(false);
  setAutoClose(false);
}

void ProgressDialog::ShowShare(double share) { setValue(static_cast<int>(share * kSteps)); }

}  // namespace kolvane::base
