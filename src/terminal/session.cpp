#include "terminal/session.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/encoding.h"
#include "base/runtime_error.h"
#include "base/scope_exit.h"
#include "base/text.h"
#include "terminal/block_reader.h"
#include "terminal/receive_controls.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

namespace {

struct DeviceWord {
  std::string_view word;
  PostSendRule rule;
};

constexpr DeviceWord kDeviceWords[] = {
    {"DCL", {.disconnects = true, .continues = false, .message = texts::kLocalDone}},
    {"RES", {.disconnects = true, .continues = false, .message = texts::kRestartDone}},
    {"*RST", {.disconnects = true, .continues = false, .message = texts::kRestartDone}},
    {"STP", {.continues = false, .message = texts::kMeasuringStopped}}};

// The characters of all words, one bit each.
struct WordBits {
  constexpr WordBits() {
    unsigned bit = 1;
    for (const DeviceWord& each : kDeviceWords) {
      starts |= bit;
      for (const char c : each.word) {
        for (std::size_t any = 0; any < counts.size(); ++any)
          if (base::UpperAscii(static_cast<char>(any)) == c) counts[any] |= bit;
        bit <<= 1;
      }
      ends |= bit >> 1;
    }
  }

  unsigned starts = 0;
  unsigned ends = 0;
  std::array<unsigned, 256> counts{};  // by character
};
constexpr WordBits kBits;

}  // namespace

// Every command is searched, so this takes one pass: a bit of `matched` says that the word matches up to that
// character (the shift-and algorithm of Baeza-Yates and Gonnet).
[[gnu::hot]] PostSendRule RuleFor(std::string_view command) {
  unsigned matched = 0;
  unsigned found = 0;
  for (const char c : command) {
    matched = (matched << 1 | kBits.starts) & kBits.counts[static_cast<unsigned char>(c)];
    found |= matched & kBits.ends;
  }
  unsigned end = 0;
  for (const DeviceWord& each : kDeviceWords) {
    end += static_cast<unsigned>(each.word.size());
    if ((found >> (end - 1) & 1) != 0) return each.rule;
  }
  return {};
}

std::vector<std::string_view> DeviceWords() {
  std::vector<std::string_view> words;
  for (const DeviceWord& each : kDeviceWords) words.push_back(each.word);
  return words;
}

namespace {

std::string_view WithoutTerminator(std::string_view text, std::string_view terminator) {
  if (text.ends_with(kCrLf)) return text.substr(0, text.size() - kCrLf.size());
  // A CR LF is received up to its LF; a device may have sent no CR, or a host stripped only the LF.
  if (terminator == kCrLf && !text.empty() && kCrLf.find(text.back()) != std::string_view::npos)
    return text.substr(0, text.size() - 1);
  return text.ends_with(terminator) ? text.substr(0, text.size() - terminator.size()) : text;
}

// Whether the terminator's last byte, at which a read ends, is the last one.
bool EndsAt(std::string_view bytes, std::string_view terminator) {
  return !terminator.empty() && bytes.ends_with(terminator.back());
}

}  // namespace

[[gnu::hot]] void TrimAnswer(std::string& answer, std::string_view receive_terminator) {
  std::string_view kept = base::TrimSpaces(answer);
  if (kept.ends_with('\0')) kept.remove_suffix(1);
  kept = WithoutTerminator(kept, receive_terminator);
  const auto start = static_cast<std::size_t>(kept.data() - answer.data());
  answer.resize(start + kept.size());
  answer.erase(0, start);
}

void AppendByteForm(std::string_view bytes, std::string& text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  text.reserve(text.size() + 4 * bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const char form[] = {'<', kDigits[byte >> 4], kDigits[byte & 15], '>'};
    text.append(form, sizeof form);
  }
}

void AppendDisplayForm(std::string_view bytes, bool binary, std::string& text, bool utf8) {
  if (binary) {
    AppendByteForm(bytes, text);
  } else {
    text += base::FromDevice(bytes, utf8);
  }
}

bool Session::EnsureConnected() {
  if (state_.extras.reconnect && device_state_.connected) connect_.CheckForLoss();
  return Connect(!connect_.lost() || device_.BytesWaiting() <= 0);
}

// `restores`: a lost connection is restored, if that is wanted at all.
[[gnu::hot]] bool Session::Connect(bool restores) {
  if (connect_.lost() && state_.extras.reconnect) {
    if (restores) connect_.Reconnect();
  } else if (!device_state_.connected) {
    connect_.Press();
  }
  return device_state_.connected;
}

