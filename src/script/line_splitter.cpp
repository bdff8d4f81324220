#include "script/line_splitter.h"

namespace kolvane::script {
namespace {

std::size_t FindLineEnd(std::string_view text, std::size_t from) {
  while (from < text.size() && text[from] != '\r' && text[from] != '\n') ++from;
  return from;
}

}  // namespace

void LineSplitter::Feed(std::string_view bytes) {
  std::size_t at = 0;
  while (at < bytes.size()) {
    if (after_cr_ && bytes[at] == '\n') ++at;
    after_cr_ = false;
    const std::size_t end = FindLineEnd(bytes, at);
    if (end == bytes.size()) {
      pending_ += bytes.substr(at);
      return;
    }
    EndLine(bytes.substr(at, end - at));
    after_cr_ = bytes[end] == '\r';
    at = end + 1;
  }
}

void LineSplitter::Finish() {
  if (!pending_.empty()) EndLine({});
}

void LineSplitter::EndLine(std::string_view tail) {
  if (pending_.empty()) return sink_(tail);
  pending_ += tail;
  sink_(pending_);
  pending_.clear();
}

}  // namespace kolvane::script
