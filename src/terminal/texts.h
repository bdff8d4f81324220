#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/block_head.h"
#include "base/system.h"
#include "device/device.h"
#include "device/device_state.h"
#include "device/waits.h"

/// Every text that the terminal session shows.
namespace kolvane::terminal::texts {

inline constexpr std::array<std::string_view, 3> kReceiveModes = {"Endezeichen", "Auto", "Anzahl Zeichen"};
inline constexpr std::array<std::string_view, 2> kReceiveFormats = {"ASCII", "Binär"};

inline constexpr std::string_view kLf = "LF";
inline constexpr std::string_view kCr = "CR";
inline constexpr std::string_view kCrLf = "CRLF";
inline constexpr std::string_view kNoTerminator = "Kein";

inline constexpr std::string_view kTimeoutLabel = "Timeout (ms)";
inline constexpr std::string_view kCountLabel = "Anzahl";

/// An error in the text of the field with that label.
inline std::string InField(std::string_view label, std::string_view reason) {
  return std::string(label) + ": " + std::string(reason);
}

/// `what` says why the answer was not read after its command had been sent.
inline std::string AnswerToCome(std::string_view what) {
  return std::string(what) +
         ". Die Antwort auf den Befehl steht noch aus, „Eingangspuffer flushen“ verwirft sie.";
}

/// For a character that is not in the device's code page.
inline std::string NotSendable(std::string_view character) {
  return "Das Zeichen „" + std::string(character) + "“ kann nicht gesendet werden";
}

inline constexpr std::string_view kLocalDone = "GO TO LOCAL ausgeführt - die Verbindung wurde getrennt";
inline constexpr std::string_view kRestartDone = "Geräte Restart ausgeführt - die Verbindung wurde getrennt";
inline constexpr std::string_view kMeasuringStopped = "Die laufende Meßwerterfassung wurde beendet";

inline constexpr std::string_view kConnectTip = "Verbindung aufbauen";
inline constexpr std::string_view kDisconnectTip = "Verbindung trennen";
inline constexpr std::string_view kNotConnected = "Nicht verbunden";
inline constexpr std::string_view kConnectedWith = "  Verbindung hergestellt mit ";
inline constexpr std::string_view kDisconnectedFrom = "  Verbindung getrennt von ";
inline constexpr std::string_view kConnectFailed = "Fehler beim Verbindungsaufbau: ";
inline constexpr std::string_view kDisconnectFailed = "Fehler beim Verbindungsabbau: ";

/// `what` is kConnectFailed or kDisconnectFailed.
inline std::string Failure(std::string_view what, const device::DeviceError& error) {
  return std::string(what) + error.description + " (" + std::to_string(error.code) + ")";
}

/// What is waited for, and for how many seconds so far.
inline std::string Waiting(device::Operation operation, double seconds) {
  const auto tenths = static_cast<long>(seconds * 10);
  const std::string since =
      std::to_string(tenths / 10) + "," + std::to_string(tenths % 10) + " s, Esc bricht ab)";
  switch (operation) {
    case device::Operation::kConnecting:
      return "verbindet (" + since;
    case device::Operation::kSending:
      return "sendet (" + since;
    case device::Operation::kAnswer:
      return "wartet auf Antwort (" + since;
    case device::Operation::kDelay:
      return "Pause (" + since;
    case device::Operation::kNone:
      break;
  }
  return {};
}

/// For the first status bar while a modem is dialled.
inline std::string Dialling(const device::DialProgress& progress) {
  if (!progress.command.empty()) return "Modem wählt: „" + progress.command + "“ gesendet, warte auf Antwort";
  const std::string reply = progress.reply.empty() ? "keine Antwort" : "Antwort „" + progress.reply + "“";
  return "Modem wählt: " + reply + ", warte auf CONNECT (noch " + std::to_string(progress.seconds_left) +
         " s)";
}

inline std::string InputFlushed(std::int32_t bytes) {
  return "Empfangspuffer gelöscht (" + std::to_string(bytes) + " Bytes)";
}

inline constexpr const char* kConnectionLost = "Verbindung verloren";
/// `word` is the modem's last one, empty if it sent none.
inline std::string LineClosed(std::string_view word) {
  return std::string(word.empty() ? "Keine Antwort des Modems" : word) + ", Leitung geschlossen";
}

using base::kBlockTooLong;

/// For a block being read: "Block: 37 % von 8192 KB".
inline std::string BlockProgress(int percent, std::size_t bytes) {
  return "Block: " + std::to_string(percent) + " % von " + std::to_string((bytes + 1023) / 1024) + " KB";
}

/// Empty if none wait.
inline std::string BytesWaiting(std::int32_t bytes) {
  if (bytes <= 0) return {};
  return bytes == 1 ? "1 Byte wartet" : std::to_string(bytes) + " Bytes warten";
}

/// A failure as its code and meaning, or only its description if the meaning is unknown.
inline std::string Words(const device::DeviceError& error, std::int32_t timeout_ms) {
  if (error.words.empty()) return error.description;
  const std::string meaning = error.code == device::device_status::kReadTimeout
                                  ? "keine Antwort innerhalb von " + std::to_string(timeout_ms) + " ms"
                                  : error.words;
  return std::to_string(error.code) + ": " + meaning;
}

inline constexpr std::string_view kStartRecordingTip = "Log aktivieren";
inline constexpr std::string_view kStopRecordingTip = "Log deaktivieren";

/// For the second status bar; an empty name means that no log is open.
inline std::string LogStatus(std::string_view file_name) {
  return "Logdatei: " + std::string(file_name.empty() ? "Keine" : file_name);
}

/// `error` is an errno.
inline std::string LogNotOpened(std::string_view file_name, int error) {
  return "Die Logdatei „" + std::string(file_name) +
         "“ kann nicht geöffnet werden: " + base::SystemErrorText(error);
}
inline std::string LogNotWritten(std::string_view file_name, int error) {
  return "Die Logdatei „" + std::string(file_name) +
         "“ kann nicht geschrieben werden: " + base::SystemErrorText(error);
}

/// Inserted into the pane's text as it is, hence the leading line break.
inline std::string WriteError(std::string_view description) {
  return "\r\nWrite error: " + std::string(description);
}

/// Inserted into the pane's text as it is, hence the trailing line break.
inline std::string ResponseTime(std::string_view milliseconds) {
  return "(dt = " + std::string(milliseconds) + " ms)\r\n";
}

}  // namespace kolvane::terminal::texts