[[gnu::hot]] Sent Session::SendCommand(std::string_view command) {
  sent_ = false;
  write_failure_.clear();
  write_status_ = 0;
  if (state_.extras.reconnect && device_state_.connected) {
    connect_.CheckForLoss();
    connect_.CheckForHangUp();
  }
  if (!Connect(true)) return Sent::kNotConnected;
  if (state_.flush_first) device_.FlushInput();
  device_.ClearLastError();
  device_.Write(command, state_.receive.send_terminator, 0);
  const device::DeviceError error = device_.LastError();
  sent_ = error.code >= 0;
  if (sent_) return Sent::kWritten;
  write_status_ = error.code;
  output_.AppendText(LineKind::kError, texts::WriteError(error.description), 0);
  if (!error.words.empty()) write_failure_ = texts::Words(error, timeout_ms_);
  ShowWords(error);
  return Sent::kWriteFailed;
}

[[gnu::hot]] PostSendRule Session::PostSendCheck(std::string_view command) {
  PostSendRule rule = state_.extras.device_words ? RuleFor(command) : PostSendRule{};
  if (state_.QueriesOnly() && !base::IsQuery(command)) rule.continues = false;
  // Otherwise the read fails, too, and explains it.
  if (!rule.continues && !write_failure_.empty()) output_.Remark(LineKind::kError, write_failure_);
  if (rule.disconnects) connect_.Toggle();
  return rule;
}

[[gnu::hot]] bool Session::GetAnswer() {
  device_.ClearLastError();
  answer_.clear();
  answer_bytes_.clear();
  const bool received = ReadAnswer();
  state_.last_answer.text.swap(answer_);
  state_.last_answer.bytes.swap(answer_bytes_);
  return received;
}

[[gnu::hot]] void Session::ReportBytesWaiting() {
  if (!output_.ShowsState()) return;
  output_.ShowState(StateKind::kBytes, texts::BytesWaiting(device_.BytesWaiting()));
}

[[gnu::hot]] bool Session::ReadAnswer() {
  const base::ScopeExit read([this] { sent_ = false; });
  try {
    TakeTimeout();
    device_.SetTimeout(timeout_ms_);
    return ReadAsSet();
  } catch (const base::RuntimeError& error) {
    if (!sent_) throw;
    throw base::RuntimeError(error.kind(), texts::AnswerToCome(error.what()));
  }
}

[[gnu::hot]] void Session::TakeTimeout() {
  if (state_.shown.timeout == timeout_text_) return;
  timeout_ms_ = TypedTimeout(state_.shown.timeout);
  timeout_text_ = state_.shown.timeout;
}

[[gnu::hot]] bool Session::ReadAsSet() {
  switch (state_.receive.mode) {
    case receive_mode::kTerminator: {
      // The format shown in the list decides, not the display flag.
      if (state_.shown.format != receive_format::kAscii) return true;
      const std::optional<bool> block = ReadBlock();
      return block ? *block : ReadToTerminator();
    }
    case receive_mode::kAuto: {
      const std::optional<bool> block = ReadBlock();
      return block ? *block : ReadToGap();
    }
    case receive_mode::kCount:
      return ReadCounted();
    default:
      return true;
  }
}

namespace {

constexpr std::size_t kLongBlock = 16u << 10;  // bytes; shorter ones are too fast for a display

}  // namespace

[[gnu::hot]] std::optional<bool> Session::ReadBlock() {
  if (!state_.extras.blocks) return std::nullopt;
  const auto progress = [this](int percent, std::size_t bytes) {
    if (bytes >= kLongBlock) output_.ShowState(StateKind::kBlock, texts::BlockProgress(percent, bytes));
  };
  const auto result =
      BlockReader(device_, device_state_, state_.receive.receive_terminator, progress).Read(gathered_);
  output_.ShowState(StateKind::kBlock, {});
  switch (result) {
    case BlockReader::Result::kNoBlock:
      return std::nullopt;
    case BlockReader::Result::kNothing:
      // In mode 1 this is an empty answer.
      if (state_.receive.mode == receive_mode::kAuto) return ShowNothing(device_.LastError());
      break;
    case BlockReader::Result::kFailed:
      break;
    case BlockReader::Result::kTooLong:
      device_state_.last_result = device::device_status::kBlockTooLong;
      return ShowFailure({device::device_status::kBlockTooLong,
                          std::to_string(device::device_status::kBlockTooLong), texts::kBlockTooLong});
    case BlockReader::Result::kBlock:
      AppendGathered();
      return ShowAnswer(answer_);
  }
  return ShowFailure(device_.LastError());
}

namespace {

// A part of a UTF-8 character is decoded with its rest; a CR may be that of a CR LF.
bool NeedsNextByte(std::string_view bytes, std::string_view terminator, bool utf8) {
  if (bytes.ends_with('\r') && terminator.ends_with('\n')) return true;
  return utf8 && base::UnfinishedUtf8(bytes) > 0 && !EndsAt(bytes, terminator);
}

}  // namespace

