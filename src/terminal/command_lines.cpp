#include "terminal/command_lines.h"

#include <string>

#include "base/codepage.h"
#include "base/runtime_error.h"
#include "base/take_line.h"
#include "terminal/texts.h"

namespace kolvane::terminal {
namespace {

// True for as long as it lives.
class Mark {
 public:
  explicit Mark(bool& flag) : flag_(flag) { flag_ = true; }
  ~Mark() { flag_ = false; }
  Mark(const Mark&) = delete;
  Mark& operator=(const Mark&) = delete;

 private:
  bool& flag_;
};

void RequireCodePage(std::string_view text) {
  const std::string_view outside = base::OutsideWindows1252(text);
  if (!outside.empty())
    throw base::RuntimeError(base::RuntimeError::Kind::kInvalidArgument, texts::NotSendable(outside));
}

}  // namespace

void CommandLines::Send(std::string_view text, const std::function<void()>& between) {
  if (sending_) return;
  RequireCodePage(text);
  const Mark sending(sending_);
  stopped_ = false;
  while (!text.empty() && !stopped_) {
    const std::string_view line = base::TakeLine(text);
    if (line.empty()) continue;
    if (!interactive_.Send(line)) return;
    if (!text.empty()) between();
  }
}

}  // namespace kolvane::terminal
