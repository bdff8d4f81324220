#include "terminal/log_control.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "base/clock.h"
#include "base/encoding.h"
#include "base/text.h"

namespace kolvane::terminal {
namespace {

// The current folder may have changed by the time the user looks for the file.
std::string FullPath(const std::string& file_name) {
  std::error_code failure;
  const std::filesystem::path full = std::filesystem::absolute(file_name, failure);
  return failure ? file_name : full.string();
}

}  // namespace

int LogFile::Open(const std::string& path) {
  Close();
  if (path.find('\0') != path.npos) return EINVAL;
  file_ = base::OpenForAppending(path);
  return IsOpen() ? 0 : errno;
}

int LogFile::WriteLine(std::string_view line) {
  return base::AppendWhole(file_.get(), base::ToWindows1252(line) + "\r\n");
}

void LogControl::OpenLog(const std::string& file_name) {
  CloseLog();
  if (const int error = file_.Open(file_name)) {
    flags_.log_recording = false;
    prompt_.ShowError(texts::LogNotOpened(file_name, error));
    return;
  }
  file_name_ = FullPath(file_name);
  Changed();
}

void LogControl::CloseLog() {
  if (!IsOpen()) return;
  flags_.log_recording = false;
  button_.image = LogButtonState::kNotRecordingImage;
  button_.pressed = false;
  file_.Close();
  file_name_.clear();
  Changed();
}

void LogControl::PressRecord() {
  if (!IsOpen()) return;
  const bool start = button_.tag == 0;
  flags_.log_recording = start;
  button_ = start ? LogButtonState{1, LogButtonState::kRecordingImage, texts::kStopRecordingTip, true}
                  : LogButtonState{};
  Changed();
}

void LogControl::WriteLine(std::string_view line) {
  if (!IsOpen()) return;
  const int error = flags_.log_time_stamps
                        ? file_.WriteLine(base::WithLinePrefix(line, base::TimeStamp() + ' '))
                        : file_.WriteLine(line);
  if (error == 0) return;
  const std::string message = texts::LogNotWritten(file_name_, error);
  CloseLog();
  prompt_.ShowError(message);
}

void LogControl::Changed() {
  if (observer_ != nullptr) observer_->LogChanged();
}

}  // namespace kolvane::terminal