// Read byte by byte, because the terminator may follow. False if reading fails.
bool Session::CompletePutBack(std::string_view terminator) {
  std::string& bytes = device_state_.put_back;
  while (NeedsNextByte(bytes, terminator, device_state_.utf8)) {
    const std::size_t received = device_.ReadBinary({}, 1, buffer_);
    if (device_.LastError().code < 0) return false;
    if (received == 0) break;
    bytes += static_cast<char>(buffer_.front());
  }
  return true;
}

// Bytes that an earlier read put back come first; they may already complete the answer.
[[gnu::hot]] bool Session::ReadToTerminator() {
  const std::string& terminator = state_.receive.receive_terminator;
  std::string put_back;
  std::string before;
  bool ended = false;
  if (!device_state_.put_back.empty()) {
    const std::string bytes = base::ToWindows1252(terminator);
    if (!CompletePutBack(bytes)) return ShowFailure(device_.LastError());
    put_back = std::exchange(device_state_.put_back, {});
    before = base::FromDevice(put_back, device_state_.utf8);
    ended = EndsAt(put_back, bytes);
  }
  if (!ended) {
    const auto left = kTextAnswerLimit - static_cast<std::int32_t>(put_back.size());
    device_.ReadText(terminator, left, answer_, buffer_);
    if (const device::DeviceError error = device_.LastError(); error.code < 0) {
      device_state_.put_back = std::move(put_back);
      return ShowFailure(error);
    }
  }
  if (!before.empty()) answer_.insert(0, before);
  TrimAnswer(answer_, terminator);
  return ShowAnswer(base::TrimSpaces(answer_));
}

bool Session::ReadToGap() {
  gathered_ = std::exchange(device_state_.put_back, {});
  if (!gathered_.empty()) device_.SetTimeout(kGapMs);
  buffer_.assign(kCountedAnswerLimit, 0);
  device::DeviceError error;
  for (;;) {
    const std::size_t received = device_.ReadBinary(state_.receive.receive_terminator, 1, buffer_);
    error = device_.LastError();
    // The byte beyond the limit is read and dropped.
    if (error.code < 0 || received == 0 || gathered_.size() == kAutoAnswerLimit) break;
    gathered_ += static_cast<char>(buffer_.front());
    if (gathered_.size() == 1) device_.SetTimeout(kGapMs);
  }
  if (gathered_.empty()) return ShowNothing(error);
  AppendGathered();
  return ShowAnswer(answer_);
}

bool Session::ReadCounted() {
  const std::size_t count = TypedCount(state_.shown.count);
  gathered_.clear();
  // Only bytes put back can make a read unnecessary, not a count of 0.
  if (count > device_state_.put_back.size() || device_state_.put_back.empty()) {
    buffer_.assign(kCountedAnswerLimit, 0);
    const std::size_t left = count - device_state_.put_back.size();
    const std::size_t received =
        device_.ReadBinary(state_.receive.receive_terminator, static_cast<std::int32_t>(left), buffer_);
    if (const device::DeviceError error = device_.LastError(); error.code < 0) return ShowFailure(error);
    gathered_.assign(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(received));
  }
  gathered_.insert(0, device_state_.put_back, 0, count);
  device_state_.put_back.erase(0, count);
  sent_ = false;  // the answer has been read, even if it is dropped
  CheckCount(count);
  AppendGathered();
  return ShowAnswer(answer_);
}

void Session::AppendGathered() {
  const bool binary = state_.receive.ShowsBytes();
  AppendDisplayForm(gathered_, binary, answer_, device_state_.utf8);
  if (binary) answer_bytes_ = gathered_;
}

[[gnu::hot]] bool Session::ShowAnswer(std::string_view shown) {
  output_.AddLine(LineKind::kAnswer, shown);
  output_.ShowState(StateKind::kWords, {});
  return true;
}

// The answer is the error's description.
bool Session::ShowFailure(const device::DeviceError& error) {
  answer_ = error.description;
  output_.AddLine(LineKind::kError, state_.receive.mode == receive_mode::kTerminator
                                        ? base::TrimSpaces(answer_)
                                        : std::string_view(answer_));
  NoteFailure(error);
  return false;
}

// Mode 1: the error ends the answer and is not the answer, which is empty.
bool Session::ShowNothing(const device::DeviceError& error) {
  output_.AddLine(LineKind::kError, {});
  output_.ShowState(StateKind::kWords, {});
  NoteFailure(error);
  return false;
}

void Session::NoteFailure(const device::DeviceError& error) {
  ShowWords(error);
  output_.Remark(LineKind::kError, texts::Words(error, timeout_ms_));
}

void Session::ShowWords(const device::DeviceError& error) {
  if (error.words.empty()) return;
  output_.ShowState(StateKind::kWords, texts::Words(error, timeout_ms_));
  if (device::EndsConnection(error.code)) connect_.NoteLoss();
}

}  // namespace kolvane::terminal
