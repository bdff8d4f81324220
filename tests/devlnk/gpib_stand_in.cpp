// A driver library for the GPIB bus that plays a script.
#include "devlnk/gpib_stand_in.h"

#include <algorithm>
#include <cstring>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

using kolvane::devlnk::GpibScript;
using kolvane::devlnk::GpibStep;

constexpr int kError = 0x8000;
constexpr int kTimedOut = 0x4000;
constexpr int kAborted = 6;

GpibScript script;
int last_status = 0;
int last_error = 0;
long last_count = 0;

template <typename... Values>
void Record(const std::string& name, Values... values) {
  script.calls.push_back(name + (... + (" " + std::to_string(values))));
}

int Finish(const GpibStep& step, std::size_t count) {
  last_status = step.status;
  last_error = step.error;
  last_count = step.system_error != 0 ? step.system_error : static_cast<long>(count);
  return last_status;
}

int FinishPlain(int error) {
  if (error < 0) return Finish({}, 0);
  return Finish({"", kError, error, script.system_error}, 0);
}

GpibStep Next(std::deque<GpibStep>& steps, GpibStep otherwise) {
  if (steps.empty()) return otherwise;
  const GpibStep step = steps.front();
  steps.pop_front();
  return step;
}

}  // namespace

EXPORTED GpibScript* StandInScript() { return &script; }

EXPORTED int ibdev(int board, int primary, int secondary, int timeout, int send_eoi, int eos) {
  Record("dev", board, primary, secondary, timeout, send_eoi, eos);
  FinishPlain(script.open_error);
  return script.open_error < 0 ? 70 + primary : -1;
}
EXPORTED int ibwrt(int device, const void* bytes, long count) {
  const std::string text(static_cast<const char*>(bytes), static_cast<std::size_t>(count));
  script.calls.push_back("wrt " + std::to_string(device) + " " + text);
  const GpibStep step = Next(script.writes, {text});
  return Finish(step, step.bytes.size());
}
EXPORTED int ibrd(int device, void* room, long count) {
  Record("rd", device);
  const GpibStep step = Next(script.reads, {"", kError | kTimedOut, kAborted});
  const std::size_t size = std::min(step.bytes.size(), static_cast<std::size_t>(count));
  if (size > 0) std::memcpy(room, step.bytes.data(), size);
  return Finish(step, size);
}
EXPORTED int ibtmo(int device, int timeout) {
  Record("tmo", device, timeout);
  return FinishPlain(-1);
}
EXPORTED int ibclr(int device) {
  Record("clr", device);
  return FinishPlain(script.clear_error);
}
EXPORTED int ibrsp(int device, char* status_byte) {
  Record("rsp", device);
  const GpibStep step = Next(script.polls, {std::string(1, '\0')});
  *status_byte = step.bytes.empty() ? '\0' : step.bytes.front();
  return Finish(step, 0);
}
EXPORTED int ibonl(int device, int online) {
  Record("onl", device, online);
  return FinishPlain(-1);
}
EXPORTED int ibconfig(int device, int option, int value) {
  Record("config", device, option, value);
  return FinishPlain(-1);
}
EXPORTED int ThreadIberr() { return last_error; }
EXPORTED long ThreadIbcntl() { return last_count; }
