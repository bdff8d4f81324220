#include "faults/shim_run.h"

#include <errno.h>
#include <signal.h>

#include <filesystem>

#include "base/temp_folder.h"

namespace kolvane::faults {

namespace {

constexpr int kLongestRunMs = 30'000;

// Long enough for a busy machine; used if nothing fails or if answers arrive nonetheless.
constexpr char kLongMs[] = "5000";

const char* TimeoutMs(const FailingCall& failing) {
  return failing.kind == "short" || failing.kind == std::to_string(EINTR) ? kLongMs : "250";
}

}  // namespace

std::string Describe(const FailingCall& failing, int nth) {
  return failing.call + " " + failing.kind + (failing.once ? " once" : " on") + ", number " +
         std::to_string(nth);
}

std::map<std::string, std::string> ShimEnvironment(const FailingCall& failing, int nth,
                                                   const std::string& hit_file) {
  return {{"LD_PRELOAD", KOLVANE_FAULT_SHIM},
          {"FAULT_CALL", failing.call},
          {"FAULT_KIND", failing.kind},
          {"FAULT_NTH", std::to_string(nth)},
          {"FAULT_LAST", failing.once ? "once" : "on"},
          {"FAULT_FILE", hit_file}};
}

namespace {

ShimRun RunOnce(const FailingCall& failing, int nth, FaultyInstrument& instrument, const char* timeout_ms) {
  base::TempFolder folder;
  base::WriteBytes(folder.Path("a.CMD"), "ONE\r\nTWO\r\nTHREE\r\n");
  std::map<std::string, std::string> environment = instrument.Environment();
  environment.merge(ShimEnvironment(failing, nth, folder.Path("hit")));
  app::Program program({"run", folder.Path("a.CMD"), "--connect", instrument.Resource(), "--timeout",
                        timeout_ms, "--log", folder.Path("a.LOG")},
                       {.environment = environment});
  ShimRun run;
  run.hung = !program.EndsWithin(kLongestRunMs);
  if (run.hung) program.Signal(SIGKILL);
  run.outcome = program.Wait();
  run.log = base::ReadBytes(folder.Path("a.LOG"));
  run.hit = std::filesystem::exists(folder.Path("hit"));
  return run;
}

}  // namespace

ShimRun RunWithShim(const FailingCall& failing, int nth, FaultyInstrument& instrument) {
  const ShimRun run = RunOnce(failing, nth, instrument, TimeoutMs(failing));
  return run.hit || run.hung ? run : RunOnce(failing, nth, instrument, kLongMs);
}

}  // namespace kolvane::faults
