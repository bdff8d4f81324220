#include "terminal/unasked.h"

#include <algorithm>
#include <utility>

#include "base/descriptor.h"
#include "terminal/session.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

bool Unasked::Take() {
  const std::int32_t waiting = device_.BytesWaiting();
  if (waiting <= 0) return Probe();
  if (!state_.extras.listen) {
    output_.ShowState(StateKind::kBytes, texts::BytesWaiting(waiting));
    connect_.CheckForHangUp();
    return false;
  }
  const auto count = std::min(static_cast<std::size_t>(waiting), kMaxAtOnce);
  std::string bytes = std::exchange(device_state_.put_back, {});
  const std::size_t left = count - std::min(count, bytes.size());
  if (left > 0) {
    const std::size_t received = device_.ReadBinary({}, static_cast<std::int32_t>(left), buffer_);
    if (device_.LastError().code < 0) {
      device_state_.put_back = std::move(bytes);
      return Probe();
    }
    bytes.append(reinterpret_cast<const char*>(buffer_.data()), received);
  }
  ShowLines(bytes);
  output_.ShowState(StateKind::kBytes, {});
  return true;
}

bool Unasked::Probe() {
  // If the received bytes have already been read elsewhere, the probe would wait for more.
  const int descriptor = device_.WaitDescriptor();
  if (descriptor >= 0 && !base::IsReadable(descriptor)) return true;
  if (connect_.Probe()) return true;
  ShowPartialLine();
  return false;
}

// Lines end at the receive terminator, or at LF if none is set.
void Unasked::ShowLines(std::string_view bytes) {
  const std::string& terminator = state_.receive.receive_terminator;
  const char last = terminator.empty() ? '\n' : terminator.back();
  for (std::size_t end; (end = bytes.find(last)) != std::string_view::npos; bytes.remove_prefix(end + 1)) {
    partial_line_ += bytes.substr(0, end);
    ShowLine();
  }
  partial_line_ += bytes;
  // A line without an end is shown in parts.
  if (partial_line_.size() >= kMaxAtOnce) ShowPartialLine();
}

void Unasked::ShowPartialLine() {
  if (HasPartialLine()) ShowLine();
}

void Unasked::ShowLine() {
  if (partial_line_.ends_with('\r')) partial_line_.pop_back();
  std::string line;
  AppendDisplayForm(partial_line_, state_.receive.ShowsBytes(), line, device_state_.utf8);
  partial_line_.clear();
  output_.AddLine(LineKind::kAnswer, line);
}

}  // namespace kolvane::terminal
