#include "window/text_decoder.h"

#include <algorithm>
#include <utility>

#include "base/codepage.h"
#include "base/utf8.h"

namespace kolvane::window {
namespace {

// Bytes at the end of `text` that begin a sequence and do not end it.
std::size_t Incomplete(std::string_view text) {
  for (std::size_t back = 1; back <= std::min<std::size_t>(3, text.size()); ++back) {
    const char c = text[text.size() - back];
    if (!base::IsUtf8Continuation(c)) return base::Utf8Length(c) > back ? back : 0;
  }
  return 0;
}

}  // namespace

std::string TextDecoder::Decode(std::string_view bytes) {
  if (!std::exchange(begun_, true)) {
    utf8_ = bytes.starts_with(base::kUtf8Mark);
    if (utf8_) bytes.remove_prefix(base::kUtf8Mark.size());
  }
  pending_ += bytes;
  const std::size_t complete = Complete();
  std::string piece = pending_.substr(0, complete);
  pending_.erase(0, complete);
  return utf8_ ? piece : base::FromWindows1252(piece);
}

std::string TextDecoder::Finish() {
  const std::string rest = std::exchange(pending_, {});
  return utf8_ ? rest : base::FromWindows1252(rest);
}

std::size_t TextDecoder::Complete() const {
  const std::size_t held_back = utf8_ ? Incomplete(pending_) : 0;
  return pending_.size() - (pending_.ends_with('\r') ? 1 : held_back);
}

}  // namespace kolvane::window
