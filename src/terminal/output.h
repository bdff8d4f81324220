#pragma once

#include <string>
#include <string_view>

#include "base/descriptor.h"
#include "base/prompt.h"
#include "device/device.h"
#include "pane/pane.h"
#include "terminal/state_line.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

/// Whether lines are shown and logged; part of the process-wide state.
struct OutputFlags {
  bool SilentMode = false;       ///< AddLine does nothing at all
  bool log_recording = false;    ///< lines are copied to the log
  bool log_time_stamps = false;  ///< each line of the log starts with its time
};

/// The log file as seen by output and command list. The implementation reports to the user a file that cannot
/// be opened or written.
class Log {
 public:
  virtual ~Log() = default;
  virtual bool IsOpen() const = 0;
  /// Opens `file_name` (UTF-8, may be empty) for appending.
  virtual void OpenLog(const std::string& file_name) = 0;
  /// Does nothing if no log is open.
  virtual void CloseLog() = 0;
  /// Writes one line to the log, even if lines are not being recorded; does nothing if no log is open.
  virtual void WriteLine(std::string_view line) = 0;
};

/// The only way by which lines reach pane and log.
class Output {
 public:
  Output(OutputFlags& flags, pane::Pane& pane, Log& log) : flags_(flags), pane_(pane), log_(log) {}

  /// Shows `line` on a new row and copies it to the log while recording is on.
  void AddLine(LineKind kind, std::string_view line);

  /// For callers without a window: the meaning of a failed answer, why an exchange ended.
  void Remark(LineKind kind, std::string_view text) { pane_.Remark(kind, text); }

  /// One view at most.
  void SetStateView(StateView* view) { state_view_ = view; }
  bool ShowsState() const { return state_view_ != nullptr; }
  void ShowState(StateKind kind, std::string_view text) {
    if (ShowsState()) state_view_->ShowState(kind, text);
  }

  /// Edits the pane's text directly: neither silent mode nor the log applies.
  void AppendText(LineKind kind, std::string_view text, int back) { pane_.AppendText(kind, text, back); }

 private:
  OutputFlags& flags_;
  pane::Pane& pane_;
  Log& log_;
  StateView* state_view_ = nullptr;
};

/// Discards bytes that were received but not read, and shows in the pane how many. Shows nothing if flushing
/// does not apply (not connected, test mode).
void FlushInput(device::Device& device, Output& output);

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
