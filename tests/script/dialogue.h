#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/encoding.h"
#include "device/fake_device.h"

namespace kolvane::script {

/// What an instrument receives and sends, as lists/README.md describes it.
namespace dialogue {

inline std::string Escaped(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    char code[8] = {c, '\0'};
    if (c == '\r' || c == '\n' || c == '\\') {
      std::snprintf(code, sizeof code, "\\%c", c == '\r' ? 'r' : c == '\n' ? 'n' : '\\');
    } else if (byte < 32 || byte > 126) {
      std::snprintf(code, sizeof code, "\\x%02X", byte);
    }
    text += code;
  }
  return text;
}

inline std::string Unescaped(std::string_view text) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\') {
      bytes += text[at];
      continue;
    }
    const char kind = text.at(++at);
    if (kind == 'x') {
      bytes += static_cast<char>(std::stoi(std::string(text.substr(at + 1, 2)), nullptr, 16));
      at += 2;
    } else {
      bytes += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind;
    }
  }
  return bytes;
}

/// The reply, in bytes, to each command of a dialogue.
inline std::vector<std::string> Replies(std::string_view text) {
  std::vector<std::string> replies;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.starts_with("> ")) replies.emplace_back();
    if (line.starts_with("< ") && !replies.empty()) replies.back() += Unescaped(line.substr(2));
  }
  return replies;
}

}  // namespace dialogue

/// An instrument that answers according to a dialogue and records the actual one. A command that the dialogue
/// lacks is not answered.
class DialogueDevice final : public device::Device {
 public:
  explicit DialogueDevice(std::string_view text) : replies_(dialogue::Replies(text)) {}

  const std::string& transcript() const { return transcript_; }

  void Open() override {}
  void Close() override {}
  void Write(std::string_view command, std::string_view terminator, std::int16_t /*extra*/) override {
    transcript_ += "> " + dialogue::Escaped(base::ToWindows1252(command) + std::string(terminator)) + "\n";
    if (commands_ >= replies_.size()) return;
    const std::string& reply = replies_[commands_++];
    if (!reply.empty()) transcript_ += "< " + dialogue::Escaped(reply) + "\n";
    incoming_ += reply;
  }
  void ReadText(std::string_view terminator, std::int32_t /*count*/, std::string& answer,
                Bytes& /*buffer*/) override {
    const std::size_t end = incoming_.find(terminator);
    error_ = end == std::string::npos ? device::FakeDevice::TimeOut() : device::DeviceError{};
    if (end == std::string::npos) return;
    answer = base::FromWindows1252(incoming_.substr(0, end + terminator.size()));
    incoming_.erase(0, end + terminator.size());
  }
  std::size_t ReadBinary(std::string_view, std::int32_t, Bytes&) override {
    error_ = device::FakeDevice::TimeOut();
    return 0;
  }
  void SetTimeout(std::int32_t) override {}
  device::DeviceError LastError() override { return error_; }
  void ClearLastError() override { error_ = {}; }
  std::optional<std::int32_t> FlushInput() override { return std::nullopt; }
  void ActivateInterpreter() override {}

 private:
  std::vector<std::string> replies_;
  std::size_t commands_ = 0;
  std::string incoming_;
  std::string transcript_;
  device::DeviceError error_;
};

}  // namespace kolvane::script
