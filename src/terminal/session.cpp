#include "terminal/session.h"

#include <utility>

#include "base/encoding.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "terminal/texts.h"
#include "terminal/typed_fields.h"

namespace kolvane::terminal {

PostSendRule RuleFor(std::string_view command) {
  const std::string upper = base::UpperCase(command);
  const auto contains = [&upper](const char* word) { return upper.find(word) != std::string::npos; };
  if (contains("DCL")) return {.disconnects = true, .continues = false, .message = texts::kLocalDone};
  if (contains("RES") || contains("*RST"))
    return {.disconnects = true, .continues = false, .message = texts::kRestartDone};
  if (contains("STP")) return {.continues = false, .message = texts::kMeasuringStopped};
  return {};
}

bool IsQuery(std::string_view command) {
  char quote = 0;
  for (const char c : command) {
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '?') {
      return true;
    }
  }
  return false;
}

namespace {

std::string_view WithoutTerminator(std::string_view text, std::string_view terminator) {
  if (text.ends_with(kCrLf)) return text.substr(0, text.size() - kCrLf.size());
  // A CR LF is received up to its LF, so a device may have sent no CR, and a host stripped only the LF.
  if (terminator == kCrLf && !text.empty() && kCrLf.find(text.back()) != std::string_view::npos)
    return text.substr(0, text.size() - 1);
  return text.ends_with(terminator) ? text.substr(0, text.size() - terminator.size()) : text;
}

}  // namespace

void TrimAnswer(std::string& answer, std::string_view receive_terminator) {
  std::string_view kept = base::TrimBlanks(answer);
  if (kept.ends_with('\0')) kept.remove_suffix(1);
  kept = WithoutTerminator(kept, receive_terminator);
  const auto start = static_cast<std::size_t>(kept.data() - answer.data());
  answer.resize(start + kept.size());
  answer.erase(0, start);
}

void AppendDisplayForm(std::string_view bytes, bool binary, std::string& text) {
  if (!binary) {
    text += base::FromWindows1252(bytes);
    return;
  }
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  text.reserve(text.size() + 4 * bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const char form[] = {'<', kDigits[byte >> 4], kDigits[byte & 15], '>'};
    text.append(form, sizeof form);
  }
}

Sent Session::SendCommand(std::string_view command, bool /*print_command*/) {
  sent_ = false;
  if (!device_state_.connected) connect_.Press();
  if (!device_state_.connected) return Sent::kNotConnected;
  device_.ClearLastError();
  device_.Write(command, state_.receive.send_terminator, 0);
  const device::DeviceError error = device_.LastError();
  sent_ = error.code >= 0;
  if (sent_) return Sent::kWritten;
  output_.AppendText(LineKind::kError, texts::WriteError(error.description), 0);
  return Sent::kWriteFailed;
}

PostSendRule Session::PostSendCheck(std::string_view command) {
  PostSendRule rule = state_.extras.device_words ? RuleFor(command) : PostSendRule{};
  if (rule.disconnects) connect_.Press();
  if (state_.extras.queries_only && !IsQuery(command)) rule.continues = false;
  return rule;
}

bool Session::GetAnswer() {
  device_.ClearLastError();
  answer_.clear();
  state_.last_answer.bytes.clear();
  const bool received = ReadAnswer();
  state_.last_answer.text.swap(answer_);
  return received;
}

bool Session::ReadAnswer() {
  const bool awaited = std::exchange(sent_, false);
  try {
    device_.SetTimeout(TypedTimeout(state_.shown.timeout));
    return ReadAsSet();
  } catch (const base::RuntimeError& error) {
    if (!awaited) throw;
    throw base::RuntimeError(error.kind(), texts::AnswerToCome(error.what()));
  }
}

bool Session::ReadAsSet() {
  switch (state_.receive.mode) {
    case receive_mode::kTerminator:
      // What counts is the format that the list shows, not the display flag.
      return state_.shown.format != receive_format::kAscii || ReadToTerminator();
    case receive_mode::kAuto:
      return ReadToGap();
    case receive_mode::kCount:
      return ReadCounted();
    default:
      return true;
  }
}

bool Session::ReadToTerminator() {
  device_.ReadText(state_.receive.receive_terminator, kTextAnswerLimit, answer_, buffer_);
  const bool failed = FetchError();
  if (!failed) TrimAnswer(answer_, state_.receive.receive_terminator);
  output_.AddLine(failed ? LineKind::kError : LineKind::kAnswer, base::TrimBlanks(answer_));
  return !failed;
}

bool Session::ReadToGap() {
  gathered_.clear();
  buffer_.assign(kCountedAnswerLimit, 0);
  for (;;) {
    const std::size_t received = device_.ReadBinary(state_.receive.receive_terminator, 1, buffer_);
    // The byte past the limit is read and dropped.
    if (device_.LastError().code < 0 || received == 0 || gathered_.size() == kAutoAnswerLimit) break;
    gathered_ += static_cast<char>(buffer_.front());
    if (gathered_.size() == 1) device_.SetTimeout(kGapMs);
  }
  TakeBytes();
  output_.AddLine(LineKind::kAnswer, answer_);
  return !gathered_.empty();
}

bool Session::ReadCounted() {
  const std::size_t count = TypedCount(state_.shown.count);
  bool failed = false;
  if (count > 0) {
    buffer_.assign(kCountedAnswerLimit, 0);
    const std::size_t received =
        device_.ReadBinary(state_.receive.receive_terminator, static_cast<std::int32_t>(count), buffer_);
    failed = FetchError();
    if (!failed) {
      gathered_.assign(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(received));
      TakeBytes();
    }
  }
  output_.AddLine(failed ? LineKind::kError : LineKind::kAnswer, answer_);
  return !failed;
}

void Session::TakeBytes() {
  const bool binary = state_.receive.binary_display != 0;
  AppendDisplayForm(gathered_, binary, answer_);
  if (binary) state_.last_answer.bytes = gathered_;
}

bool Session::FetchError() {
  device::DeviceError error = device_.LastError();
  if (error.code >= 0) return false;
  answer_ = std::move(error.description);
  return true;
}

}  // namespace kolvane::terminal
