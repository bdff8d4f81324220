#pragma once

#include <string>
#include <string_view>

#include "base/descriptor.h"
#include "base/prompt.h"
#include "terminal/output.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

/// A log on disk: Windows-1252 lines ended by CR LF, appended to what the file holds. Each line has reached
/// the file when WriteLine returns.
class LogFile {
 public:
  /// Opens `path` (UTF-8), made where it does not exist, in place of what was open. Returns 0 or an errno.
  [[nodiscard]] int Open(const std::string& path);
  bool IsOpen() const { return static_cast<bool>(file_); }

  /// Returns 0 or an errno; a line that does not fit in full leaves no part of itself in the file.
  [[nodiscard]] int WriteLine(std::string_view line);
  void Close() { file_ = {}; }

 private:
  base::Descriptor file_;
};

/// What the recording button TB_RECORDLOG shows. Closing the log releases it and takes its image back, but
/// leaves tag and tool tip: a log closed while it records needs two presses after the next opening.
struct LogButtonState {
  static constexpr int kRecordingImage = 25;
  static constexpr int kNotRecordingImage = 28;

  int tag = 0;  ///< 1 from a press that starts recording to the one that ends it
  int image = kNotRecordingImage;
  std::string_view tool_tip = texts::kStartRecordingTip;
  bool pressed = false;
};

/// Told that the log was opened or closed, or its button pressed.
class LogObserver {
 public:
  virtual ~LogObserver() = default;
  virtual void LogChanged() = 0;
};

/// The log of a terminal: its file, the recording flag and what the window shows of both. A file that cannot
/// be opened or written gives one message and ends the log; it is closed before the message is shown, so that
/// whatever happens meanwhile finds no log.
class LogControl final : public Log {
 public:
  LogControl(OutputFlags& flags, base::Prompt& prompt) : flags_(flags), prompt_(prompt) {}

  /// One observer at most; null takes it away.
  void Observe(LogObserver* observer) { observer_ = observer; }

  /// In place of the log that is open. It does not start recording.
  void OpenLog(const std::string& file_name) override;
  /// Ends recording, too.
  void CloseLog() override;
  /// The press of TB_RECORDLOG; nothing happens where no log is open.
  void PressRecord();

  bool IsOpen() const override { return file_.IsOpen(); }
  const LogButtonState& button() const { return button_; }
  /// What the status bar says: "Logdatei: " and the full path, or "Logdatei: Keine".
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
