#pragma once

#include <string>
#include <string_view>

#include "base/descriptor.h"
#include "base/prompt.h"
#include "terminal/output.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

/// A log on disk: Windows-1252 lines ended by CR LF, appended to the file's content. Each line is in the file
/// when WriteLine returns.
class LogFile {
 public:
  /// Closes any open file, then opens `path` (UTF-8), creating it if needed. Returns 0 or an errno.
  [[nodiscard]] int Open(const std::string& path);
  bool IsOpen() const { return static_cast<bool>(file_); }

  /// Returns 0 or an errno; a line that could not be written in full leaves nothing of itself in the file.
  [[nodiscard]] int WriteLine(std::string_view line);
  void Close() { file_ = {}; }

 private:
  base::Descriptor file_;
};

/// State of the recording button TB_RECORDLOG. Closing the log releases it and resets its image, but not its
/// tag and tool tip: if a log is closed while recording, the next one needs two presses to start recording.
struct LogButtonState {
  static constexpr int kRecordingImage = 25;
  static constexpr int kNotRecordingImage = 28;

  int tag = 0;  ///< 1 from the press that starts recording to the one that ends it
  int image = kNotRecordingImage;
  std::string_view tool_tip = texts::kStartRecordingTip;
  bool pressed = false;
};

/// Notified when the log has been opened or closed, or its button pressed.
class LogObserver {
 public:
  virtual ~LogObserver() = default;
  virtual void LogChanged() = 0;
};

/// A terminal's log: its file, the recording flag and the button's state. If the file cannot be opened or
/// written, one message is shown and the log ends; it is closed before the message is shown, so that nothing
/// that happens while the message is open finds a log.
class LogControl final : public Log {
 public:
  LogControl(OutputFlags& flags, base::Prompt& prompt) : flags_(flags), prompt_(prompt) {}

  /// One observer at most; null removes it.
  void Observe(LogObserver* observer) { observer_ = observer; }

  /// Replaces the open log, if any. Does not start recording.
  void OpenLog(const std::string& file_name) override;
  /// Also ends recording.
  void CloseLog() override;
  /// A press of TB_RECORDLOG; does nothing if no log is open.
  void PressRecord();

  bool IsOpen() const override { return file_.IsOpen(); }
  const LogButtonState& button() const { return button_; }
  /// The status bar's text: "Logdatei: " and the full path, or "Logdatei: Keine".
  std::string StatusText() const { return texts::LogStatus(file_name_); }

  void WriteLine(std::string_view line) override;

 private:
  void Changed();

  OutputFlags& flags_;
  base::Prompt& prompt_;
  LogObserver* observer_ = nullptr;
  LogFile file_;
  std::string file_name_;
  LogButtonState button_;
};

}  // namespace kolvane::terminal
