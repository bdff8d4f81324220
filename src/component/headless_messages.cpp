#include "component/headless_messages.h"

#include "base/write_all.h"

namespace kolvane::component {
namespace {

// Line breaks become one blank each, those at the ends go.
std::string OneLine(std::string_view text) {
  std::string line;
  bool broken = false;
  for (const char c : text) {
    if (c == '\r' || c == '\n') {
      broken = true;
      continue;
    }
    if (broken && !line.empty()) line += ' ';
    broken = false;
    line += c;
  }
  return line;
}

}  // namespace

void HostLines::Hand(LineKind kind, const std::string& line) {
  if (failed()) return;
  try {
    handler_(kind, line);
  } catch (...) {
    thrown_ = std::current_exception();
  }
}

void HostLines::Rethrow() const {
  if (failed()) std::rethrow_exception(thrown_);
}

void HeadlessMessages::Show(LineKind kind, std::string_view text) {
  if (host_ != nullptr) return host_->Hand(kind, OneLine(text));
  // Whoever closed standard error does not want to know.
  (void)base::WriteAll(descriptor_, "kolvane: " + OneLine(text) + "\n");
}

}  // namespace kolvane::component
