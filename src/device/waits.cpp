#include "device/waits.h"

#include <new>

#include "base/scope_exit.h"
#include "device/device_state.h"

namespace kolvane::device {
namespace {

constexpr double kPace = 0.050;  // seconds

}  // namespace

Waits::Waits(PortLibrarySource& source, const base::Clock& clock, WaitListener& listener)
    : source_(source), clock_(clock), listener_(listener) {
  source_.SetWaitHandler({&Waits::Handle, this});
}

Waits::~Waits() { source_.SetWaitHandler({}); }

[[gnu::hot]] void Waits::StartOperation() {
  timed_ = false;
  reported_ = false;
  given_up_ = false;
}

[[gnu::hot]] void Waits::End() {
  if (reported_) listener_.WaitEnded();
}

// Start the clock only once something takes long: an immediate answer costs nothing.
void Waits::StartAt(double seconds) {
  if (timed_) return;
  timed_ = true;
  start_ = last_reported_ = seconds;
}

bool Waits::Attend() {
  const double now = clock_.Seconds();
  StartAt(now);
  return now - last_reported_ < kPace ? !given_up_ : Report(now);
}

bool Waits::AttendNow() {
  const double now = clock_.Seconds();
  StartAt(now);
  return Report(now);
}

bool Waits::Report(double now) {
  if (attending_ || given_up_) return !given_up_;
  attending_ = true;
  const base::ScopeExit ended([this] { attending_ = false; });
  reported_ = depth_ > 0;
  last_reported_ = now;
  try {
    given_up_ = !listener_.Waiting(operation_, now - start_);
  } catch (const std::bad_alloc&) {
    given_up_ = true;
  }
  return !given_up_;
}

std::int32_t Waits::Handle(void* context, std::int32_t waited_ms) {
  auto& waits = *static_cast<Waits*>(context);
  const double now = waits.clock_.Seconds();
  if (waits.depth_ == 0) waits.StartOperation();
  waits.StartAt(now - waited_ms / 1000.0);
  return waits.Report(now) ? 0 : 1;
}

std::int32_t Waits::Delay(std::int32_t milliseconds) {
  PortLibrary* library = source_.Library();
  if (library == nullptr) return device_status::kNoPortLibrary;
  const Scope scope(*this, Operation::kDelay);
  BeforeLibraryCall();
  return library->Delay(milliseconds);
}

}  // namespace kolvane::device
